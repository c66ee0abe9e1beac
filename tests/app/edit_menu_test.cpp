#include "app/edit_menu.h"

#include "app/start_up.h"
#include "entry/log_form.h"
#include "entry/statistics.h"
#include "platform/files.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "session/settings_file.h"
#include "support/program.h"

namespace zrt {
namespace {

class EditMenuOf : public ProgramTest {
  protected:
    EditMenuOf() { StartProgram(); }
    // An unnamed log with contacts.
    static void OpenLogOf(i16 contestId, int contacts) {
        OpenNewLog(contestId);
        for (int n = 1; n <= contacts; ++n)
            LogContact("K" + std::to_string(n) + "ZZ", "ANN");
        ASSERT_EQ(Log.NextEntry, contacts + 1);
    }
    static std::string EmptyRecords(int count, std::size_t length) {
        LogHeader blank;
        std::string bytes;
        for (int n = 0; n < count; ++n) {
            const auto record = Encode(OldEntry36());
            bytes.append(reinterpret_cast<const char *>(record.data()), length);
        }
        return bytes;
    }
};

using KillLast = EditMenuOf;
using KillAll = EditMenuOf;
using EditLast = EditMenuOf;

// ---- Kill Last Entry

TEST_F(KillLast, OfAnEmptyLogSaysSo) {
    OpenLogOf(kGeneric, 0);
    Answer({BoxAnswer::Ok});
    ClickControl(LogForm.mnuEditKillLast);
    EXPECT_EQ(LastBox().Text, "No Entries in Log, so can't kill last entry.");
    EXPECT_EQ(LastBox().Title, "No Log Entries");
}

TEST_F(KillLast, AsksAndNoKeepsTheContact) {
    OpenLogOf(kGeneric, 2);
    Answer({BoxAnswer::No});
    KillLastEntry();
    EXPECT_EQ(LastBox().Text, "Kill last log entry?");
    EXPECT_EQ(LastBox().Title, "Confirm kill");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNo);
    EXPECT_EQ(Log.NextEntry, 3);
}

TEST_F(KillLast, FreesTheNumberAndLeavesFileAndScore) {
    OpenLogOf(kGeneric, 2);
    const std::string before = BytesOf(kTempLog);
    const i32 points = Statistics.TotalPoints;
    SetFocus(LogForm.InData[1]);
    Answer({BoxAnswer::Yes});
    KillLastEntry();
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(BytesOf(kTempLog), before);
    EXPECT_EQ(Statistics.TotalPoints, points);
    EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[0]);
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 2    (20m CW)");
}

TEST_F(KillLast, TakesTheHigherCwBandsForPhoneInItsLabel) {
    OpenLogOf(kGeneric, 1);
    Radios.BandIndex = 21; // 12 m CW
    Answer({BoxAnswer::Yes});
    KillLastEntry();
    EXPECT_TRUE(LogForm.QSONrLabel.Caption.ends_with(" SSB)")) << LogForm.QSONrLabel.Caption;
}

TEST_F(KillLast, TellsTheModeOnTheBandsAtTheBorder) {
    OpenLogOf(kGeneric, 3);
    for (const auto &[band, label] :
         {std::pair<i16, const char *>{9, "QSO Nr 3    (10m SSB)"}, {8, "QSO Nr 2    (2m  CW)"}}) {
        Radios.BandIndex = band;
        Answer({BoxAnswer::Yes});
        KillLastEntry();
        EXPECT_EQ(LogForm.QSONrLabel.Caption, label);
    }
}

TEST_F(KillLast, IsOverwrittenByTheNextContact) {
    OpenLogOf(kGeneric, 2);
    Answer({BoxAnswer::Yes});
    KillLastEntry();
    LogContact("G3ZZ", "BOB");
    EXPECT_EQ(BytesOf(kTempLog).size(), 180U);
    EXPECT_EQ(BytesOf(kTempLog).substr(126, 10), "G3ZZ      ");
}

TEST_F(KillLast, ComesBackAtTheNextOpening) {
    OpenLogOf(kGeneric, 2);
    Answer({BoxAnswer::Yes});
    KillLastEntry();
    Answer({BoxAnswer::Yes}); // recovery
    CrashAndStart();
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.LogEntries[2].Callsign.Trimmed(), "K2ZZ");
}

