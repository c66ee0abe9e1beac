// Which characters the two fields of the entry window take, typed and pasted, in each contest.
#include "entry/log_form.h"
#include "headless/keyboard.h"
#include "platform/characters.h"
#include "session/log_file.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

constexpr std::string_view kOfCalls =
    "./0123456789?ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kOfExchanges =
    " +,-./0123456789?ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

// What is left of all characters below 0x3100, each pasted between two letters.
std::string Pasted(TextBox &field) {
    std::string taken;
    for (int c = 1; c < 0x3100; ++c) {
        EnterText(field, "X" + Utf8(c) + "X");
        const std::string &text = field.Text;
        const std::string middle = text.substr(1, text.size() - 2);
        if (middle != " " || c == ' ')
            taken += middle;
    }
    return taken;
}

TEST(FieldCharacters, OfACallAreThoseOfCallsAndCommands) {
    RegisterLogForm();
    for (i16 contest = 1; contest <= kContests; ++contest) {
        Contest.ContestId = contest;
        EXPECT_EQ(Pasted(CallField()), kOfCalls) << contest;
    }
}

TEST(FieldCharacters, OfAnExchangeAreThoseThatItsParserReadsOrDrops) {
    RegisterLogForm();
    for (i16 contest = 1; contest <= kContests; ++contest) {
        if (contest == kGeneric)
            continue;
        Contest.ContestId = contest;
        EXPECT_EQ(Pasted(ExchangeField()), kOfExchanges) << contest;
    }
}

TEST(FieldCharacters, OfNotesAreAllThatARecordHolds) {
    RegisterLogForm();
    Contest.ContestId = kGeneric;
    std::string expected;
    for (int c = ' '; c <= '~'; ++c)
        if (c != '\'' && c != '"' && c != '`')
            expected += static_cast<char>(c);
    for (int c = 0xC0; c <= 0xFF; ++c)
        if (c != 0xD7 && c != 0xF7)
            expected += Utf8(c);
    EXPECT_EQ(Pasted(ExchangeField()), expected);
}

class Pasting : public ProgramTest {
  protected:
    static void Type(std::string_view text) {
        for (const KeyStroke &stroke : StrokesOf(text))
            PressKey(LogForm, stroke);
    }
};

TEST_F(Pasting, MakesADupeOfTheSameCall) {
    OpenNewLog(kCqWw);
    LogContact("DL1ABC", "14");
    for (const char *call : {"DL1ABC\n", "\tdl1abc",
                             "\xC2\xA0"
                             "DL1ABC\xC2\xA0",
                             "\xE2\x80\x9E"
                             "DL1ABC\xE2\x80\x9C",
                             "'DL1ABC'"}) {
        EnterText(CallField(), call);
        EXPECT_EQ(CallField().Text, "DL1ABC");
        SetFocus(ExchangeField());
        EXPECT_TRUE(Entry.DupeFlag) << call;
        WipeEntry();
    }
}

TEST_F(Pasting, OrTypingGivesTheRecordNoCharacterOfAnother) {
    OpenNewLog(kGeneric);
    EnterText(CallField(), "K1ZZ\r\n");
    EnterText(ExchangeField(), "\xE2\x80\x9C"
                               "field\tday\xE2\x80\x9D\n");
    Press(kKeyEnter);
    ASSERT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Log.LogEntries[1].Callsign.Whole(), "K1ZZ      ");
    EXPECT_EQ(Log.LogEntries[1].RcvdName.Whole(), "FIELD DAY ");
    Type("K,1\xE2\x80\x93Z\xC3\x84Z;");
    EXPECT_EQ(CallField().Text, "K1ZZ");
}

// A key that stands for a command is heard though no field takes its character.
TEST_F(Pasting, LeavesTheKeysThatAreCommands) {
    OpenNewLog(kCqWw);
    Settings.LogandSendF6Enabled = true;
    Type("k1zz");
    ASSERT_FALSE(ExchangeField().Text.empty());
    Type("'");
    EXPECT_EQ(Log.NextEntry, 2);
}

} // namespace
} // namespace zrt
