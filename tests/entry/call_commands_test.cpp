#include "entry/call_commands.h"

#include "app/start_up.h"
#include "entry/log_form.h"
#include "entry/station_hooks.h"
#include "headless/keyboard.h"
#include "platform/keys.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"
#include "support/program.h"

#include <gmock/gmock.h>

namespace zrt {
namespace {

class CallCommands : public ProgramTest {
  protected:
    // A command in the call field, and Enter.
    static void Command(const char *text) {
        SetFieldText(LogForm.InData[0], text);
        SetFocus(LogForm.InData[0]);
        Press(kKeyEnter);
    }
    static void ExpectDone() {
        EXPECT_EQ(LogForm.InData[0].Text, "");
        EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[0]);
        EXPECT_EQ(Log.NextEntry, 1);
    }
};

TEST_F(CallCommands, AreToldFromCalls) {
    struct Row {
        const char *Text;
        CallCommand Command;
    };
    for (const Row &row :
         {Row{"R", CallCommand::Repeat},          Row{"RPT", CallCommand::Repeat},
          Row{"R1ABC", CallCommand::None},        Row{"14025", CallCommand::Frequency},
          Row{"14025.5", CallCommand::Frequency}, Row{"1800", CallCommand::Frequency},
          Row{"148000", CallCommand::Frequency},  Row{"1799", CallCommand::None},
          Row{"14351", CallCommand::None},        Row{"14.025.5", CallCommand::None},
          Row{"TM1", CallCommand::Timing},        Row{"TM4", CallCommand::Timing},
          Row{"TM5", CallCommand::None},          Row{"TMSHOW", CallCommand::ShowTiming},
          Row{"INT3", CallCommand::Interval},     Row{"INT30", CallCommand::Interval},
          Row{"INT8000", CallCommand::Interval},  Row{"INT", CallCommand::None},
          Row{"INT0", CallCommand::None},         Row{"INT9", CallCommand::None},
          Row{"INT900", CallCommand::None},       Row{"INT8001", CallCommand::None},
          Row{"INT3X", CallCommand::None},        Row{"STO", CallCommand::StoreRadio},
          Row{"RCL", CallCommand::RecallRadio},   Row{"PWR", CallCommand::Power},
          Row{"PWR5", CallCommand::Power},        Row{"PWR1000", CallCommand::None},
          Row{"PWRX", CallCommand::None},         Row{"TU0", CallCommand::TuEvery},
          Row{"TU9", CallCommand::TuEvery},       Row{"TUX", CallCommand::None},
          Row{"TU10", CallCommand::None},         Row{"", CallCommand::None},
          Row{"K1ZZ", CallCommand::None}})
        EXPECT_EQ(ParseCallCommand(row.Text), row.Command) << row.Text;
}

TEST_F(CallCommands, WordsForTheModeNeedTheExtension) {
    for (const char *word : {"CW", "SSB", "PH"}) {
        Extensions.ModeCommands = false;
        EXPECT_EQ(ParseCallCommand(word), CallCommand::None) << word;
        Extensions.ModeCommands = true;
        EXPECT_EQ(ParseCallCommand(word), CallCommand::Mode) << word;
        EXPECT_EQ(ParseCallCommand(std::string(word) + "1"), CallCommand::None) << word;
    }
}

TEST_F(CallCommands, AModeThatIsRefusedStaysSelected) {
    OpenNewLog(kSs);
    Extensions.ModeCommands = true;
    Answer({BoxAnswer::Ok});
    Command("PH");
    EXPECT_EQ(LastBox().Title, "Mode");
    EXPECT_EQ(CallField().Text, "PH");
    EXPECT_EQ(CallField().SelStart, 0);
    EXPECT_EQ(CallField().SelLength, 2);
    EXPECT_EQ(LogForm.ActiveControl, &CallField());
    EXPECT_EQ(CurrentBand(), 3);
    EXPECT_EQ(Log.NextEntry, 1);
}

TEST_F(CallCommands, IntervalsAreOfTheModeThatIsOn) {
    OpenNewLog(kGeneric);
    for (const char *text : {"int3", "INT30", "INT300"}) {
        Settings.RepeatIntervalCW = 0;
        Command(text);
        EXPECT_EQ(Settings.RepeatIntervalCW, 3000) << text;
        ExpectDone();
    }
    CurrentBand() = 21; // 12 m CW
    Command("INT8");
    EXPECT_EQ(Settings.RepeatIntervalCW, 8000);
    CurrentBand() = 11;
    Command("INT4500");
    EXPECT_EQ(Settings.RepeatIntervalSSB, 4500);
    EXPECT_EQ(Settings.RepeatIntervalCW, 8000);
}

TEST_F(CallCommands, SetTheTimingAndTheCountOfFullMessages) {
    OpenNewLog(kGeneric);
    struct Row {
        const char *Text, *Method;
    };
    for (const Row &row : {Row{"TM1", "Math"}, Row{"TM2", "VBTimer"}, Row{"TM3", "Winmm"},
                           Row{"TM4", "QueryPerf"}}) {
        Command(row.Text);
        EXPECT_EQ(Settings.TimingMethod, row.Method);
        ExpectDone();
    }
    Command("TU3");
    EXPECT_EQ(Entry.TuEvery, 3);
    Command("TU0");
    EXPECT_EQ(Entry.TuEvery, 1);
}

TEST_F(CallCommands, AskTheRadio) {
    OpenNewLog(kGeneric);
    for (const char *text : {"14025.5", "STO", "RCL", "PWR", "PWR5", "TMSHOW"}) {
        Command(text);
        ExpectDone();
    }
    EXPECT_THAT(Requests.Made,
                testing::ElementsAre("frequency 14025500 Hz", "store radio", "recall radio",
                                     "power 100", "power 005", "timing display"));
}

TEST_F(CallCommands, RepeatTheLastContactInThreeContests) {
    ContestState contest = CwContest(kNaqp);
    OpenNewLog(contest);
    LogContact("K1ZZ", "BOB NY");
    Command("R");
    EXPECT_EQ(LogForm.InData[0].Text, "K1ZZ");
    EXPECT_EQ(LogForm.InData[1].Text.substr(0, 6), "BOB NY");
    EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[1]);
    EXPECT_EQ(Log.NextEntry, 2);
}