TEST_F(KillLast, ForgetsAContactThatNeverReachedTheDisk) {
    OpenLogOf(kGeneric, 1);
    Devices.Disk = DiskMode::Broken;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ", "BOB");
    ASSERT_EQ(Log.Unwritten.size(), 1U);
    Answer({BoxAnswer::Yes});
    KillLastEntry();
    EXPECT_TRUE(Log.Unwritten.empty());
    EXPECT_FALSE(LogForm.lblNotOnDisk.Visible);
}

// ---- Kill All Entries

TEST_F(KillAll, OfAnEmptyLogSaysSo) {
    OpenLogOf(kGeneric, 0);
    Answer({BoxAnswer::Ok});
    ClickControl(LogForm.mnuEditKillAll);
    EXPECT_EQ(LastBox().Text, "No Entries in Log, so can't kill allentries.");
    EXPECT_EQ(LastBox().Title, "No Log Entries");
}

TEST_F(KillAll, AsksWithNoAsDefault) {
    OpenLogOf(kGeneric, 2);
    Answer({BoxAnswer::No});
    KillAllEntries();
    EXPECT_EQ(LastBox().Text, "Kill ALL log entries?\nIf you do so, a backup file is created, "
                              "called KilledFile.zrt.");
    EXPECT_EQ(LastBox().Title, "Confirm kill");
    EXPECT_EQ(LastBox().DefaultButton, 2);
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_FALSE(FileExists("KilledFile.zrt"));
}

TEST_F(KillAll, EmptiesTheLogOfAContestAndKeepsTheContest) {
    OpenLogOf(kWpx, 0);
    Log.WorkingEntry = MakeEntry("K1ZZ", -21155, 1437, 3, '1');
    ASSERT_EQ(AppendEntry(), 0);
    Answer({BoxAnswer::Yes});
    KillAllEntries();
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(HeaderBytes("WPXCW", '2')));
    EXPECT_EQ(Log.NextEntry, 1);
    EXPECT_EQ(Statistics.TotalPoints, 0);
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(LogForm.lblLog.Caption, "Log: [Unnamed] - - Contest: WPX CW");
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 1    (20m CW)");
    LogContact("K2ZZ", "1");
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
}

// The backup is made of the old formats' entries, which a log of today's format leaves empty.
TEST_F(KillAll, WritesTheKilledFileOfEmptyRecords) {
    struct Row {
        i16 ContestId;
        const char *Tag;
        std::size_t Length;
    };
    for (const Row &row : {Row{kGeneric, "GENCW", 26}, Row{kSprint, "SPRCW", 36}}) {
        OpenLogOf(row.ContestId, 0);
        for (int n = 0; n < 2; ++n) {
            Log.WorkingEntry = MakeEntry("K1ZZ", -21155, 1437, 3, '1');
            ASSERT_EQ(AppendEntry(), 0);
        }
        const std::string header = BytesOf(kTempLog).substr(0, 26);
        Answer({BoxAnswer::Yes});
        KillAllEntries();
        const std::string padding(row.Length - 26, '\0');
        EXPECT_EQ(Hex(BytesOf("KilledFile.zrt")),
                  Hex(header + padding + EmptyRecords(2, row.Length)));
    }
}

// The entries of the old formats are 5000; a log of today may have more.
TEST_F(KillAll, OfALogLongerThanTheOldFormatsWritesEmptyRecordsToItsEnd) {
    constexpr int kContacts = 5002;
    OpenLogOf(kNaqp, 0);
    std::string log = BytesOf(kTempLog) + std::string(34, '\0');
    for (int n = 0; n < kContacts; ++n)
        log += EntryBytes(MakeEntry("K1ZZ", -21155, 1437, 3, '1'));
    MakeFile("long.ZRT", log);
    Answer({BoxAnswer::No}); // the unnamed log is not saved
    Settings.RecentFile[0] = PathOf("long.ZRT");
    ClickControl(LogForm.mnuFileRecent[0]);
    ASSERT_EQ(Log.NextEntry, kContacts + 1);
    Answer({BoxAnswer::Yes});
    KillAllEntries();
    EXPECT_EQ(BytesOf("KilledFile.zrt").substr(36), EmptyRecords(kContacts, 36));
}

