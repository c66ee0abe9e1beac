#include "platform/field_text.h"

#include "platform/characters.h"

#include <gtest/gtest.h>

#include <random>

namespace zrt {
namespace {

bool IsCapital(int c) {
    return c >= 'A' && c <= 'Z';
}

// "AB[CD]E" is a field with CD selected, "AB[]E" one with the caret between.
TextBox FieldWith(std::string marked) {
    TextBox box;
    const auto open = marked.find('[');
    marked.erase(open, 1);
    const auto close = marked.find(']');
    marked.erase(close, 1);
    box.Text = marked;
    box.SelStart = static_cast<int>(open);
    box.SelLength = static_cast<int>(close - open);
    return box;
}

std::string Marked(const TextBox &box) {
    std::string text = box.Text;
    text.insert(static_cast<std::size_t>(box.SelStart + box.SelLength), "]");
    return text.insert(static_cast<std::size_t>(box.SelStart), "[");
}

std::string Inserted(const std::string &field, std::string_view text,
                     bool (*takes)(int) = nullptr) {
    TextBox box = FieldWith(field);
    box.Takes = takes;
    InsertText(box, text);
    return Marked(box);
}

// What the record holds when a widget has put a text into the field by itself.
std::string Edited(const std::string &field, const std::string &text,
                   bool (*takes)(int) = nullptr) {
    TextBox box = FieldWith(field);
    box.Takes = takes;
    const auto start = static_cast<std::size_t>(box.SelStart);
    std::string shown = box.Text;
    shown.replace(start, static_cast<std::size_t>(box.SelLength), text);
    TakeEdit(box, shown, static_cast<int>(start + text.size()), 0);
    return Marked(box);
}

TEST(FieldText, TakesTheSelectionsPlace) {
    EXPECT_EQ(Inserted("AB[CD]E", "X"), "ABX[]E");
    EXPECT_EQ(Inserted("AB[]E", "XY"), "ABXY[]E");
    EXPECT_EQ(Inserted("[ABC]", ""), "[]");
}

TEST(FieldText, HoldsNoLineEndsTabsOrStrangeBlanks) {
    for (const char *blank : {"\n", "\r", "\t", "\v", "\xC2\x85", "\xC2\xA0", "\xE2\x80\x83",
                              "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAF", "\xE3\x80\x80"}) {
        EXPECT_EQ(Inserted("[]", std::string("A") + blank + "B"), "A B[]");
        EXPECT_EQ(Inserted("[]", std::string(blank) + "DL1ABC" + blank), "DL1ABC[]");
        EXPECT_EQ(Edited("[]", std::string(blank) + "DL1ABC" + blank), "DL1ABC[]");
        EXPECT_EQ(Edited("12 []", "ALD" + std::string(blank)), "12 ALD[]");
    }
}

TEST(FieldText, HoldsNothingThatCannotBeSeen) {
    for (const char *unseen : {"\x01", "\x1B", "\x7F", "\xC2\xAD", "\xE2\x80\x8B", "\xE2\x80\x8F",
                               "\xE2\x80\xAE", "\xE2\x81\xA0", "\xEF\xBB\xBF", "\xEF\xBF\xBD"}) {
        EXPECT_EQ(Inserted("[]", std::string("A") + unseen + "B"), "AB[]");
        EXPECT_EQ(Inserted("A[B]", unseen), "A[B]");
    }
    EXPECT_EQ(Inserted("[]", std::string_view("A\0B", 3)), "AB[]");
}

TEST(FieldText, KeepsABlankThatIsTyped) {
    EXPECT_EQ(Inserted("12[]", " "), "12 []");
    EXPECT_EQ(Edited("12[]", " "), "12 []");
    EXPECT_EQ(Edited("1[]2", " "), "1 []2");
    EXPECT_EQ(Edited("12 []", " "), "12  []");
}

TEST(FieldText, TakesWhatTheRecordTakes) {
    EXPECT_EQ(Inserted("[]", "a-B C\xC3\x84!", IsCapital), "BC[]");
    EXPECT_EQ(Edited("X[]Y", "a-B C\xC3\x84!", IsCapital), "XBC[]Y");
    EXPECT_EQ(Inserted("[]", "J\xC3\xBCrg \xE2\x82\xAC"), "J\xC3\xBCrg \xE2\x82\xAC[]");
    TextBox box;
    EXPECT_EQ(CharacterTaken(box, 0xA0), ' ');
    EXPECT_EQ(CharacterTaken(box, 0xFC), 0xFC);
    EXPECT_EQ(CharacterTaken(box, '\r'), ' ');
    EXPECT_EQ(CharacterTaken(box, 0), 0);
    box.Takes = IsCapital;
    EXPECT_EQ(CharacterTaken(box, 'A'), 'A');
    EXPECT_EQ(CharacterTaken(box, 0xA0), 0);
}

TEST(FieldText, StaysAsItIsWhenNothingIsLeft) {
    EXPECT_EQ(Inserted("A[B]C", "\n"), "A[B]C");
    EXPECT_EQ(Inserted("A[B]C", "  "), "A[B]C");
    EXPECT_EQ(Inserted("A[B]C", "123", IsCapital), "A[B]C");
    EXPECT_EQ(Edited("A[B]C", "\r\n"), "A[B]C");
    EXPECT_EQ(Edited("A[B]C", "123", IsCapital), "A[B]C");
}

TEST(FieldText, IsWhatTheWidgetShowsWhereThatIsGood) {
    EXPECT_EQ(Edited("A[B]C", ""), "A[]C");
    EXPECT_EQ(Edited("[]", "ABC"), "ABC[]");
    EXPECT_EQ(Edited("AB[]AB", "AB"), "ABAB[]AB");
    EXPECT_EQ(Edited("\xC3\xA4[\xC3\xB6]\xC3\xBC", "\xC3\xBC"), "\xC3\xA4\xC3\xBC[]\xC3\xBC");
    TextBox box = FieldWith("A[]");
    EXPECT_TRUE(TakeEdit(box, "ABC", 1, 2)); // a dropped text is selected
    EXPECT_EQ(Marked(box), "A[BC]");
    EXPECT_FALSE(TakeEdit(box, "ABC", 0, 0)); // the caret alone
    EXPECT_EQ(Marked(box), "[]ABC");
    EXPECT_TRUE(TakeEdit(box, "X\nY", 0, 0)); // all of it is another one
    EXPECT_EQ(box.Text, "X Y");
}

TEST(FieldText, TellsOfAChangeAndOfNothingElse) {
    int changes = 0;
    TextBox box = FieldWith("[AB]");
    box.Change = [&changes] { ++changes; };
    InsertText(box, "AB");
    InsertText(box, "\n");
    EXPECT_FALSE(TakeEdit(box, "AB\n", 3, 0));
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(TakeEdit(box, "ABC\n", 4, 0));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(box.Text, "ABC");
    InsertText(box, "\tD");
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(box.Text, "ABCD");
}

// Both ways to the record say the same, and no way brings in what a field must not hold.
TEST(FieldText, IsTheSameByEitherWay) {
    constexpr const char *kPieces[] = {"A",  "B",        "AB",           "\n",           " ",
                                       "\t", "\xC2\xA0", "\xE2\x80\x8B", "\xE2\x80\x9C", "\xC3\xA4",
                                       "1",  "\xFF",     "\xC3\xB6"};
    std::mt19937 random(8);
    const auto text = [&](int most) {
        std::string made;
        for (auto n = static_cast<int>(random() % static_cast<unsigned>(most + 1)); n > 0; --n)
            made += kPieces[random() % std::size(kPieces)];
        return made;
    };
    for (int i = 0; i < 20000; ++i) {
        TextBox inserted;
        InsertText(inserted, text(6));
        const auto length = inserted.Text.size();
        auto start = random() % (length + 1);
        while (start < length && (inserted.Text[start] & 0xC0) == 0x80)
            ++start;
        inserted.SelStart = static_cast<int>(start);
        inserted.SelLength = 0;
        TextBox edited = inserted;
        const std::string came = text(4);
        InsertText(inserted, came);
        std::string shown = edited.Text;
        shown.insert(start, came);
        TakeEdit(edited, shown, static_cast<int>(start + came.size()), 0);
        for (std::string_view rest = edited.Text; !rest.empty();) {
            const int character = TakeCharacter(rest);
            ASSERT_EQ(CharacterTaken(edited, character), character);
        }
        // A text that begins like what stands before it may be cut elsewhere; what it brings is the
        // same but for blanks at its ends.
        std::string a = inserted.Text;
        std::string b = edited.Text;
        std::erase(a, ' ');
        std::erase(b, ' ');
        ASSERT_EQ(a, b);
    }
}

TEST(Characters, GoThroughUtf8) {
    for (const int character :
         {1, 0x41, 0x7F, 0x80, 0xE4, 0x7FF, 0x800, 0x20AC, 0xFFFD, 0x10000, 0x10FFFF}) {
        const std::string text = Utf8(character) + "x";
        std::string_view rest = text;
        EXPECT_EQ(TakeCharacter(rest), character);
        EXPECT_EQ(rest, "x");
    }
    std::string_view broken = "\xE2\x82";
    EXPECT_EQ(TakeCharacter(broken), 0xE2);
    EXPECT_EQ(broken, "\x82");
}

} // namespace
} // namespace zrt
