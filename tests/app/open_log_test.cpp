// File, Open and the recent logs.
#include "app/file_menu.h"
#include "app/partial_window.h"
#include "app/recent_files.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "platform/files.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

#include <cerrno>

namespace zrt {
namespace {

class OpenLogFile : public ProgramTest {
  protected:
    OpenLogFile() { StartProgram(); }

    // A log of today's format with one contact.
    static void MakeLog(const char *name, const char *call, const char *tag = "GEN  ") {
        MakeFile(name, HeaderBytes(tag) + std::string(34, '\0') +
                           EntryBytes(MakeEntry(call, -21155, 1437, 3, '1')));
    }
    static void Open(const char *name) {
        Devices.FileAnswers.emplace_back(PathOf(name));
        ClickControl(LogForm.mnuFileOpen);
    }
    static std::string Recent(int number) {
        return NameOf(Settings.RecentFile[static_cast<std::size_t>(number) - 1]);
    }
    static std::string InSettings(const std::string &key) {
        const std::string text = BytesOf(kSettingsFile);
        const auto at = text.find("\n" + key + "=");
        if (at == std::string::npos)
            return "no such key";
        const auto value = at + key.size() + 2;
        return text.substr(value, text.find('\r', value) - value);
    }
};

TEST_F(OpenLogFile, ShowsTheDialogInTheFolderOfTheLastOne) {
    Settings.OpenFilePath = "/somewhere";
    Devices.FileAnswers = {std::nullopt};
    ClickControl(LogForm.mnuFileOpen);
    ASSERT_EQ(Devices.FileDialogs.size(), 1U);
    EXPECT_EQ(Devices.FileDialogs[0].Title, "Open Existing ZRT Log File");
    EXPECT_EQ(Devices.FileDialogs[0].Filter, "ZRT logs (*.ZRT)|*.ZRT");
    EXPECT_EQ(Devices.FileDialogs[0].DefaultExtension, "ZRT");
    EXPECT_EQ(Devices.FileDialogs[0].Folder, "/somewhere");
    EXPECT_FALSE(Devices.FileDialogs[0].Save);
}

TEST_F(OpenLogFile, TakesTheLog) {
    MakeLog("mine.ZRT", "K1ZZ");
    Open("mine.ZRT");
    EXPECT_EQ(Log.LogState, kUsersName);
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Log.LogEntries[1].Callsign.Trimmed(), "K1ZZ");
    EXPECT_EQ(LogForm.lblLog.Caption, "Log: mine.ZRT - - Contest: Generic Log");
    EXPECT_TRUE(LogForm.mnuFileBackup.Enabled);
    EXPECT_TRUE(LogForm.mnuFileSave.Enabled);
    EXPECT_FALSE(Session.ReplacingLog);
}

TEST_F(OpenLogFile, AfterACancelShowsTheMainWindowWithoutALog) {
    Devices.FileAnswers = {std::nullopt};
    FileOpen(0);
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_EQ(ActiveForm(), &LogForm);
    EXPECT_FALSE(LogForm.InData[0].Visible);
    EXPECT_FALSE(Session.ChooserCancelled);
    EXPECT_FALSE(Session.ReplacingLog);
    EXPECT_FALSE(LogForm.mnuFileBackup.Enabled);
}

TEST_F(OpenLogFile, OverALogWithANameAsksWithNoAsDefault) {
    MakeLog("mine.ZRT", "K1ZZ");
    MakeLog("other.ZRT", "G3ZZ");
    Open("mine.ZRT");
    Answer({BoxAnswer::No});
    FileOpen(0);
    EXPECT_EQ(LastBox().Text, "A log file is already open.  Do you want to open a different one?");
    EXPECT_EQ(LastBox().Title, "Log Already Opened");
    EXPECT_EQ(LastBox().DefaultButton, 2);
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_TRUE(LogForm.InData[0].Visible);
    Answer({BoxAnswer::Yes});
    Open("other.ZRT");
    EXPECT_EQ(Log.LogEntries[1].Callsign.Trimmed(), "G3ZZ");
    LogContact("K2ZZ", "BOB");
    EXPECT_EQ(BytesOf("other.ZRT").size(), 180U);
    EXPECT_EQ(BytesOf("mine.ZRT").size(), 120U);
}

TEST_F(OpenLogFile, OverAnUnnamedLogMaySaveOrDropIt) {
    MakeLog("other.ZRT", "G3ZZ");
    OpenNewLog(kGeneric);
    LogContact("K1ZZ", "ANN");
    Answer({BoxAnswer::Cancel});
    FileOpen(0);
    EXPECT_EQ(LastBox().Text, "Save current log file? ");
    EXPECT_EQ(Log.NextEntry, 2);
    Answer({BoxAnswer::Yes});
    Devices.FileAnswers = {PathOf("saved.ZRT")};
    Open("other.ZRT");
    EXPECT_EQ(BytesOf("saved.ZRT").size(), 120U);
    EXPECT_EQ(Log.LogEntries[1].Callsign.Trimmed(), "G3ZZ");
    EXPECT_FALSE(FileExists(kTempLog));
}

TEST_F(OpenLogFile, ThatIsNoLogLeavesNoneOpen) {
    MakeLog("mine.ZRT", "K1ZZ");
    MakeFile("photo.ZRT", "GIF89a, and much that is no log at all");
    Open("mine.ZRT");
    Answer({BoxAnswer::Yes, BoxAnswer::Ok});
    Open("photo.ZRT");
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(LastBox().Text, "The file photo.ZRT is not a ZRT log.");
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_FALSE(LogForm.InData[0].Visible);
    EXPECT_EQ(BytesOf("photo.ZRT"), "GIF89a, and much that is no log at all");
}

TEST_F(OpenLogFile, ThatCantBeReadSaysWhyAndMayBeTriedAgain) {
    MakeLog("mine.ZRT", "K1ZZ");
    static int failures;
    failures = 1;
    Files.Open = [](const std::string &path, OpenMode mode, int &handle) {
        return NameOf(path) == "mine.ZRT" && failures-- > 0 ? EACCES
                                                            : DiskFiles().Open(path, mode, handle);
    };
    Answer({BoxAnswer::Retry});
    Open("mine.ZRT");
    EXPECT_EQ(LastBox().Text, "Permission denied");
    EXPECT_EQ(Log.NextEntry, 2);
}

// ---- what the recent logs remember

TEST_F(OpenLogFile, PutsTheLogFirstAndWritesTheSettings) {
    MakeLog("a.ZRT", "K1ZZ");
    Open("a.ZRT");
    EXPECT_EQ(InSettings("RecentFile1"), PathOf("a.ZRT"));
    EXPECT_EQ(InSettings("OpenFilePath"), Devices.ProgramFolder); // no separator at its end
    EXPECT_EQ(LogForm.mnuFileRecent[0].Caption.substr(0, 3), "1  ");
    EXPECT_TRUE(LogForm.mnuFileRecent[0].Visible);
    EXPECT_FALSE(LogForm.mnuFileRecent[1].Visible);
}

TEST_F(OpenLogFile, MovesTheOthersDownAndTheOldestFallsOff) {
    for (const char *name : {"a.ZRT", "b.ZRT", "c.ZRT", "d.ZRT", "e.ZRT"}) {
        MakeLog(name, "K1ZZ");
        if (Log.LogState != kNoLog)
            Answer({BoxAnswer::Yes});
        Open(name);
    }
    EXPECT_EQ(Recent(1) + Recent(2) + Recent(3) + Recent(4), "e.ZRTd.ZRTc.ZRTb.ZRT");
    Answer({BoxAnswer::Yes});
    Open("e.ZRT"); // first already: nothing moves
    EXPECT_EQ(Recent(1) + Recent(2) + Recent(3) + Recent(4), "e.ZRTd.ZRTc.ZRTb.ZRT");
}

TEST_F(OpenLogFile, OfTheThirdRecentLogLetsItStandTwice) {
    for (const char *name : {"a.ZRT", "b.ZRT", "c.ZRT"}) {
        MakeLog(name, "K1ZZ");
        if (Log.LogState != kNoLog)
            Answer({BoxAnswer::Yes});
        Open(name);
    }
    Answer({BoxAnswer::Yes});
    ClickControl(LogForm.mnuFileRecent[2]);
    EXPECT_EQ(NameOf(Log.LogFileName), "a.ZRT");
    EXPECT_EQ(Recent(1) + Recent(2) + Recent(3) + Recent(4), "a.ZRTc.ZRTb.ZRTa.ZRT");
}

TEST_F(OpenLogFile, OfARecentLogThatIsGoneKeepsTheOpenOne) {
    MakeLog("mine.ZRT", "K1ZZ");
    Open("mine.ZRT");
    Settings.RecentFile[1] = "/gone/away.ZRT";
    Answer({BoxAnswer::Ok});
    ClickControl(LogForm.mnuFileRecent[1]);
    EXPECT_EQ(LastBox().Text,
              "The selected data file /gone/away.ZRT doesn't exist.  Make another selection.");
    EXPECT_EQ(LastBox().Title, "File Opening Error");
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Recent(1), "mine.ZRT");
}