TEST_F(KillAll, WithKeepKilledLogKeepsTheContactsThatAreOwedToTheDisk) {
    Extensions.KeepKilledLog = true;
    OpenLogOf(kGeneric, 1);
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ", "BOB");
    ASSERT_EQ(Log.Unwritten.size(), 1U);
    // Still full: back to the log.
    Answer({BoxAnswer::Yes, BoxAnswer::Abort});
    KillAllEntries();
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.Unwritten.size(), 1U);
    Devices.Disk = DiskMode::Ok;
    Answer({BoxAnswer::Yes});
    KillAllEntries();
    EXPECT_EQ(Log.NextEntry, 1);
    const std::string kept = BytesOf("KilledLog 1.zrt");
    ASSERT_EQ(kept.size(), 180U);
    EXPECT_EQ(kept.substr(126, 4), "K2ZZ");
}

TEST_F(KillAll, WritesTheEntriesOfAnOldLog) {
    std::string old = HeaderBytes("WW CW", '2');
    old[4] = 0; // no log of today's format
    OldEntry26 entry;
    entry.Callsign = "DL1ABC";
    entry.Date = 21151;
    entry.BandIndex = 3;
    const auto record = Encode(entry);
    old.append(reinterpret_cast<const char *>(record.data()), record.size());
    MakeFile("old.ZRT", old);
    Settings.RecentFile[0] = PathOf("old.ZRT");
    ClickControl(LogForm.mnuFileRecent[0]);
    ASSERT_EQ(Log.NextEntry, 2);
    Answer({BoxAnswer::Yes});
    KillAllEntries();
    EXPECT_EQ(Hex(BytesOf("KilledFile.zrt")), Hex(old));
    EXPECT_EQ(Hex(BytesOf("old.ZRT")), Hex(old.substr(0, 26)));
    EXPECT_EQ(Log.LogState, kUsersName);
}

TEST_F(KillAll, WithKeepKilledLogKeepsThreeWholeLogs) {
    Extensions.KeepKilledLog = true;
    std::vector<std::string> logs;
    for (int n = 1; n <= 4; ++n) {
        OpenLogOf(kGeneric, n);
        logs.push_back(BytesOf(kTempLog));
        Answer({BoxAnswer::Yes});
        KillAllEntries();
    }
    EXPECT_EQ(BytesOf("KilledLog 1.zrt"), logs[3]);
    EXPECT_EQ(BytesOf("KilledLog 2.zrt"), logs[2]);
    EXPECT_EQ(BytesOf("KilledLog 3.zrt"), logs[1]);
    EXPECT_FALSE(FileExists("KilledLog 4.zrt"));
    EXPECT_FALSE(HasSideFile());
}

TEST_F(KillAll, OnADiskThatFailsLosesNothing) {
    for (const bool keep : {false, true}) {
        for (const DiskMode disk : {DiskMode::Full, DiskMode::Broken}) {
            OpenLogOf(kGeneric, 2);
            Extensions.KeepKilledLog = keep;
            const std::string before = BytesOf(kTempLog);
            Devices.Disk = disk;
            Answer({BoxAnswer::Yes, BoxAnswer::Cancel});
            KillAllEntries();
            EXPECT_EQ(LastBox().Title, "File or Disk Error");
            Devices.Disk = DiskMode::Ok;
            EXPECT_EQ(BytesOf(kTempLog), before);
            EXPECT_EQ(Log.NextEntry, 3);
            EXPECT_FALSE(FileExists("KilledFile.zrt"));
        }
    }
}

TEST_F(KillAll, NamesTheCopyThatHoldsTheContacts) {
    Extensions.KeepKilledLog = true;
    OpenLogOf(kGeneric, 2);
    Answer({BoxAnswer::No});
    KillAllEntries();
    EXPECT_EQ(LastBox().Text, "Kill ALL log entries?\nIf you do so, a backup file is created, "
                              "called KilledLog 1.zrt.");
}

