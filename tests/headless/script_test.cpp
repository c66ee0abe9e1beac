#include "headless/script.h"

#include <gtest/gtest.h>

namespace zrt {
namespace {

std::vector<std::string> WordsOf(const std::string &text) {
    std::vector<std::string> words;
    const auto lines = ParseScript(text);
    for (const ScriptWord &word : lines.at(0).Words)
        words.push_back(word.Text);
    return words;
}

using Words = std::vector<std::string>;

TEST(Script, WordsAreSeparatedByBlanksAndTabs) {
    EXPECT_EQ(WordsOf("  key \t Enter  "), (Words{"key", "Enter"}));
}

TEST(Script, AQuotedTextHoldsBlanksAndEscapes) {
    EXPECT_EQ(WordsOf(R"(type "a b" "\"\\\n\t\x41\xff" "")"),
              (Words{"type", "a b", "\"\\\n\tA\xff", ""}));
}

TEST(Script, APartOfAWordMayBeQuoted) {
    EXPECT_EQ(WordsOf(R"(setting Key="a b"c)"), (Words{"setting", "Key=a bc"}));
}

TEST(Script, OnlyQuotedWordsAreMarkedSo) {
    const auto lines = ParseScript("choose lst \"3\" 3");
    EXPECT_TRUE(lines[0].Words[2].Quoted);
    EXPECT_FALSE(lines[0].Words[3].Quoted);
}

TEST(Script, BrokenQuotesAreErrorsOfTheirLine) {
    EXPECT_EQ(ParseScript("type \"abc")[0].Error, "a text without its closing quote");
    EXPECT_NE(ParseScript(R"(type "\q")")[0].Error, "");
    EXPECT_NE(ParseScript(R"(type "\x4")")[0].Error, "");
    EXPECT_NE(ParseScript(R"(type "\x4g")")[0].Error, "");
    EXPECT_NE(ParseScript(R"(type "abc\)")[0].Error, "");
}

TEST(Script, LinesKeepTheirNumbersAcrossBlanksAndComments) {
    const auto lines = ParseScript("\n# hello\n\nstart\n");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].Comment);
    EXPECT_EQ(lines[0].Number, 2);
    EXPECT_EQ(lines[1].Number, 4);
    EXPECT_FALSE(lines[1].Comment);
}

TEST(Script, ABlockTakesTheLinesToItsWordWithCrLfEnds) {
    const auto lines = ParseScript("put a.txt <<END\n one \n\n# two\nEND\nstart\n");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].Block, " one \r\n\r\n# two\r\n");
    EXPECT_EQ(lines[0].Words.size(), 2U);
    EXPECT_EQ(lines[1].Number, 6);
}

TEST(Script, ABlockCanHaveLfEnds) {
    EXPECT_EQ(ParseScript("put a <<END lf\none\nEND")[0].Block, "one\n");
    EXPECT_EQ(ParseScript("put a <<END\nEND")[0].Block, "");
}

TEST(Script, ABlockWithoutItsEndIsAnError) {
    EXPECT_EQ(ParseScript("put a <<END\none\n")[0].Error, "a block without its closing END");
}

TEST(Script, AQuotedOpenerOpensNoBlock) {
    const auto lines = ParseScript("expect x.Caption \"<<A\"\nstart\n");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_FALSE(lines[0].Block.has_value());
}

TEST(Script, CrLfFilesReadLikeLfFiles) {
    const auto lines = ParseScript("put a <<E\r\none\r\nE\r\nstart\r\n");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].Block, "one\r\n");
    EXPECT_EQ(lines[1].Words[0].Text, "start");
}

TEST(Script, QuotedWritesWhatTheParserReads) {
    std::string text;
    for (int c = 0; c < 256; ++c)
        text += static_cast<char>(c);
    const auto lines = ParseScript("x " + Quoted(text));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].Words.at(1).Text, text);
}

TEST(Script, BytesComeFromHexAndTexts) {
    const auto words = ParseScript("FEfe 0d \"IF;\"")[0].Words;
    EXPECT_EQ(BytesOf(words, 0), "\xFE\xFE\x0DIF;");
    EXPECT_EQ(BytesOf(words, 2), "IF;");
    EXPECT_EQ(BytesOf(ParseScript("F")[0].Words, 0), std::nullopt);
    EXPECT_EQ(BytesOf(ParseScript("GG")[0].Words, 0), std::nullopt);
    EXPECT_EQ(HexText("\xFE\x0A"), "FE 0A");
}

TEST(Script, NumbersAreWhole) {
    EXPECT_EQ(WholeNumber("12"), 12);
    EXPECT_EQ(WholeNumber("-3"), -3);
    for (const char *text : {"", "1.5", "1x", " 1", "99999999999999999999"})
        EXPECT_EQ(WholeNumber(text), std::nullopt) << text;
}

} // namespace
} // namespace zrt