TEST_F(OpenLogFile, NeverRemembersTheTemporaryLog) {
    MakeLog(kTempLog, "K1ZZ");
    Answer({BoxAnswer::Yes});
    CrashAndStart();
    ASSERT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Recent(1), "");
    EXPECT_FALSE(LogForm.mnuFileBackup.Enabled);
}

TEST_F(OpenLogFile, AfterARescanShowsTheDialogAgain) {
    MakeLog("mine.ZRT", "K1ZZ");
    Open("mine.ZRT");
    Session.RescanInPlace = true; // as after an edit
    Answer({BoxAnswer::Yes});
    Devices.FileAnswers = {std::nullopt};
    FileOpen(0);
    EXPECT_EQ(Devices.FileDialogs.size(), 2U);
}

TEST_F(OpenLogFile, WithBlanksAndOtherLettersInItsPath) {
    const std::string folder = PathOf("M\xC3\xBCller's  logs");
    ASSERT_EQ(Files.MakeFolder(folder), 0);
    MakeLog("M\xC3\xBCller's  logs/\xC3\x9C bung 1.ZRT", "K1ZZ");
    Open("M\xC3\xBCller's  logs/\xC3\x9C bung 1.ZRT");
    EXPECT_EQ(Log.NextEntry, 2);
    CrashAndStart();
    EXPECT_EQ(Settings.OpenFilePath, folder);
    ClickControl(LogForm.mnuFileRecent[0]);
    EXPECT_EQ(Log.NextEntry, 2);
}

