// One log is open in one copy of the program at a time.
#include "app/log_lock.h"

#include "app/file_menu.h"
#include "app/recovery.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/other_process.h"
#include "support/program.h"

#include <cerrno>
#include <filesystem>

namespace zrt {
namespace {

class LogLock : public ProgramTest {
  protected:
    LogLock() { StartProgram(); }
    ~LogLock() override { DiskFiles().Unlock(Other); }

    static std::string LogOf(const std::string &header, int contacts) {
        std::string bytes = header + std::string(34, '\0');
        for (int n = 0; n < contacts; ++n)
            bytes += EntryBytes(MakeEntry("K1ZZ", -21155, 1437, 3, '1'));
        return bytes;
    }
    static void Open(const char *name) {
        Devices.FileAnswers.emplace_back(PathOf(name));
        ClickControl(LogForm.mnuFileOpen);
    }
    // As another copy of the program asks for it.
    static LockResult Probe(const char *name) {
        FileLock lock;
        DiskFiles().LockOpenFile(PathOf(name), lock);
        const LockResult result = lock.Result;
        DiskFiles().Unlock(lock);
        return result;
    }
    void OtherCopyOpens(const char *name) {
        DiskFiles().LockOpenFile(PathOf(name), Other);
        ASSERT_EQ(Other.Result, LockResult::Taken);
    }
    FileLock Other;
};

TEST_F(LogLock, OfAnotherCopyRefusesTheLogAndTouchesNothing) {
    const std::string bytes = LogOf(HeaderBytes("GEN  "), 2);
    MakeFile("shared.ZRT", bytes);
    OtherCopyOpens("shared.ZRT");
    Answer({BoxAnswer::Ok});
    Open("shared.ZRT");
    EXPECT_EQ(LastBox().Title, "Log In Use");
    EXPECT_TRUE(
        LastBox().Text.starts_with("shared.ZRT is open in another copy of ZRTLOG (process "))
        << LastBox().Text;
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_TRUE(LogForm.Visible);
    EXPECT_FALSE(LogForm.InData[0].Visible);
    EXPECT_EQ(Settings.RecentFile[0], "");
    EXPECT_EQ(BytesOf("shared.ZRT"), bytes);
    DiskFiles().Unlock(Other);
    Open("shared.ZRT");
    EXPECT_EQ(Log.LogState, kUsersName);
    EXPECT_EQ(Probe("shared.ZRT"), LockResult::Held);
}

TEST_F(LogLock, KeepsTwoProgramsWithFoldersOfTheirOwnApart) {
    MakeFile("shared.ZRT", LogOf(HeaderBytes("GEN  "), 1));
    Open("shared.ZRT");
    const std::string path = PathOf("shared.ZRT");
    const std::string folder = PathOf("second");
    std::filesystem::create_directory(folder);
    for (const char *name :
         {kSettingsFile, "ZRTLOG126.DAT", "cty.dat", "master.scp", "callmtch.dat"})
        std::filesystem::copy(PathOf(name), folder);
    const OtherProcess second([&] {
        Log.Lock = {}; // that of the first program, which a fork shares
        BeginProcess(folder);
        StartProgram();
        Answer({BoxAnswer::Ok});
        Devices.FileAnswers.emplace_back(path);
        ClickControl(LogForm.mnuFileOpen);
        return !Devices.Boxes.empty() && LastBox().Title == "Log In Use" && Log.LogState == kNoLog;
    });
    EXPECT_TRUE(second.Succeeded);
    LogContact("K2ZZ");
    EXPECT_EQ(BytesOf("shared.ZRT").size(), 180U);
}

TEST_F(LogLock, HoldsFromNewOverSaveAsAndKillAllToTheNextLog) {
    OpenNewLog(kGeneric);
    EXPECT_EQ(Probe(kTempLog), LockResult::Held);
    LogContact("K1ZZ");
    EXPECT_EQ(Probe(kTempLog), LockResult::Held);
    Devices.FileAnswers = {"mine.ZRT"};
    ASSERT_TRUE(FileSaveAs());
    EXPECT_EQ(Probe("mine.ZRT"), LockResult::Held);
    Answer({BoxAnswer::Yes});
    ClickControl(LogForm.mnuEditKillAll);
    ASSERT_EQ(BytesOf("mine.ZRT").size(), 26U);
    EXPECT_EQ(Probe("mine.ZRT"), LockResult::Held);
    std::filesystem::remove(PathOf("mine.ZRT"));
    LogContact("K2ZZ"); // the file is made again
    EXPECT_EQ(Probe("mine.ZRT"), LockResult::Held);
    MakeFile("next.ZRT", LogOf(HeaderBytes("GEN  "), 1));
    Answer({BoxAnswer::Yes});
    Open("next.ZRT");
    EXPECT_EQ(Probe("mine.ZRT"), LockResult::Taken);
    EXPECT_EQ(Probe("next.ZRT"), LockResult::Held);
    PutLogAway();
    EXPECT_EQ(Probe("next.ZRT"), LockResult::Taken);
}

TEST_F(LogLock, HoldsAConvertedLog) {
    MakeFile("old.ZRT", LogOf(HeaderBytes("WPXCW", '1'), 1));
    Answer({BoxAnswer::Ok});
    Open("old.ZRT");
    ASSERT_TRUE(FileExists("old.ZRb"));
    EXPECT_EQ(Probe("old.ZRT"), LockResult::Held);
    EXPECT_EQ(Probe("old.ZRb"), LockResult::Taken);
}

TEST_F(LogLock, IsLetGoAfterAFailedOpening) {
    MakeFile("photo.ZRT", std::string(500, 'x'));
    Answer({BoxAnswer::Ok});
    Open("photo.ZRT");
    EXPECT_EQ(Probe("photo.ZRT"), LockResult::Taken);
}

TEST_F(LogLock, OfALogThatRunsKeepsItFromRecovery) {
    MakeFile(kTempLog, LogOf(HeaderBytes("GEN  "), 1));
    OtherCopyOpens(kTempLog);
    Answer({BoxAnswer::Ok});
    CrashAndStart();
    EXPECT_EQ(LastBox().Title, "Log In Use");
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
    // Nor is it moved out of the way of a new log.
    Answer({BoxAnswer::Cancel});
    ClickControl(LogForm.mnuFileNew);
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
    EXPECT_FALSE(FileExists("Unsaved ZRT Log 1.zrt"));
}

TEST_F(LogLock, IsTakenByRecoveryAndLetGoByItsRefusal) {
    MakeFile(kTempLog, LogOf(HeaderBytes("GEN  "), 1));
    Answer({BoxAnswer::No});
    CrashAndStart();
    EXPECT_EQ(Probe("Unsaved ZRT Log 1.zrt"), LockResult::Taken);
    MakeFile(kTempLog, LogOf(HeaderBytes("GEN  "), 1));
    Answer({BoxAnswer::Yes});
    CrashAndStart();
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(Probe(kTempLog), LockResult::Held);
}

TEST_F(LogLock, OfAnotherCopyKeepsSaveAsAndBackupFromReplacingItsLog) {
    const std::string bytes = LogOf(HeaderBytes("GEN  "), 3);
    MakeFile("shared.ZRT", bytes);
    OtherCopyOpens("shared.ZRT");
    OpenNewLog(kGeneric);
    LogContact("K2ZZ");
    Answer({BoxAnswer::Ok, BoxAnswer::Ok}); // to overwrite it; it is in use
    Devices.FileAnswers = {"shared.ZRT"};
    EXPECT_FALSE(FileSaveAs());
    EXPECT_EQ(LastBox().Title, "Log In Use");
    EXPECT_EQ(BytesOf("shared.ZRT"), bytes);
    EXPECT_EQ(Log.LogState, kTemporaryName);

    std::filesystem::create_directory(PathOf("inner"));
    Devices.FileAnswers = {"inner/shared.ZRT"};
    ASSERT_TRUE(FileSaveAs());
    Settings.BackUpDrive = PathOf("");
    Answer({BoxAnswer::Ok});
    ClickControl(LogForm.mnuFileBackup);
    EXPECT_EQ(LastBox().Title, "Log In Use");
    EXPECT_EQ(BytesOf("shared.ZRT"), bytes);
}

TEST_F(LogLock, ThatNobodyCanTakeIsAskedAbout) {
    MakeFile("mine.ZRT", LogOf(HeaderBytes("GEN  "), 1));
    Files.LockOpenFile = [](const std::string &, FileLock &lock) {
        lock.Result = LockResult::Impossible;
        lock.Error = ENOLCK;
    };
    Answer({BoxAnswer::No});
    Open("mine.ZRT");
    EXPECT_EQ(LastBox().Title, "Log In Use");
    EXPECT_EQ(LastBox().DefaultButton, 2);
    EXPECT_TRUE(LastBox().Text.starts_with("mine.ZRT can't be locked: No locks available."));
    EXPECT_EQ(Log.LogState, kNoLog);
    Answer({BoxAnswer::Yes});
    Open("mine.ZRT");
    EXPECT_EQ(Log.LogState, kUsersName);
}

TEST_F(LogLock, OfAFolderThatCantBeTakenIsAskedAboutAtTheStart) {
    MakeFile(kTempLog, LogOf(HeaderBytes("GEN  "), 1));
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
        BeginProcess(Devices.ProgramFolder);
        Files.Lock = [](const std::string &) {
            return FileLock{LockResult::Impossible, EACCES, {}, -1};
        };
        Answer({answer});
        if (answer == BoxAnswer::Yes)
            Answer({BoxAnswer::Yes}); // to recovery
        StartProgram();
        const MessageBox box = Devices.Boxes.at(0).Box;
        EXPECT_NE(box.Text.find("can't be locked: Permission denied."), std::string::npos);
        EXPECT_EQ(box.DefaultButton, 2);
        EXPECT_EQ(Program.Ending, answer == BoxAnswer::No);
        EXPECT_EQ(Program.ExitStatus, answer == BoxAnswer::No ? 1 : 0);
        EXPECT_TRUE(FileExists(kTempLog));
    }
}

TEST_F(LogLock, LeavesALogOfAnotherCopyToTheReadersOfFiles) {
    MakeFile("shared.ZRT", LogOf(HeaderBytes("GEN  "), 1));
    OtherCopyOpens("shared.ZRT");
    FileBytes bytes;
    EXPECT_EQ(ReadFile(PathOf("shared.ZRT"), bytes), 0);
    EXPECT_EQ(bytes.size(), 120U);
    EXPECT_EQ(CopyFile(PathOf("shared.ZRT"), PathOf("copy.ZRT")), 0);
}

} // namespace
} // namespace zrt