void Type(std::string_view text) {
    for (const KeyStroke &stroke : StrokesOf(text))
        PressKey(LogForm, stroke);
}

TEST_F(CallCommands, ARepeatedCallIsTheLastOne) {
    StartProgram();
    for (const i16 contest : {kArrlDx, kCqWw, kNaqp}) {
        OpenNewLog(contest);
        LogContact("DL1ABC", contest == kNaqp ? "BOB DX" : contest == kCqWw ? "14" : "NY");
        ASSERT_EQ(Log.NextEntry, 2) << contest;
        Type("r");
        EXPECT_EQ(Entry.SavedCall, "R");
        Press(kKeyEnter);
        EXPECT_EQ(CallField().Text, "DL1ABC");
        EXPECT_EQ(Entry.SavedCall, "DL1ABC") << contest;
        Press(kKeyEsc);
    }
}

TEST_F(CallCommands, NothingOfAnotherCallStaysBesideARepeatedOne) {
    StartProgram();
    Settings.StationLatitude = 41.7;
    Settings.StationLongitude = 72.7;
    ContestState american = CwContest(kArrlDx);
    american.StationUSVE = true;
    for (const ContestState &contest : {american, CwContest(kCqWw)}) {
        OpenNewLog(contest);
        LogContact("DL1ABC", contest.ContestId == kCqWw ? "14" : "100");
        ASSERT_EQ(Log.NextEntry, 2);
        Type("r"); // stands for Russia as long as it is being typed
        EXPECT_TRUE(LogForm.LblWpxCountry.Visible);
        EXPECT_TRUE(LogForm.lblHeading.Visible);
        EXPECT_TRUE(LogForm.NeedPfxLabel.Visible);
        Press(kKeyEnter);
        ASSERT_EQ(CallField().Text, "DL1ABC");
        EXPECT_FALSE(LogForm.LblWpxCountry.Visible);
        EXPECT_FALSE(LogForm.lblHeading.Visible);
        EXPECT_FALSE(LogForm.NeedPfxLabel.Visible);
        Press(kKeyEsc);
    }
}

TEST_F(CallCommands, AMarkBehindARepeatedCallLeavesItsExchange) {
    StartProgram();
    OpenNewLog(kCqWw);
    LogContact("DL1ABC", "15");
    Command("R");
    ASSERT_EQ(ExchangeField().Text.substr(0, 2), "15");
    SetFocus(CallField());
    Type("?");
    EXPECT_EQ(CallField().Text, "DL1ABC?");
    EXPECT_EQ(ExchangeField().Text.substr(0, 2), "15");
}

TEST_F(CallCommands, RepeatIsACallInAnEmptyLogAndInOtherContests) {
    OpenNewLog(kNaqp);
    Answer({BoxAnswer::Ok}); // the exchange is missing
    Command("R");
    EXPECT_EQ(LastBox().Text, "No Exchange");
    OpenNewLog(kGeneric);
    LogContact("K1ZZ");
    Command("RPT");
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.LogEntries[2].Callsign.Trimmed(), "RPT");
}

} // namespace
} // namespace zrt
