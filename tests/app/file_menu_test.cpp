#include "app/file_menu.h"

#include "app/contest_chooser.h"
#include "app/start_up.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/statistics.h"
#include "platform/files.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

#include <cerrno>
#include <filesystem>

#include <sys/stat.h>

namespace zrt {
namespace {

constexpr int kSsRow = 10;
constexpr int kGenericRow = 12;

class FileMenu : public ProgramTest {
  protected:
    FileMenu() { StartProgram(); }
    static void New(int row = kGenericRow) {
        ChooseInDialog(row, [] { ClickControl(ChCoForm.optFrame1[1]); });
        ClickControl(LogForm.mnuFileNew);
    }
    static void CancelledNew() {
        Devices.Operator = [] {
            ClickControl(ChCoForm.cmdCancel);
            return true;
        };
        ClickControl(LogForm.mnuFileNew);
    }
    static void OpenNamed() {
        New();
        LogContact("K1ZZ", "ANN");
        Devices.FileAnswers = {"mine.ZRT"};
        ASSERT_TRUE(FileSaveAs());
    }
};

// ---- New

TEST_F(FileMenu, NewWithoutALogAsksNothing) {
    New(kSsRow);
    EXPECT_TRUE(Devices.Boxes.empty());
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(HeaderBytes("SS9CW")));
    EXPECT_EQ(LogForm.lblLog.Caption, "Log: [Unnamed] - - Contest: SS  CW");
    EXPECT_TRUE(LogForm.mnuFileSave.Enabled);
    EXPECT_EQ(Log.NextEntry, 1);
    EXPECT_FALSE(Session.ReplacingLog);
    EXPECT_EQ(ActiveForm(), &LogForm);
}

TEST_F(FileMenu, NewTakesItsOwnLabels) {
    struct Row {
        int Row;
        const char *Label;
    };
    for (const Row &row : {Row{12, "[Generic]"}, Row{7, "NEQP"}, Row{6, "NAQP  CW"}}) {
        if (Log.LogState != kNoLog)
            Answer({BoxAnswer::No});
        New(row.Row);
        EXPECT_EQ(LogForm.lblLog.Caption, std::string("Log: [Unnamed] - - Contest: ") + row.Label);
    }
}

TEST_F(FileMenu, NewStartsOnTwentyMeters) {
    New(kSsRow);
    EXPECT_EQ(CurrentBand(), 3);
    EXPECT_EQ(Radios.RadioBandMode[1], 3);
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 1    (20m CW)");
    Answer({BoxAnswer::No});
    New(1); // ARRL 10 m
    EXPECT_EQ(CurrentBand(), 1);
    Answer({BoxAnswer::No});
    ChooseInDialog(kSsRow, [] { ClickControl(ChCoForm.optFrame1[0]); });
    FileNew();
    EXPECT_EQ(CurrentBand(), 11);
}

TEST_F(FileMenu, NewOverALogWithANameAsksWithNoAsDefault) {
    OpenNamed();
    const std::string before = BytesOf("mine.ZRT");
    Answer({BoxAnswer::No});
    FileNew();
    EXPECT_EQ(LastBox().Text, "A log file is already open.  Do you want to start a new one? ");
    EXPECT_EQ(LastBox().Title, "Log Already Opened");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNo);
    EXPECT_EQ(LastBox().DefaultButton, 2);
    EXPECT_EQ(Log.LogState, kUsersName);
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_FALSE(FileExists(kTempLog));
    Answer({BoxAnswer::Yes});
    New(kSsRow);
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(Log.NextEntry, 1);
    EXPECT_EQ(Hex(BytesOf("mine.ZRT")), Hex(before));
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(HeaderBytes("SS9CW")));
}

TEST_F(FileMenu, NewAndOpenOverALogWithANameTellOfContactsThatAreNotOnDisk) {
    OpenNamed();
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ", "BOB");
    for (void (*const deed)() : {FileNew, +[] { FileOpen(0); }}) {
        Answer({BoxAnswer::Yes, BoxAnswer::Abort});
        deed();
        EXPECT_EQ(LastBox().Buttons, BoxButtons::AbortRetryIgnore);
        EXPECT_EQ(Log.LogState, kUsersName);
        EXPECT_EQ(Log.NextEntry, 3);
        EXPECT_EQ(Log.Unwritten.size(), 1U);
    }
    Devices.Disk = DiskMode::Ok;
    Answer({BoxAnswer::Yes});
    CancelledNew();
    EXPECT_EQ(BytesOf("mine.ZRT").size(), 180U);
}

TEST_F(FileMenu, NewOverALogWhoseFileWasCutWritesItWhole) {
    OpenNamed();
    LogContact("K2ZZ", "BOB");
    const std::string whole = BytesOf("mine.ZRT");
    MakeFile("mine.ZRT", whole.substr(0, 70));
    Answer({BoxAnswer::Yes});
    CancelledNew();
    EXPECT_EQ(Hex(BytesOf("mine.ZRT")), Hex(whole));
}

