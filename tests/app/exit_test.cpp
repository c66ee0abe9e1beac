#include "app/exit.h"

#include "app/file_menu.h"
#include "app/partial_window.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "platform/dialogs.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

#include <filesystem>

namespace zrt {
namespace {

int winkeyerClosed = 0;

class ExitTheProgram : public ProgramTest {
  protected:
    ExitTheProgram() {
        StartProgram();
        winkeyerClosed = 0;
        CloseWinkeyer = [] { ++winkeyerClosed; };
        Settings.YourCall = "ZR1TEST"; // tells whether the settings were written
    }
    static bool SettingsWritten() {
        return BytesOf(kSettingsFile).find("YourCall=ZR1TEST\r\n") != std::string::npos;
    }
    static void ExpectEnded() {
        EXPECT_TRUE(Program.Ending);
        EXPECT_EQ(Program.ExitStatus, 0);
        EXPECT_TRUE(SettingsWritten());
        EXPECT_EQ(winkeyerClosed, 1);
    }
    static void ExpectStays() {
        EXPECT_FALSE(Program.Ending);
        EXPECT_EQ(winkeyerClosed, 0);
    }
    static void OpenUnnamed() {
        OpenNewLog(kGeneric);
        LogContact("K1ZZ", "ANN");
    }
};

TEST_F(ExitTheProgram, AsksWithoutALog) {
    Answer({BoxAnswer::No, BoxAnswer::Yes});
    ExitProgram();
    EXPECT_EQ(LastBox().Text, "Exit ZRTLOG?");
    EXPECT_EQ(LastBox().Title, "Exit ZRTLOG?");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNo);
    ExpectStays();
    ExitProgram();
    ExpectEnded();
}

TEST_F(ExitTheProgram, AsksTheSameOfALogWithAName) {
    OpenUnnamed();
    Log.LogState = kUsersName;
    Answer({BoxAnswer::No, BoxAnswer::Yes});
    ClickControl(LogForm.mnuFileExit);
    EXPECT_EQ(LastBox().Text, "Exit ZRTLOG?");
    ExpectStays();
    CloseForm(LogForm);
    ExpectEnded();
    EXPECT_TRUE(FileExists(kTempLog)); // nothing is deleted in this state
}

TEST_F(ExitTheProgram, AWindowThatIsOpenIsOpenAgainNextTime) {
    OpenUnnamed();
    Devices.FileAnswers = {"mine.ZRT"};
    ASSERT_TRUE(FileSaveAs()); // writes the settings for the last time before the exit
    OpenPartial();
    Partial.Left = 4321;
    Partial.Top = 765;
    Partial.Width = 3000;
    Partial.Height = 2000;
    Answer({BoxAnswer::Yes});
    ExitProgram();
    ASSERT_TRUE(Program.Ending);
    CrashAndStart(); // after an exit there is nothing to recover
    Settings.RecentFile[0] = PathOf("mine.ZRT");
    ClickControl(LogForm.mnuFileRecent[0]);
    EXPECT_TRUE(Partial.Visible);
    EXPECT_EQ(Partial.Left, 4321);
    EXPECT_EQ(Partial.Top, 765);
}

TEST_F(ExitTheProgram, OfALogWhoseFileHasVanishedWritesItAgain) {
    OpenUnnamed();
    LogContact("K2ZZ", "BOB");
    Devices.FileAnswers = {"mine.ZRT"};
    ASSERT_TRUE(FileSaveAs());
    const std::string whole = BytesOf("mine.ZRT");
    std::filesystem::remove(PathOf("mine.ZRT"));
    Answer({BoxAnswer::Yes});
    ExitProgram();
    ExpectEnded();
    EXPECT_EQ(Hex(BytesOf("mine.ZRT")), Hex(whole));
}

TEST_F(ExitTheProgram, OfALogWhoseFolderHasVanishedTellsAndMayReturn) {
    OpenUnnamed();
    std::filesystem::create_directory(PathOf("stick"));
    Devices.FileAnswers = {"stick/mine.ZRT"};
    ASSERT_TRUE(FileSaveAs());
    std::filesystem::remove_all(PathOf("stick"));
    Answer({BoxAnswer::Abort});
    ExitProgram();
    ExpectStays();
    EXPECT_TRUE(LogForm.lblNotOnDisk.Caption.starts_with("NOT ON DISK: 1 QSO, Nr 1."));
}

TEST_F(ExitTheProgram, CancelReturnsToAnUnnamedLog) {
    OpenUnnamed();
    const std::string before = BytesOf(kTempLog);
    Answer({BoxAnswer::Cancel});
    ExitProgram();
    EXPECT_EQ(LastBox().Text, "Save current log file?");
    EXPECT_EQ(LastBox().Title, "Save Log?");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNoCancel);
    ExpectStays();
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(before));
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_TRUE(LogForm.Visible);
}

TEST_F(ExitTheProgram, NoDeletesAnUnnamedLog) {
    OpenUnnamed();
    Answer({BoxAnswer::No});
    ExitProgram();
    ExpectEnded();
    EXPECT_FALSE(FileExists(kTempLog));
}

TEST_F(ExitTheProgram, YesSavesAnUnnamedLog) {
    OpenUnnamed();
    const std::string before = BytesOf(kTempLog);
    Answer({BoxAnswer::Yes});
    Devices.FileAnswers = {"mine.ZRT"};
    ExitProgram();
    ExpectEnded();
    EXPECT_FALSE(FileExists(kTempLog));
    EXPECT_EQ(Hex(BytesOf("mine.ZRT")), Hex(before));
}

