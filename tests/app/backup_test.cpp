#include "app/backup.h"

#include "app/file_menu.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "platform/files.h"
#include "session/log_file.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

class Backup : public ProgramTest {
  protected:
    Backup() { StartProgram(); }
    // Opens a log named mine.ZRT and makes a folder for the backup.
    static void OpenNamed(const std::string &bytes) {
        MakeFile("mine.ZRT", bytes);
        Settings.RecentFile[0] = PathOf("mine.ZRT");
        ClickControl(LogForm.mnuFileRecent[0]);
        ASSERT_EQ(Log.LogState, kUsersName);
        ASSERT_EQ(Files.MakeFolder(PathOf("stick")), 0);
        Settings.BackUpDrive = PathOf("stick");
    }
    static std::string LogOf(int contacts) {
        std::string bytes = HeaderBytes("GEN  ");
        if (contacts > 0)
            bytes += std::string(34, '\0');
        for (int n = 0; n < contacts; ++n)
            bytes += EntryBytes(MakeEntry("K1ZZ", -21155, 1437, 3, '1'));
        return bytes;
    }
    static std::string OldLog(int contacts) {
        std::string bytes = HeaderBytes("WW CW", '2');
        bytes[4] = 0;
        OldEntry26 entry;
        entry.Callsign = "DL1ABC";
        entry.BandIndex = 3;
        const auto record = Encode(entry);
        for (int n = 0; n < contacts; ++n)
            bytes.append(reinterpret_cast<const char *>(record.data()), record.size());
        return bytes;
    }
};

TEST_F(Backup, WritesTheLogToTheFolder) {
    for (const int contacts : {0, 1, 3}) {
        if (Log.LogState != kNoLog)
            Answer({BoxAnswer::Yes});
        OpenNamed(LogOf(contacts));
        ClickControl(LogForm.mnuFileBackup);
        EXPECT_EQ(Hex(BytesOf("stick/mine.ZRT")), Hex(LogOf(contacts)));
        EXPECT_FALSE(Screen.BusyPointer);
    }
}

TEST_F(Backup, ReplacesTheOneFromBefore) {
    OpenNamed(LogOf(2));
    MakeFile("stick/mine.ZRT", std::string(5000, 'x'));
    BackupLog();
    EXPECT_EQ(Hex(BytesOf("stick/mine.ZRT")), Hex(LogOf(2)));
}

TEST_F(Backup, WithoutADriveSaysWhereToNameOne) {
    OpenNamed(LogOf(1));
    for (const char *drive : {"[none]", ""}) {
        Settings.BackUpDrive = drive;
        Answer({BoxAnswer::Ok});
        BackupLog();
        EXPECT_EQ(LastBox().Text, "No backup drive is chosen.  Write a drive or a folder behind "
                                  "BackUpDrive= in " +
                                      PathOf(kSettingsFile) + " while ZRTLOG is closed.");
    }
    EXPECT_FALSE(FileExists("stick/mine.ZRT"));
}

TEST_F(Backup, OfALogThatHasVanishedIsWholeAndBringsTheLogBack) {
    OpenNamed(LogOf(3));
    std::remove(PathOf("mine.ZRT").c_str());
    BackupLog();
    EXPECT_EQ(Hex(BytesOf("stick/mine.ZRT")), Hex(LogOf(3)));
    EXPECT_EQ(Hex(BytesOf("mine.ZRT")), Hex(LogOf(3)));
}

TEST_F(Backup, OfALogThatCantBeWrittenIsMadeFromMemory) {
    for (const bool old : {false, true}) {
        BeginProcess(Devices.ProgramFolder);
        StartProgram();
        Extensions.ProtectOldLogs = true;
        const std::string whole = old ? OldLog(2) : LogOf(2);
        OpenNamed(whole);
        std::remove(PathOf("mine.ZRT").c_str());
        Files.Open = [](const std::string &path, OpenMode mode, int &handle) {
            return path == PathOf("mine.ZRT") ? EIO : DiskFiles().Open(path, mode, handle);
        };
        Answer({BoxAnswer::Ignore});
        BackupLog();
        EXPECT_EQ(Hex(BytesOf("stick/mine.ZRT")), Hex(whole));
        Files.Open = DiskFiles().Open;
    }
}

TEST_F(Backup, ToADriveThatIsNotThereSaysSo) {
    OpenNamed(LogOf(1));
    Settings.BackUpDrive = "E";
    Answer({BoxAnswer::Cancel});
    BackupLog();
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(LastBox().Text, "No such file or directory");
    EXPECT_EQ(BytesOf("mine.ZRT"), LogOf(1));
}

TEST_F(Backup, IntoTheFolderOfTheLogIsRefused) {
    Extensions = {};
    OpenNamed(OldLog(2)); // whose backup would be blank
    Settings.BackUpDrive = Devices.ProgramFolder;
    Answer({BoxAnswer::Ok});
    BackupLog();
    EXPECT_EQ(Hex(BytesOf("mine.ZRT")), Hex(OldLog(2)));
}

TEST_F(Backup, OnADiskThatFailsKeepsTheOldOneAndCanBeRetried) {
    for (const DiskMode disk : {DiskMode::Full, DiskMode::Broken}) {
        if (Log.LogState != kNoLog)
            Answer({BoxAnswer::Yes});
        OpenNamed(LogOf(2));
        MakeFile("stick/mine.ZRT", LogOf(1));
        Devices.Disk = disk;
        Answer({BoxAnswer::Retry, BoxAnswer::Cancel});
        BackupLog();
        EXPECT_EQ(BytesOf("stick/mine.ZRT"), LogOf(1));
        EXPECT_FALSE(HasSideFile("stick"));
        Answer({BoxAnswer::Retry});
        WhileBoxShows([] { Devices.Disk = DiskMode::Ok; });
        BackupLog();
        EXPECT_EQ(BytesOf("stick/mine.ZRT"), LogOf(2));
    }
}

TEST_F(Backup, OfAnOldLogIsBlankToTheLetter) {
    Extensions.ProtectOldLogs = false;
    OpenNamed(OldLog(2));
    BackupLog();
    const std::string bytes = BytesOf("stick/mine.ZRT");
    EXPECT_EQ(bytes.size(), 180U);
    EXPECT_EQ(Hex(bytes.substr(0, 26)), Hex(OldLog(0)));
    EXPECT_EQ(bytes.find("DL1ABC"), std::string::npos);
}

TEST_F(Backup, OfAProtectedOldLogIsACopy) {
    Extensions.ProtectOldLogs = true;
    OpenNamed(OldLog(2));
    BackupLog();
    EXPECT_EQ(Hex(BytesOf("stick/mine.ZRT")), Hex(OldLog(2)));
}

TEST_F(Backup, IsOfferedForALogWithANameAlone) {
    EXPECT_FALSE(LogForm.mnuFileBackup.Enabled);
    OpenNewLog(kGeneric);
    EXPECT_FALSE(LogForm.mnuFileBackup.Enabled);
    Devices.FileAnswers = {PathOf("named.ZRT")};
    ASSERT_TRUE(FileSaveAs());
    EXPECT_TRUE(LogForm.mnuFileBackup.Enabled);
}

} // namespace
} // namespace zrt