TEST_F(KillAll, WritesTheSettingsAndThePlacesOfTheWindows) {
    OpenLogOf(kGeneric, 1);
    Settings.YourCall = "ZR1TEST";
    LogForm.Left = 1234;
    LogForm.Top = 567;
    LogForm.Width = 8000;
    LogForm.Height = 4000;
    Answer({BoxAnswer::Yes});
    KillAllEntries();
    const std::string settings = BytesOf(kSettingsFile);
    EXPECT_NE(settings.find("YourCall=ZR1TEST\r\n"), std::string::npos);
    EXPECT_NE(settings.find("LOGFORM OPEN 567 1234 4000 8000\r\n"), std::string::npos);
    EXPECT_EQ(settings, SettingsText());
    EXPECT_TRUE(Session.RescanInPlace);
}

// A log whose file was cut by another process is killed from memory, whole.
TEST_F(KillAll, OfAFileThatWasCutKeepsAllContacts) {
    Extensions.KeepKilledLog = true;
    OpenLogOf(kGeneric, 5);
    const std::string whole = BytesOf(kTempLog);
    MakeFile(kTempLog, whole.substr(0, 150));
    Answer({BoxAnswer::Yes});
    KillAllEntries();
    EXPECT_EQ(Hex(BytesOf("KilledLog 1.zrt")), Hex(whole));
}

// ---- Edit Last Entry

TEST_F(EditLast, OfAnEmptyLogSaysSo) {
    OpenLogOf(kGeneric, 0);
    Answer({BoxAnswer::Ok});
    ClickControl(LogForm.mnuEditLast);
    EXPECT_EQ(LastBox().Text, "No Entries in Log, so can't edit last entry.");
    EXPECT_EQ(LastBox().Title, "No Log Entries");
}

TEST_F(EditLast, WithoutAnEditorSaysSo) {
    OpenLogOf(kGeneric, 1);
    Answer({BoxAnswer::Ok});
    ClickControl(LogForm.mnuEditLast);
    EXPECT_EQ(LastBox().Text, "This version can't edit a contact yet.  Use Kill Last Entry, and "
                              "log the contact again.");
    EXPECT_EQ(Log.NextEntry, 2);
}

TEST_F(EditLast, ReadsTheLogAgainOnlyWhenNothingIsOwedToTheDisk) {
    OpenLogOf(kGeneric, 1);
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ", "BOB");
    EditMenu.EditLastEntry = [] { return true; };
    Answer({BoxAnswer::Abort});
    EditLastEntry();
    EXPECT_EQ(LastBox().Buttons, BoxButtons::AbortRetryIgnore);
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.Unwritten.size(), 1U);
    EXPECT_EQ(Log.LogEntries[2].Callsign.Trimmed(), "K2ZZ");
    Devices.Disk = DiskMode::Ok;
    EditLastEntry();
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(BytesOf(kTempLog).size(), 180U);
}

TEST_F(EditLast, RebuildsEverythingAfterAChangeAlone) {
    OpenLogOf(kGeneric, 2);
    const std::string last = LogForm.lblLast.Caption;
    Answer({BoxAnswer::Yes});
    KillLastEntry(); // the score keeps both until the log is read again
    EXPECT_EQ(Statistics.TotalPoints, 4);
    EditMenu.EditLastEntry = [] { return false; };
    EditLastEntry();
    EXPECT_EQ(Statistics.TotalPoints, 4);
    EditMenu.EditLastEntry = [] {
        Log.WorkingEntry = Log.LogEntries[1];
        Log.WorkingEntry.Callsign = "VOID";
        return WriteEntry(1) == 0;
    };
    EditLastEntry();
    EXPECT_EQ(Log.NextEntry, 3); // the killed one is back
    EXPECT_EQ(Statistics.TotalPoints, 2);
    EXPECT_EQ(LogForm.lblLast.Caption, last);
    EXPECT_TRUE(Session.RescanInPlace);
}

// ---- Mark Years

// The next contact may inherit from the working record.
TEST_F(EditMenuOf, MarkingTheYearsLeavesTheWorkingRecordAlone) {
    Extensions.StoreDecade = true;
    SetTime(2005, 1, 15, 14, 37);
    OpenLogOf(kGeneric, 2);
    Log.WorkingEntry.RadioNumber = "2";
    Log.WorkingEntry.Frequency = "7025";
    const LogEntry before = Log.WorkingEntry;
    Answer({BoxAnswer::Yes});
    MarkDecade();
    EXPECT_EQ(Log.LogEntries[1].Reserved.Whole()[0], '2');
    EXPECT_EQ(Log.WorkingEntry, before);
}

} // namespace
} // namespace zrt