TEST_F(ExitTheProgram, YesAndThenNoNameStays) {
    OpenUnnamed();
    Answer({BoxAnswer::Yes});
    Devices.FileAnswers = {std::nullopt};
    ExitProgram();
    ExpectStays();
    EXPECT_TRUE(FileExists(kTempLog));
    EXPECT_EQ(Log.LogState, kTemporaryName);
}

TEST_F(ExitTheProgram, YesAndAFileThatMayNotBeOverwrittenStays) {
    OpenUnnamed();
    MakeFile("mine.ZRT", "other");
    Answer({BoxAnswer::Yes, BoxAnswer::Cancel});
    Devices.FileAnswers = {"mine.ZRT"};
    ExitProgram();
    ExpectStays();
    EXPECT_EQ(BytesOf("mine.ZRT"), "other");
    EXPECT_TRUE(FileExists(kTempLog));
}

TEST_F(ExitTheProgram, YesOnAFullDiskStays) {
    OpenUnnamed();
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Yes, BoxAnswer::Cancel});
    Devices.FileAnswers = {"mine.ZRT"};
    ExitProgram();
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    ExpectStays();
    EXPECT_TRUE(FileExists(kTempLog));
    EXPECT_FALSE(FileExists("mine.ZRT"));
}

TEST_F(ExitTheProgram, TellsOfContactsThatAreNotOnDisk) {
    OpenUnnamed();
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    Log.LogState = kUsersName;
    Answer({BoxAnswer::Abort});
    ExitProgram();
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    ExpectStays();
    Answer({BoxAnswer::Retry, BoxAnswer::Yes});
    WhileBoxShows([] { Devices.Disk = DiskMode::Ok; });
    ExitProgram();
    ExpectEnded();
    EXPECT_EQ(BytesOf(kTempLog).size(), 180U);
}

TEST_F(ExitTheProgram, MayGiveUpContactsThatAreNotOnDisk) {
    OpenUnnamed();
    Devices.Disk = DiskMode::Full;
    Log.LogState = kUsersName;
    Answer({BoxAnswer::Cancel, BoxAnswer::Ignore, BoxAnswer::Yes});
    LogContact("K2ZZ");
    ExitProgram();
    ExpectEnded();
}

// No answer is queued in these: a box would fail the test.
TEST_F(ExitTheProgram, AnEndFromOutsideAsksNothingAndKeepsAnUnnamedLog) {
    OpenUnnamed();
    LeaveProgram();
    ExpectEnded();
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
    EXPECT_EQ(Log.LogState, kTemporaryName);
}

TEST_F(ExitTheProgram, AnEndFromOutsideWritesTheContactsThatAreOwed) {
    OpenUnnamed();
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
    Devices.Disk = DiskMode::Ok;
    LeaveProgram();
    ExpectEnded();
    EXPECT_EQ(BytesOf(kTempLog).size(), 180U);
}

TEST_F(ExitTheProgram, AnEndFromOutsideWritesThePlacesOfTheWindows) {
    OpenUnnamed();
    LogForm.Left = 1110;
    LogForm.Top = 2220;
    LogForm.Width = 13000;
    LogForm.Height = 9000;
    LeaveProgram();
    EXPECT_NE(BytesOf(kSettingsFile).find("LOGFORM OPEN 2220 1110 9000 13000"), std::string::npos);
}

TEST_F(ExitTheProgram, AnEndFromOutsideOnABrokenDiskAsksNothing) {
    OpenUnnamed();
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    LeaveProgram();
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(winkeyerClosed, 1); // the lines go off in any case
}

TEST_F(ExitTheProgram, ASecondSignalDoesNothing) {
    OpenUnnamed();
    LeaveProgram();
    Settings.YourCall = "ZR2TEST";
    LeaveProgram();
    EXPECT_EQ(winkeyerClosed, 1);
    EXPECT_TRUE(SettingsWritten()); // as they were the first time
}

TEST_F(ExitTheProgram, NoBoxOpensInAProgramThatEnds) {
    EndProgram(0);
    const std::size_t boxes = Devices.Boxes.size();
    const struct {
        BoxButtons Buttons;
        BoxAnswer Answer;
    } cases[] = {{BoxButtons::Ok, BoxAnswer::Ok},
                 {BoxButtons::OkCancel, BoxAnswer::Cancel},
                 {BoxButtons::AbortRetryIgnore, BoxAnswer::Abort},
                 {BoxButtons::YesNoCancel, BoxAnswer::Cancel},
                 {BoxButtons::YesNo, BoxAnswer::No},
                 {BoxButtons::RetryCancel, BoxAnswer::Cancel}};
    for (const auto &c : cases)
        EXPECT_EQ(ShowMessageBox({"Text", "Title", c.Buttons}), c.Answer);
    EXPECT_EQ(ShowFileDialog({}), std::nullopt);
    EXPECT_EQ(ShowFolderDialog("Title", "/"), std::nullopt);
    EXPECT_EQ(Devices.Boxes.size(), boxes);
}

TEST_F(ExitTheProgram, ASessionThatMayEndIsKeptAndGoesOn) {
    OpenUnnamed();
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    KeepSession(); // what fails is not asked about
    ExpectStays();
    Devices.Disk = DiskMode::Ok;
    KeepSession();
    ExpectStays();
    EXPECT_EQ(BytesOf(kTempLog).size(), 180U);
    EXPECT_TRUE(SettingsWritten());
}

} // namespace
} // namespace zrt
