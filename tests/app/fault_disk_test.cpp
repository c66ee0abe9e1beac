// Single faults of a disk and of the system's calls, power cuts at chosen moments, and the sweep
// over the first start of an installation. The sweeps over a session are in fault_sweep_test.cpp.
#include "app/program_folder.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/faulty_files.h"
#include "support/interrupted_calls.h"
#include "support/program.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <filesystem>

namespace zrt {
namespace {

// ---- the system's calls

class SystemCall : public ProgramTest {
  protected:
    ~SystemCall() override { InterruptedCalls = {}; }
    static int SyncFolderWith(int error) {
        InterruptedCalls = {};
        InterruptedCalls.FaultAt = 2; // the first one opens the folder
        InterruptedCalls.Error = error;
        const int result = Files.SyncFolder(Devices.ProgramFolder);
        EXPECT_EQ(InterruptedCalls.Done, (std::vector<std::string>{"open", "fsync", "close"}));
        return result;
    }
};

TEST_F(SystemCall, AFileSystemThatCantSyncFoldersIsNoFailure) {
    for (const int error : {EINVAL, EOPNOTSUPP, ENOTSUP})
        EXPECT_EQ(SyncFolderWith(error), 0) << error;
}

TEST_F(SystemCall, AFolderThatFailsToSyncIsAFailure) {
    for (const int error : {EIO, ENOSPC, EROFS})
        EXPECT_EQ(SyncFolderWith(error), error);
}

TEST_F(SystemCall, AFolderThatBreaksOffIsAnErrorAndNoException) {
    InterruptedCalls.ReaddirError = EIO;
    std::vector<std::string> names;
    EXPECT_EQ(Files.List(Devices.ProgramFolder, names), EIO);
    EXPECT_THAT(names, testing::Contains("cty.dat")); // what came before it
}

TEST_F(SystemCall, AFolderThatBreaksOffDoesNotEndTheProgram) {
    InterruptedCalls.ReaddirError = EIO;
    StartProgram();
    EXPECT_FALSE(Program.Ending);
    EXPECT_TRUE(LogForm.Visible);
}

// A link that is planted under the name of a side file, just before it is made.
TEST_F(SystemCall, ASideFileIsNeverMadeThroughALink) {
    static int planted;
    planted = 0;
    MakeFile("a", "old");
    MakeFile("victim", "the operator's");
    InterruptedCalls.BeforeOpen = [](const char *path) {
        if (std::string_view(path).ends_with(".new") && ++planted <= 3)
            std::filesystem::create_symlink(PathOf(planted == 2 ? "nowhere" : "victim"), path);
    };
    EXPECT_EQ(ReplaceFile(PathOf("a"), std::as_bytes(std::span("new", 3))), 0);
    EXPECT_EQ(planted, 4);
    EXPECT_EQ(BytesOf("a"), "new");
    EXPECT_EQ(BytesOf("victim"), "the operator's");
    EXPECT_FALSE(FileExists("nowhere"));
}

// ---- the power is cut

class PowerIsCut : public ProgramTest {
  protected:
    PowerIsCut() {
        FaultyFiles = {};
        FaultyFiles.Kind = FaultKind::PowerCut;
        InstallFaultyFiles();
    }
    ~PowerIsCut() override { FaultyFiles = {}; }
    static void CutAndStart() {
        CutPower();
        FaultyFiles = {};
        CrashAndStart();
    }
};

TEST_F(PowerIsCut, TheFirstContactOfANewLogIsThere) {
    StartProgram();
    ChooseInDialog(3); // whatever it is, it has a log
    ClickControl(LogForm.mnuFileNew);
    ASSERT_EQ(Log.LogState, kTemporaryName);
    Log.WorkingEntry = MakeEntry("DL1ABC", -11155, 1437, 3, '1');
    ASSERT_EQ(AppendEntry(), 0);
    Answer({BoxAnswer::Yes});
    CutAndStart();
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Log.LogEntries[1].Callsign.Trimmed(), "DL1ABC");
}

TEST_F(PowerIsCut, ALogThatWasRefusedIsNotOfferedAgain) {
    const std::string lost = HeaderBytes("GEN  ") + std::string(34, '\0') +
                             EntryBytes(MakeEntry("LOST", -11155, 1437, 3, '1'));
    MakeFile(kTempLog, lost);
    MakeFile("Unsaved ZRT Log 1.zrt", "the one before");
    Answer({BoxAnswer::No});
    StartProgram();
    CutAndStart(); // without an answer
    EXPECT_FALSE(FileExists(kTempLog));
    EXPECT_EQ(BytesOf("Unsaved ZRT Log 1.zrt"), lost);
    EXPECT_EQ(BytesOf("Unsaved ZRT Log 2.zrt"), "the one before");
}

TEST_F(PowerIsCut, NamesThatWereNotSyncedAreAsBefore) {
    MakeFile("moved", "m");
    MakeFile("replaced", "r");
    MakeFile("removed", "x");
    OpenedFile file;
    ASSERT_EQ(file.Open(PathOf("made"), OpenMode::Create), 0);
    ASSERT_EQ(file.Sync(), 0);
    ASSERT_EQ(file.Close(), 0);
    ASSERT_EQ(Files.Rename(PathOf("moved"), PathOf("replaced")), 0);
    ASSERT_EQ(Files.Remove(PathOf("removed")), 0);
    CutPower();
    EXPECT_FALSE(FileExists("made"));
    EXPECT_EQ(BytesOf("moved"), "m");
    EXPECT_EQ(BytesOf("replaced"), "r");
    EXPECT_EQ(BytesOf("removed"), "x");
}

TEST_F(PowerIsCut, NamesThatWereSyncedStay) {
    MakeFile("moved", "m");
    MakeFile("removed", "x");
    ASSERT_EQ(Files.Rename(PathOf("moved"), PathOf("replaced")), 0);
    ASSERT_EQ(Files.Remove(PathOf("removed")), 0);
    ASSERT_EQ(Files.SyncFolder(PathOf("")), 0);
    CutPower();
    EXPECT_EQ(BytesOf("replaced"), "m");
    EXPECT_FALSE(FileExists("moved") || FileExists("removed"));
}

// ---- the first start

class FirstStartOnAFaultyDisk : public ProgramTest {
  protected:
    FirstStartOnAFaultyDisk() : Base(Devices.ProgramFolder) {
        std::filesystem::create_directory(Base + "/installed");
        for (const auto &file : std::filesystem::directory_iterator(Base))
            if (file.is_regular_file())
                std::filesystem::rename(file,
                                        Base + "/installed/" + file.path().filename().string());
    }
    ~FirstStartOnAFaultyDisk() override { FaultyFiles = {}; }
    // A process that is about to start; the user's folder is as the one before has left it.
    void Begin(bool faulty) {
        BeginProcess(Base);
        ProgramFolders.ExecutableFolder = [] { return PathOf("bin"); };
        ProgramFolders.UserFolder = [] { return PathOf("user"); };
        ProgramFolders.DefaultsFolder = [] { return PathOf("installed"); };
        FaultyFiles = {};
        if (faulty)
            InstallFaultyFiles();
    }
    static void ExpectWholeFolder() {
        for (const auto &file : std::filesystem::directory_iterator(PathOf("installed"))) {
            const std::string name = "user/" + file.path().filename().string();
            EXPECT_TRUE(FileExists(name) && BytesOf(name) == BytesOf("installed/" + NameOf(name)))
                << name;
        }
    }
    // A first start with a fault in each of its operations. `then` runs before the folder must be
    // whole.
    template <typename Then> void Sweep(FaultKind kind, BoxAnswer answer, Then then) {
        Begin(true);
        std::filesystem::remove_all(Base + "/user");
        ASSERT_TRUE(TakeProgramFolder());
        const auto operations = FaultyFiles.Done;
        ASSERT_GT(operations.size(), 40U);
        for (std::size_t i = 0; i < operations.size(); ++i) {
            SCOPED_TRACE(std::string(operations[i].Name) + " of " + operations[i].File);
            std::filesystem::remove_all(Base + "/user");
            Begin(true);
            FaultyFiles.Kind = kind;
            FaultyFiles.Error = ENOSPC;
            FaultyFiles.FaultAt = static_cast<int>(i) + 1;
            Devices.Answers = {answer};
            (void)TakeProgramFolder();
            then(operations[i]);
            ExpectWholeFolder();
            Devices.Answers.clear();
        }
    }

  private:
    const std::string Base;
};

TEST_F(FirstStartOnAFaultyDisk, IsDoneAgainAfterEveryFault) {
    for (const FaultKind kind : {FaultKind::Fails, FaultKind::HalfWritten})
        Sweep(kind, BoxAnswer::Retry, [](const FileOperation &operation) {
            const bool silent = operation.ForReading && operation.Name == std::string("Close");
            EXPECT_EQ(Devices.Boxes.size(), silent ? 0U : 1U);
        });
}

TEST_F(FirstStartOnAFaultyDisk, IsTakenUpByTheNextStartAfterEveryCrash) {
    for (const FaultKind kind :
         {FaultKind::Crash, FaultKind::TornCrash, FaultKind::PowerCut, FaultKind::NamesKept})
        Sweep(kind, BoxAnswer::Cancel, [this](const FileOperation &) {
            Begin(false);
            EXPECT_TRUE(TakeProgramFolder());
        });
}

} // namespace
} // namespace zrt
