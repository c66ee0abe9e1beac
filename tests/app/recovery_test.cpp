#include "app/recovery.h"

#include "app/start_up.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/statistics.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "support/program.h"

#include <cerrno>

namespace zrt {
namespace {

std::string Unsaved(int number) {
    return "Unsaved ZRT Log " + std::to_string(number) + ".zrt";
}

class Recovery : public ProgramTest {
  protected:
    // A session with one contact that ends without warning.
    static void LoseASession() {
        StartProgram();
        OpenNewLog(kGeneric);
        LogContact("K1ZZ", "ANN");
    }
    static std::string OldLog() {
        return HeaderBytes("GEN  ") + std::string(34, '\0') +
               EntryBytes(MakeEntry("K1ZZ", -21155, 1437, 12, '1'));
    }
};

TEST_F(Recovery, IsNotOfferedWithoutATemporaryFile) {
    StartProgram();
    EXPECT_TRUE(Devices.Boxes.empty());
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_FALSE(FileExists(kTempLog));
    EXPECT_TRUE(LogForm.Visible);
}

TEST_F(Recovery, OpensTheLogAndLeavesItUnnamed) {
    LoseASession();
    const std::string before = BytesOf(kTempLog);
    Answer({BoxAnswer::Yes});
    CrashAndStart();
    EXPECT_EQ(LastBox().Text,
              "ZRTLOG has detected a backup file indicating the program was terminated "
              "abnormally.  Do you want to open it as a log file?");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNo);
    EXPECT_EQ(LastBox().Icon, BoxIcon::Question);
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Log.LogEntries[1].Callsign.Trimmed(), "K1ZZ");
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(before));
    EXPECT_EQ(LogForm.lblLog.Caption, "Log: [Unnamed] - - Contest: Generic Log");
    EXPECT_EQ(Contest.ContestId, kGeneric);
    LogContact("K2ZZ");
    EXPECT_EQ(BytesOf(kTempLog).size(), 180U);
}

TEST_F(Recovery, LeavesALogThatExitStillAsksToSave) {
    LoseASession();
    Answer({BoxAnswer::Yes});
    CrashAndStart();
    Answer({BoxAnswer::Cancel});
    ExitProgram();
    EXPECT_EQ(LastBox().Text, "Save current log file?");
}

TEST_F(Recovery, TakesTheBandOfTheLastEntry) {
    MakeFile(kTempLog, OldLog());
    Answer({BoxAnswer::Yes});
    StartProgram();
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 2    (40m SSB)");
}

TEST_F(Recovery, TakesAnEmptyLogOf26Bytes) {
    MakeFile(kTempLog, HeaderBytes("SS9SB"));
    Answer({BoxAnswer::Yes});
    StartProgram();
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(Log.NextEntry, 1);
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 1    (20m SSB)");
}

TEST_F(Recovery, RefusedRotatesEverySetOfUnsavedLogs) {
    for (int set = 0; set < 8; ++set) {
        SCOPED_TRACE(set);
        for (int number = 1; number <= 3; ++number) {
            std::remove(PathOf(Unsaved(number)).c_str());
            if (set & (1 << (number - 1)))
                MakeFile(Unsaved(number), "old " + std::to_string(number));
        }
        const auto has = [set](int number) { return (set & (1 << (number - 1))) != 0; };
        BeginProcess(Devices.ProgramFolder);
        MakeFile(kTempLog, OldLog());
        Answer({BoxAnswer::No});
        StartProgram();
        EXPECT_FALSE(FileExists(kTempLog));
        EXPECT_EQ(Log.LogState, kNoLog);
        EXPECT_EQ(Hex(BytesOf(Unsaved(1))), Hex(OldLog()));
        // Number 1 moves on only into a place that its successor has left.
        ASSERT_EQ(FileExists(Unsaved(2)), has(1));
        if (has(1)) {
            EXPECT_EQ(BytesOf(Unsaved(2)), "old 1");
        }
        ASSERT_EQ(FileExists(Unsaved(3)), has(2));
        if (has(2)) { // the oldest is lost
            EXPECT_EQ(BytesOf(Unsaved(3)), "old 2");
        }
    }
}

