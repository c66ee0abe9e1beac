#include "app/session_reset.h"

#include "app/start_up.h"
#include "entry/dupes.h"
#include "entry/exchange_parsers.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/statistics.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "support/program.h"

namespace zrt {
namespace {

std::array<Form, 6> windows;
constexpr std::array<const char *, 6> kWindowNames = {"ViewMult", "QSOStats", "Viewlog",
                                                      "ZTCTY",    "ViewMac",  "Audio"};

class SessionReset : public ProgramTest {
  protected:
    SessionReset() {
        OpenNewLog(kGeneric);
        LogContact("K1ZZ/4", "ANN");
        for (std::size_t i = 0; i < windows.size(); ++i) {
            windows[i] = {};
            RegisterForm(windows[i], kWindowNames[i], "stands for a window", {});
            windows[i].Visible = true;
        }
    }
    ~SessionReset() override {
        for (Form &window : windows)
            RegisterForm(window, "", "", {}); // the next test knows nothing of them
    }
};

TEST_F(SessionReset, ForgetsWhatTheLogHasBuilt) {
    Entry.CountyLineFlag = Entry.DupeFlag = true;
    Entry.TuEvery = 3;
    Entry.TuCount = 2;
    Log.Unwritten = {1};
    ResetSession();
    EXPECT_EQ(Log.NextEntry, 1);
    EXPECT_TRUE(Log.Unwritten.empty());
    EXPECT_EQ(Log.WorkingEntry, LogEntry{});
    EXPECT_EQ(Log.WorkingOld26, OldEntry26{});
    EXPECT_EQ(Log.WorkingOld36, OldEntry36{});
    EXPECT_TRUE(Dupes.CurrentCalls.empty());
    EXPECT_TRUE(Dupes.PortableTable.empty());
    EXPECT_EQ(Dupes.CallText[1].Trimmed(), "");
    EXPECT_EQ(Statistics.DayCount, 1);
    EXPECT_EQ(Statistics.TotalPoints, 0);
    EXPECT_EQ(Statistics.TotalMults, 0);
    EXPECT_EQ(Statistics.Score, 0);
    EXPECT_EQ(Statistics.QsosPerBand[3], 0);
    EXPECT_EQ(Statistics.OnTimeMinutes, 0);
    EXPECT_EQ(Statistics.OnBandMinutes, 0);
    EXPECT_FALSE(Entry.CountyLineFlag || Entry.DupeFlag);
    EXPECT_EQ(Entry.TuEvery, 3); // the operator's choice for the session
}

TEST_F(SessionReset, ClosesTheWindowsAndNeverTheProgram) {
    LogForm.Visible = true;
    ResetSession();
    EXPECT_FALSE(LogForm.Visible);
    for (std::size_t i = 0; i < windows.size(); ++i)
        EXPECT_FALSE(windows[i].Visible) << kWindowNames[i];
    EXPECT_FALSE(Program.Ending);
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(SessionReset, KeepsTheMacroAndVoiceWindowsInARescan) {
    Session.RescanInPlace = true;
    ResetSession();
    for (std::size_t i = 0; i < windows.size(); ++i)
        EXPECT_EQ(windows[i].Visible, i >= 4) << kWindowNames[i];
}

TEST_F(SessionReset, KeepsTheLastLineInARescan) {
    const std::string last = LogForm.lblLast.Caption;
    ASSERT_NE(last, "");
    Session.RescanInPlace = true;
    ResetSession();
    EXPECT_EQ(LogForm.lblLast.Caption, last);
}

TEST_F(SessionReset, LeavesTheFileAlone) {
    const std::string before = BytesOf(kTempLog);
    ResetSession();
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(before));
}

// The log goes on, and with it what was sent last, and to whom.
TEST_F(SessionReset, KeepsWhatTheNextMessageNeedsInARescan) {
    const auto set = [] {
        Entry.SavedCall = "JA1ABC";
        Entry.TuCount = 2;
        Entry.LastSendHadCall = true;
        Parsers = {7, "CT"};
        Entry.DupeFlag = true;
    };
    set();
    Session.RescanInPlace = true;
    ResetSession();
    EXPECT_EQ(Entry.SavedCall, "JA1ABC");
    EXPECT_EQ(Entry.TuCount, 2);
    EXPECT_TRUE(Entry.LastSendHadCall);
    EXPECT_EQ(Parsers.TenNumber, 7);
    EXPECT_FALSE(Entry.DupeFlag);
    set();
    Session.RescanInPlace = false;
    ResetSession();
    EXPECT_EQ(Entry.SavedCall, "");
    EXPECT_EQ(Entry.TuCount, 1);
    EXPECT_FALSE(Entry.LastSendHadCall);
    EXPECT_EQ(Parsers.TenNumber, 0);
}

} // namespace
} // namespace zrt