TEST_F(FileMenu, NewOverAnUnnamedLogMayDropIt) {
    New();
    LogContact("K1ZZ");
    Answer({BoxAnswer::No});
    New(kSsRow);
    EXPECT_EQ(LastBox().Text, "Save current log file? ");
    EXPECT_EQ(LastBox().Title, "Save Current File?");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNoCancel);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(HeaderBytes("SS9CW")));
    EXPECT_EQ(Log.NextEntry, 1);
}

TEST_F(FileMenu, NewOverAnUnnamedLogMaySaveIt) {
    New();
    LogContact("K1ZZ");
    const std::string before = BytesOf(kTempLog);
    Answer({BoxAnswer::Yes});
    Devices.FileAnswers = {"mine.ZRT"};
    New(kSsRow);
    EXPECT_EQ(Hex(BytesOf("mine.ZRT")), Hex(before));
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(HeaderBytes("SS9CW")));
}

TEST_F(FileMenu, NewOverAnUnnamedLogStopsAtCancel) {
    New();
    LogContact("K1ZZ");
    Answer({BoxAnswer::Cancel});
    FileNew();
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
}

TEST_F(FileMenu, NewStopsWhenTheSaveIsCancelled) {
    New();
    LogContact("K1ZZ");
    Answer({BoxAnswer::Yes});
    Devices.FileAnswers = {std::nullopt};
    FileNew();
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U); // the only copy is still there
}

TEST_F(FileMenu, NewForgetsTheLogBefore) {
    New();
    LogContact("K1ZZ/4", "ANN");
    Answer({BoxAnswer::No});
    New(kGenericRow);
    EXPECT_TRUE(Dupes.CurrentCalls.empty() && Dupes.PortableTable.empty());
    EXPECT_EQ(Statistics.TotalPoints, 0);
    EXPECT_EQ(LogForm.lblLast.Caption, "");
    LogContact("K2ZZ");
    EXPECT_EQ(Log.LogEntries[1].SentNumber, 1);
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
}

TEST_F(FileMenu, ACancelledChooserLeavesNoLog) {
    CancelledNew();
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_FALSE(FileExists(kTempLog));
    EXPECT_FALSE(Session.ReplacingLog);
    EXPECT_TRUE(LogForm.Visible);
    EXPECT_FALSE(LogForm.InData[0].Visible);
    EXPECT_FALSE(LogForm.mnuFileSave.Enabled);
}

TEST_F(FileMenu, ACancelledChooserDoesNotStopTheNextNew) {
    CancelledNew();
    New(kSsRow);
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_TRUE(FileExists(kTempLog));
}

TEST_F(FileMenu, NewOnAFullDiskLeavesNoLogAfterCancel) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    New();
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_EQ(LastBox().Text, "No space left on device");
    EXPECT_FALSE(LogForm.InData[0].Visible);
    Devices.Disk = DiskMode::Ok;
    New();
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(HeaderBytes("GEN  ")));
}

TEST_F(FileMenu, NewOnAFullDiskGoesOnAfterRetry) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Retry});
    WhileBoxShows([] { Devices.Disk = DiskMode::Ok; });
    New();
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(HeaderBytes("GEN  ")));
}

// The re-scan flag of an edit must not reach the reset of a new log.
TEST_F(FileMenu, NewAfterARescanClosesTheWindowsOfTheLogToo) {
    static Form voice;
    voice = {};
    RegisterForm(voice, "Audio", "stands for the voice window", {});
    New();
    Session.RescanInPlace = true;
    voice.Visible = true;
    Answer({BoxAnswer::No});
    CancelledNew();
    EXPECT_FALSE(voice.Visible);
    EXPECT_FALSE(Session.RescanInPlace);
    RegisterForm(voice, "", "", {}); // the next test knows nothing of it
}

// ---- Save As

TEST_F(FileMenu, SaveAsGivesTheLogItsName) {
    New(6); // NAQP
    LogContact("K1ZZ", "JOE CT");
    const std::string before = BytesOf(kTempLog);
    Devices.FileAnswers = {"mine"};
    EXPECT_TRUE(FileSaveAs());
    EXPECT_EQ(Devices.FileDialogs.back().Title, "Save Current Log As");
    EXPECT_EQ(Devices.FileDialogs.back().Filter, "ZRT logs (*.ZRT)|*.ZRT|All files (*.*)|*.*");
    EXPECT_EQ(Devices.FileDialogs.back().DefaultExtension, "ZRT");
    EXPECT_TRUE(Devices.FileDialogs.back().Save);
    EXPECT_FALSE(FileExists(kTempLog));
    EXPECT_EQ(Hex(BytesOf("mine.ZRT")), Hex(before));
    EXPECT_EQ(Log.LogState, kUsersName);
    EXPECT_EQ(Log.LogFileName, PathOf("mine.ZRT"));
    EXPECT_EQ(LogForm.lblLog.Caption, "Log: mine.ZRT - - Contest: NA  CW");
    LogContact("K2ZZ", "JOE CT");
    EXPECT_EQ(BytesOf("mine.ZRT").size(), 180U);
}