TEST_F(Recovery, RefusedKeepsTheLogWhenItCantBeMoved) {
    MakeFile(kTempLog, OldLog());
    Files.Rename = [](const std::string &, const std::string &) { return EACCES; };
    Answer({BoxAnswer::No});
    StartProgram();
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(OldLog()));
}

TEST_F(Recovery, RefusedLosesNoLogWhenNumber3CantBeRemoved) {
    for (int number = 1; number <= 3; ++number)
        MakeFile(Unsaved(number), "old " + std::to_string(number));
    MakeFile(kTempLog, OldLog());
    Files.Remove = [](const std::string &) { return EACCES; };
    Answer({BoxAnswer::No});
    StartProgram();
    EXPECT_EQ(BytesOf(Unsaved(1)), "old 1");
    EXPECT_EQ(BytesOf(Unsaved(2)), "old 2");
    EXPECT_EQ(BytesOf(Unsaved(3)), "old 3");
    EXPECT_TRUE(FileExists(kTempLog));
}

TEST_F(Recovery, IsNotOfferedForAFileThatIsTooShort) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{25}}) {
        BeginProcess(Devices.ProgramFolder);
        MakeFile(kTempLog, OldLog().substr(0, length));
        StartProgram();
        EXPECT_TRUE(Devices.Boxes.empty()) << length;
        EXPECT_EQ(Log.LogState, kNoLog);
        EXPECT_TRUE(LogForm.Visible);
        EXPECT_FALSE(LogForm.InData[0].Visible);
    }
}

TEST_F(Recovery, IsNotOfferedForForeignBytesAndKeepsThem) {
    std::string bytes;
    for (int i = 0; i < 500; ++i)
        bytes += static_cast<char>(i * 37);
    for (const std::string &foreign : {bytes, HeaderBytes("XYZCW") + "behind"}) {
        BeginProcess(Devices.ProgramFolder);
        MakeFile(kTempLog, foreign);
        StartProgram();
        EXPECT_TRUE(Devices.Boxes.empty());
        EXPECT_EQ(Log.LogState, kNoLog);
        // It stands where it was, or among the unsaved ones; it is not lost.
        EXPECT_EQ(Hex(BytesOf(FileExists(kTempLog) ? kTempLog : Unsaved(1))), Hex(foreign));
    }
}

TEST_F(Recovery, OfAnIncompatibleLogEndsTheProgram) {
    std::string bytes = OldLog();
    bytes[16] = 1;
    MakeFile(kTempLog, bytes);
    Answer({BoxAnswer::Yes, BoxAnswer::Ok});
    StartProgram();
    EXPECT_EQ(LastBox().Title, "Incompatible file format error");
    EXPECT_EQ(LastBox().Text,
              "The log selected was written with an earlier version of this program or with "
              "version 3.5 or earlier of ZRT for DOS.  This program and versions 4.1 and later of "
              "ZRT for DOS use a slightly different file format that is incompatible with earlier "
              "versions.  If you wish to convert the log file to this new format, load the file "
              "into ZRT for DOS, version 4.5 or later and follow instructions.");
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(bytes));
}

TEST_F(Recovery, OfAMarkBelowZeroOpensTheLog) {
    std::string bytes = OldLog();
    bytes[16] = bytes[17] = '\xFF';
    MakeFile(kTempLog, bytes);
    Answer({BoxAnswer::Yes});
    StartProgram();
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_FALSE(Program.Ending);
}

// The desktop ends the session while the question stands: nobody has answered it.
TEST_F(Recovery, IsOfferedAgainWhenTheProgramEndsInFrontOfIt) {
    StartProgram();
    MakeFile(kTempLog, OldLog());
    Dialogs.Box = [](const MessageBox &) {
        EndProgram(0);
        return BoxAnswer::No;
    };
    OfferRecovery();
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(OldLog()));
    EXPECT_FALSE(FileExists(Unsaved(1)));
    EXPECT_EQ(Log.LogState, kNoLog);
}

} // namespace
} // namespace zrt
