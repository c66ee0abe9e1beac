#include "session/fixed_text.h"

#include <gtest/gtest.h>

#include <clocale>

namespace zrt {
namespace {

TEST(FixedText, PadsWithBlanksAndCutsWhatDoesNotFit) {
    EXPECT_EQ(FixedText<5>("AB").Whole(), "AB   ");
    EXPECT_EQ(FixedText<5>("ABCDEFG").Whole(), "ABCDE");
    EXPECT_EQ(FixedText<5>().Whole(), "     ");
}

TEST(FixedText, TakesNulAsABlank) {
    EXPECT_EQ(FixedText<5>(std::string_view("A\0B\0\0", 5)).Whole(), "A B  ");
}

TEST(FixedText, KeepsRawBytesWhereAskedTo) {
    FixedText<4> text("WXYZ");
    text.TakeRaw(std::string_view("\0\xFF", 2));
    EXPECT_EQ(text.Whole(), std::string_view("\0\xFF  ", 4));
}

TEST(FixedText, TrimsBothEndsAndKeepsBlanksInside) {
    EXPECT_EQ(FixedText<10>("  A B  ").Trimmed(), "A B");
    EXPECT_EQ(FixedText<10>().Trimmed(), "");
}

TEST(Trim, TakesBlanksOnlyAndOnlyAtTheEnds) {
    EXPECT_EQ(Trim("  K1ZZ "), "K1ZZ");
    EXPECT_EQ(Trim("\tK1ZZ"), "\tK1ZZ");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(TrimLeft(" A "), "A ");
    EXPECT_EQ(TrimRight(" A "), " A");
}

TEST(UpperCase, ChangesAsciiLettersAlone) {
    EXPECT_EQ(UpperCase("k1zz/p\xE4"), "K1ZZ/P\xE4");
    EXPECT_EQ(UpperCase("{`"), "{`");
}

TEST(EqualIgnoringCase, NeedsTheSameLength) {
    EXPECT_TRUE(EqualIgnoringCase("Void", "VOID"));
    EXPECT_FALSE(EqualIgnoringCase("VOID", "VOIDS"));
    EXPECT_FALSE(EqualIgnoringCase("VOIDS", "VOID"));
    EXPECT_FALSE(EqualIgnoringCase("[", "{"));
}

TEST(Pad, FillsUpAndNeverCuts) {
    EXPECT_EQ(PadLeft("5", 4, '0'), "0005");
    EXPECT_EQ(PadLeft("12345", 4, '0'), "12345");
    EXPECT_EQ(PadRight("A", 3), "A  ");
    EXPECT_EQ(PadRight("ABCD", 3), "ABCD");
}

TEST(Value, ReadsTheNumberThatATextBeginsWith) {
    EXPECT_EQ(Value("  12"), 12);
    EXPECT_EQ(Value("-7.5X"), -7.5);
    EXPECT_EQ(Value("+3"), 3);
    EXPECT_EQ(Value(".5"), 0.5);
    EXPECT_EQ(Value("14025.3"), 14025.3);
    EXPECT_EQ(Value("599 14"), 599); // an inner blank ends it
    EXPECT_EQ(Value("1.2.3"), 1.2);  // and so does a second point
}

TEST(Value, OfATextWithoutDigitsIsZero) {
    EXPECT_EQ(Value(""), 0);
    EXPECT_EQ(Value("   "), 0);
    EXPECT_EQ(Value("ABC"), 0);
    EXPECT_EQ(Value("-"), 0);
    EXPECT_EQ(Value("."), 0);
    EXPECT_EQ(Value("- 5"), 0);
}

TEST(Value, KnowsNoExponentAndNoOtherBase) {
    EXPECT_EQ(Value("1E5"), 1);
    EXPECT_EQ(Value("1e-3"), 1);
    EXPECT_EQ(Value("&H10"), 0);
    EXPECT_EQ(Value("0x10"), 0);
}

TEST(Value, IsTheSameInEveryLocale) {
    const char *changed = std::setlocale(LC_ALL, "de_DE.UTF-8"); // may be missing on a machine
    EXPECT_EQ(Value("1.5"), 1.5);
    EXPECT_EQ(Value("1,5"), 1);
    if (changed != nullptr)
        std::setlocale(LC_ALL, "C");
}

TEST(Value, BearsTextsOfAnyLength) {
    EXPECT_EQ(ValueI16(std::string(5000, '9')), 32767);
    EXPECT_NEAR(Value("0." + std::string(5000, '3')), 1.0 / 3, 1e-15);
    EXPECT_EQ(Value(std::string(1000, '0') + "7"), 7);
}

TEST(ValueI16, ClampsAndNeverWraps) {
    EXPECT_EQ(ValueI16("32767"), 32767);
    EXPECT_EQ(ValueI16("32768"), 32767);
    EXPECT_EQ(ValueI16("99999"), 32767);
    EXPECT_EQ(ValueI16("-32768"), -32768);
    EXPECT_EQ(ValueI16("-40000"), -32768);
}

TEST(ValueI16, RoundsAFractionAndTakesTheEvenNumberOnATie) {
    EXPECT_EQ(ValueI16("2.4"), 2);
    EXPECT_EQ(ValueI16("2.5"), 2);
    EXPECT_EQ(ValueI16("3.5"), 4);
    EXPECT_EQ(ValueI16("2.7"), 3);
}

TEST(RoundToEven, TakesTheEvenNumberOnATie) {
    EXPECT_EQ(RoundToEven(0.5), 0);
    EXPECT_EQ(RoundToEven(1.5), 2);
    EXPECT_EQ(RoundToEven(2.5), 2);
    EXPECT_EQ(RoundToEven(3.5), 4);
    EXPECT_EQ(RoundToEven(-2.5), -2);
    EXPECT_EQ(RoundToEven(2.51), 3);
    EXPECT_EQ(RoundToEven(2.49), 2);
}

TEST(TextHash, IsTheSumOfTheBytesIn16Bits) {
    EXPECT_EQ(TextHash(""), 0);
    EXPECT_EQ(TextHash("K1ZZ"), 'K' + '1' + 'Z' + 'Z');
    EXPECT_EQ(TextHash("ZZ1K"), TextHash("K1ZZ")); // equal hashes prove nothing
    EXPECT_EQ(TextHash("\xE4"), 0xE4);             // bytes, not signed characters
    EXPECT_EQ(TextHash(std::string(300, '\xFF')), static_cast<i16>(300 * 255 - 65536));
}

TEST(Latin1, HoldsWhatItCanAndAQuestionMarkForTheRest) {
    EXPECT_EQ(ToLatin1("K1ZZ"), "K1ZZ");
    EXPECT_EQ(ToLatin1("\xC3\x84rger"), "\xC4rger"); // Ä
    EXPECT_EQ(ToLatin1("\xC2\xA7"), "\xA7");         // §
    EXPECT_EQ(ToLatin1("\xC4\x80"), "?");            // behind Latin-1
    EXPECT_EQ(ToLatin1("a\xE2\x82\xAC"
                       "b"),
              "a?b"); // one character, one mark
    EXPECT_EQ(ToLatin1("\xF0\x9F\x93\xBB!"), "?!");
}

TEST(Latin1, BearsBrokenUtf8) {
    EXPECT_EQ(ToLatin1("\xC3"), "?");
    EXPECT_EQ(ToLatin1("\xC3"
                       "A"),
              "?A");
    EXPECT_EQ(ToLatin1("\x84\x85"), "??");
}

TEST(Latin1, ComesBackAsItWas) {
    std::string all;
    for (int c = 1; c < 256; ++c)
        all += static_cast<char>(c);
    EXPECT_EQ(ToLatin1(FromLatin1(all)), all);
}

TEST(Latin1, LooksAtNoByteBehindTheText) {
    const std::string_view whole = "\xC3\x84";
    EXPECT_EQ(ToLatin1(whole.substr(0, 1)), "?");
}

} // namespace
} // namespace zrt