TEST_F(FileMenu, SaveAsOfANamedLogSaysThatThereIsNothingToDo) {
    OpenNamed();
    Answer({BoxAnswer::Ok});
    EXPECT_TRUE(FileSaveAs());
    EXPECT_EQ(LastBox().Text, "There is nothing to save: each contact is on the disk, in " +
                                  PathOf("mine.ZRT") + ", from the moment it is logged.");
    EXPECT_EQ(Devices.FileDialogs.size(), 1U);
}

// ---- Save As of a file that other processes or a disk have damaged

TEST_F(FileMenu, SaveAsOfATemporaryFileThatWasCutSavesAllContacts) {
    for (const std::size_t left : {std::size_t{0}, std::size_t{26}, std::size_t{130}}) {
        New();
        for (const char *call : {"K1ZZ", "K2ZZ", "K3ZZ", "K4ZZ", "K5ZZ"})
            LogContact(call);
        const std::string whole = BytesOf(kTempLog);
        MakeFile(kTempLog, whole.substr(0, left));
        const std::string name = "cut" + std::to_string(left) + ".ZRT";
        Devices.FileAnswers = {name};
        EXPECT_TRUE(FileSaveAs());
        EXPECT_EQ(Hex(BytesOf(name)), Hex(whole));
        Answer({BoxAnswer::Yes});
    }
    CancelledNew();
}

TEST_F(FileMenu, SaveAsOfATemporaryFileThatWasDeletedSavesAllContacts) {
    New();
    LogContact("K1ZZ");
    LogContact("K2ZZ");
    const std::string whole = BytesOf(kTempLog);
    std::filesystem::remove(PathOf(kTempLog));
    Devices.FileAnswers = {"mine.ZRT"};
    EXPECT_TRUE(FileSaveAs());
    EXPECT_EQ(Hex(BytesOf("mine.ZRT")), Hex(whole));
    EXPECT_FALSE(FileExists(kTempLog));
}

TEST_F(FileMenu, SaveAsOfALogWhoseFolderHasVanishedWritesItElsewhere) {
    std::filesystem::create_directory(PathOf("stick"));
    New();
    LogContact("K1ZZ");
    LogContact("K2ZZ");
    Devices.FileAnswers = {"stick/mine.ZRT"};
    ASSERT_TRUE(FileSaveAs());
    const std::string before = BytesOf("stick/mine.ZRT");
    std::filesystem::remove_all(PathOf("stick"));
    Answer({BoxAnswer::Cancel});
    LogContact("K3ZZ");
    EXPECT_TRUE(LogForm.lblNotOnDisk.Visible);
    EXPECT_TRUE(LogForm.lblNotOnDisk.Caption.starts_with("NOT ON DISK: 3 QSOs, Nr 1 to 3."))
        << LogForm.lblNotOnDisk.Caption;
    Devices.FileAnswers = {std::nullopt};
    EXPECT_FALSE(FileSaveAs());
    EXPECT_EQ(Log.Unwritten.size(), 3U);
    Devices.FileAnswers = {"saved.ZRT"};
    EXPECT_TRUE(FileSaveAs());
    EXPECT_FALSE(LogForm.lblNotOnDisk.Visible);
    EXPECT_EQ(BytesOf("saved.ZRT").substr(0, before.size()), before);
    EXPECT_EQ(BytesOf("saved.ZRT").size(), 240U);
    EXPECT_EQ(Log.LogState, kUsersName);
    EXPECT_EQ(Log.LogFileName, PathOf("saved.ZRT"));
    EXPECT_EQ(LogForm.lblLog.Caption, "Log: saved.ZRT - - Contest: [Generic]");
    LogContact("K4ZZ");
    EXPECT_EQ(BytesOf("saved.ZRT").size(), 300U);
}

TEST_F(FileMenu, SaveAsOfATemporaryLogOnABrokenDiskWritesItElsewhere) {
    New();
    LogContact("K1ZZ");
    Files.WriteAt = [](int handle, std::uint64_t offset, std::span<const std::byte> bytes) {
        const bool isRecord = bytes.size() == 60;
        return isRecord ? EIO : DiskFiles().WriteAt(handle, offset, bytes);
    };
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    Devices.FileAnswers = {"mine.ZRT"};
    EXPECT_TRUE(FileSaveAs());
    EXPECT_EQ(BytesOf("mine.ZRT").size(), 180U);
    EXPECT_FALSE(FileExists(kTempLog));
}