// ---- window places

TEST_F(OpenLogFile, PutsTheWindowsWhereTheContestHadThem) {
    MakeLog("mine.ZRT", "K1ZZ");
    Settings.Windows[kGeneric - 1][kLogForm] = {"LOGFORM", "OPEN", 150, 300, 6000, 9000};
    Open("mine.ZRT");
    EXPECT_EQ(LogForm.Left, 150);
    EXPECT_EQ(LogForm.Top, 300);
    EXPECT_EQ(LogForm.Height, 6000);
    EXPECT_EQ(LogForm.Width, 9000);
    EXPECT_TRUE(LogForm.Placed);
    LogForm.Left = 450; // moved by the operator
    Answer({BoxAnswer::Yes});
    Open("mine.ZRT");
    EXPECT_EQ(Settings.Windows[kGeneric - 1][kLogForm].Left, 450);
}

TEST_F(OpenLogFile, GivesAWindowWithoutAStoredSizeItsDefault) {
    MakeLog("mine.ZRT", "K1ZZ");
    LogForm.Left = 77;
    LogForm.Width = 9000; // of the contest before
    LogForm.Height = 6000;
    Partial.Width = 9999;
    Settings.Windows[kGeneric - 1][kPartial] = {"PARTIAL", "CLOSED", 0, 0, 0, 0};
    Settings.Windows[kGeneric - 1][kLogForm] = {"LOGFORM", "OPEN", 0, 0, 0, 0};
    Open("mine.ZRT");
    EXPECT_EQ(LogForm.Left, 77);
    EXPECT_FALSE(LogForm.Placed);
    EXPECT_EQ(LogForm.Width, 0);
    EXPECT_EQ(LogForm.Height, 0);
    EXPECT_EQ(Partial.Width, 5900);
    EXPECT_EQ(Partial.Height, 3000);
}

TEST_F(OpenLogFile, TheLeastStoredSizeIsASize) {
    MakeLog("mine.ZRT", "K1ZZ");
    Settings.Windows[kGeneric - 1][kPartial] = {"PARTIAL", "CLOSED", 30, 45, 1, 1};
    Settings.Windows[kGeneric - 1][kLogForm] = {"LOGFORM", "OPEN", 30, 45, 0, 1};
    Open("mine.ZRT");
    EXPECT_EQ(Partial.Width, 1);
    EXPECT_EQ(Partial.Height, 1);
    EXPECT_FALSE(LogForm.Placed); // a height of nothing is no size
}

} // namespace
} // namespace zrt