TEST_F(FileMenu, SaveAsProposesTheLogFolderAndMakesIt) {
    Extensions.LogFolder = "{documents}/ZRTLOG";
    Settings.OpenFilePath = FirstFolder();
    New();
    EXPECT_FALSE(FileExists("Documents/ZRTLOG"));
    Devices.FileAnswers = {std::nullopt};
    EXPECT_FALSE(FileSaveAs());
    EXPECT_EQ(Devices.FileDialogs.back().Folder, PathOf("Documents/ZRTLOG"));
    EXPECT_TRUE(FileExists("Documents/ZRTLOG"));
    Devices.FileAnswers = {"mine.ZRT"};
    EXPECT_TRUE(FileSaveAs());
    Answer({BoxAnswer::Yes});
    New();
    Devices.FileAnswers = {std::nullopt};
    EXPECT_FALSE(FileSaveAs());
    EXPECT_EQ(Devices.FileDialogs.back().Folder, Devices.ProgramFolder); // that of the last log
}

TEST_F(FileMenu, SaveAsStopsAtCancel) {
    New();
    Devices.FileAnswers = {std::nullopt};
    EXPECT_FALSE(FileSaveAs());
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_TRUE(FileExists(kTempLog));
}

TEST_F(FileMenu, SaveAsNeedsTheExtensionInAnyCase) {
    New();
    Answer({BoxAnswer::Ok});
    Devices.FileAnswers = {"mine.log"};
    EXPECT_FALSE(FileSaveAs());
    EXPECT_EQ(LastBox().Text, "Log file must have the extension .ZRT");
    EXPECT_FALSE(FileExists("mine.log"));
    Devices.FileAnswers = {"mine.zRt"};
    EXPECT_TRUE(FileSaveAs());
    EXPECT_TRUE(FileExists("mine.zRt"));
}

TEST_F(FileMenu, SaveAsAsksBeforeItOverwrites) {
    New();
    LogContact("K1ZZ");
    MakeFile("mine.ZRT", std::string(1000, 'x'));
    Answer({BoxAnswer::Cancel});
    Devices.FileAnswers = {"mine.ZRT"};
    EXPECT_FALSE(FileSaveAs());
    EXPECT_EQ(LastBox().Text, "The selected output file " + PathOf("mine.ZRT") +
                                  " already exists. OK to overwrite it?");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::OkCancel);
    EXPECT_EQ(BytesOf("mine.ZRT").size(), 1000U);
    Answer({BoxAnswer::Ok});
    Devices.FileAnswers = {"mine.ZRT"};
    EXPECT_TRUE(FileSaveAs());
    EXPECT_EQ(BytesOf("mine.ZRT").size(), 120U);
}

TEST_F(FileMenu, SaveAsWritesIntoNoPipe) {
    New();
    LogContact("K1ZZ");
    ASSERT_EQ(::mkfifo(PathOf("mine.ZRT").c_str(), 0600), 0);
    Answer({BoxAnswer::Ok, BoxAnswer::Cancel});
    Devices.FileAnswers = {"mine.ZRT"};
    EXPECT_FALSE(FileSaveAs());
    EXPECT_EQ(LastBox().Text, "That is a pipe or a device, and no file");
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
    EXPECT_EQ(Log.LogState, kTemporaryName);
}

TEST_F(FileMenu, SaveAsOnAFullDiskKeepsBothFilesAsTheyWere) {
    New();
    LogContact("K1ZZ");
    MakeFile("mine.ZRT", "other");
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Ok, BoxAnswer::Cancel});
    Devices.FileAnswers = {"mine.ZRT"};
    EXPECT_FALSE(FileSaveAs());
    EXPECT_EQ(BytesOf("mine.ZRT"), "other");
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_FALSE(HasSideFile());
}

TEST_F(FileMenu, SaveAsTakesTheOwedContactsAlong) {
    New();
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K1ZZ");
    Devices.Disk = DiskMode::Ok;
    Devices.FileAnswers = {"mine.ZRT"};
    EXPECT_TRUE(FileSaveAs());
    EXPECT_EQ(BytesOf("mine.ZRT").size(), 120U);
    EXPECT_FALSE(LogForm.lblNotOnDisk.Visible);
}

TEST_F(FileMenu, SaveAsShortensALongNameInTheLabel) {
    New();
    Devices.FileAnswers = {"a_very_long_name_of_a_contest_log_2015.ZRT"};
    EXPECT_TRUE(FileSaveAs());
    EXPECT_NE(LogForm.lblLog.Caption.find("..."), std::string::npos);
    EXPECT_TRUE(FileExists("a_very_long_name_of_a_contest_log_2015.ZRT"));
}

} // namespace
} // namespace zrt
