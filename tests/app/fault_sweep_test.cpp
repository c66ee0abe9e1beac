// One walk through a session, from the start to the exit, again and again: each operation on the
// disk fails once, in each way, and in front of each of them the process dies once. No contact that
// had cleared the entry fields may be lost, no file may stand half written under its name, and the
// operator is told of each fault once.
#include "app/fault_walk.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/settings.h"
#include "support/faulty_files.h"
#include "support/interrupted_calls.h"
#include "support/program.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <iostream>
#include <set>
#include <span>

namespace zrt {
namespace {

#if defined(__SANITIZE_ADDRESS__)
// The sanitizers slow it down. A contact takes five operations: 7 comes to each of them in turn.
constexpr int kStep = 7;
#else
constexpr int kStep = 1;
#endif

const std::string kOldKilledFile = "the killed file of the log before";

std::string LogOf(int contacts, std::string_view firstCall) {
    std::string bytes = HeaderBytes("WW CW", '2');
    if (contacts > 0)
        bytes += std::string(34, '\0');
    for (int n = 0; n < contacts; ++n)
        bytes += EntryBytes(MakeEntry(firstCall, -11155, 1437, 3, '1'));
    return bytes;
}

// ---- what must be on the disk

// All contacts that had cleared the fields, and at most the one in hand behind them.
bool HoldsContacts(const std::string &bytes, std::size_t least) {
    if (bytes.size() < kHeaderLength || bytes.substr(0, 26) != HeaderBytes("WW CW", '2'))
        return false;
    for (std::size_t n = 1; n <= least; ++n) {
        const std::string record = bytes.substr(std::min(n * kEntryLength, bytes.size()), 60);
        const std::string call = CallOf(static_cast<int>(n) - 1);
        if (record.size() != kEntryLength || record.substr(6, call.size()) != call)
            return false;
    }
    return true;
}

bool IsWhole(const std::string &bytes) {
    return bytes.size() == kHeaderLength || bytes.size() % kEntryLength == 0;
}

void ExpectNoHalfFiles() {
    EXPECT_TRUE(SettingsShapes.contains(ShapeOf(BytesOf(kSettingsFile))));
    EXPECT_TRUE(BytesOf(kCabrilloName).ends_with("END-OF-LOG:\r\n"));
    const std::string backup = BytesOf(kBackupName);
    EXPECT_TRUE(backup == LogOf(3, "OLD") || (IsWhole(backup) && HoldsContacts(backup, 20)));
    const std::string killed = BytesOf("KilledFile.zrt");
    EXPECT_TRUE(killed == kOldKilledFile || killed.size() == (kContacts + 1) * kOld26Length);
    for (int number = 1; number <= 3; ++number) {
        const std::string name = "KilledLog " + std::to_string(number) + ".zrt";
        if (!FileExists(name))
            continue;
        const std::string kept = BytesOf(name);
        EXPECT_TRUE(kept == LogOf(number, "KILLED") || kept == LogOf(1, "KILLED") ||
                    kept == LogOf(2, "KILLED") || (IsWhole(kept) && HoldsContacts(kept, kContacts)))
            << name;
    }
}

// The end of a walk that went through.
void ExpectEndOfWalk(bool triedAgain) {
    ExpectNoHalfFiles();
    EXPECT_EQ(Hex(BytesOf(kLogName)), Hex(LogOf(0, "")));
    EXPECT_TRUE(HoldsContacts(BytesOf("KilledLog 1.zrt"), kContacts));
    if (triedAgain) { // once killed, once moved
        EXPECT_EQ(BytesOf("KilledLog 2.zrt"), LogOf(1, "KILLED"));
        EXPECT_EQ(BytesOf("KilledLog 3.zrt"), LogOf(2, "KILLED"));
    }
    EXPECT_NE(BytesOf(kCabrilloName).find("DL9BT"), std::string::npos); // number 20
    for (const auto &file : std::filesystem::recursive_directory_iterator(Devices.ProgramFolder))
        EXPECT_NE(file.path().extension(), ".new") << file.path();
}

// After the process was gone and the program has been started again, with recovery: the contacts
// are in the open log, or in the file that had got its name, unless they were being killed.
void ExpectContactsAfterCrash() {
    const std::string log = BytesOf(kLogName);
    const std::size_t cleared = Walk.Cleared.size();
    if (Log.LogState == kTemporaryName) {
        EXPECT_GE(Log.NextEntry, static_cast<i16>(cleared) + 1);
        EXPECT_LE(Log.NextEntry, static_cast<i16>(cleared) + 2);
        EXPECT_TRUE(HoldsContacts(BytesOf(kTempLog), cleared));
        EXPECT_TRUE(log == LogOf(2, "OLD") || (IsWhole(log) && HoldsContacts(log, cleared)));
        return;
    }
    const bool killed = FaultOperator.KillsAll && log == LogOf(0, "");
    EXPECT_TRUE(killed || (cleared == 0 && log == LogOf(2, "OLD")) || HoldsContacts(log, cleared))
        << cleared << " contacts, a log of " << log.size() << " bytes";
    if (killed) {
        EXPECT_TRUE(HoldsContacts(BytesOf("KilledLog 1.zrt"), kContacts));
    }
}

// ---- a start after a crash

const std::string kLostLog = LogOf(20, "LOST");

std::string Unsaved(int number) {
    return "Unsaved ZRT Log " + std::to_string(number) + ".zrt";
}

bool IsAmongUnsaved(const std::string &bytes) {
    for (int number = 1; number <= 3; ++number)
        if (FileExists(Unsaved(number)) && BytesOf(Unsaved(number)) == bytes)
            return true;
    return false;
}

bool LostLogIsOpen() {
    return Log.LogState == kTemporaryName && Log.NextEntry > 20 &&
           Log.LogEntries[20].Callsign.Trimmed() == "LOST";
}

// Whatever happened to the log, its contacts are in the open one or among the unsaved ones.
void ExpectLostLogIsKept() {
    EXPECT_TRUE(LostLogIsOpen() || IsAmongUnsaved(kLostLog));
    EXPECT_TRUE(IsAmongUnsaved("unsaved 1") && IsAmongUnsaved("unsaved 2"));
    const auto cleared = static_cast<i16>(Walk.Cleared.size());
    EXPECT_GE(Log.NextEntry, (LostLogIsOpen() ? 21 : 1) + cleared);
    if (cleared > 0) {
        EXPECT_EQ(Log.LogEntries[LostLogIsOpen() ? 21 : 1].Callsign.Trimmed(), CallOf(0));
    }
}

// ---- faults that nobody is told of, on purpose

struct SilentFault {
    const char *Operation; // "" for each
    const char *File;      // how its name begins
    bool ForReading;
    int ToldAs; // the error that has a box all the same; 0: none
    const char *Reason;
    const char *Step = ""; // of the walk; "" for each
};
constexpr SilentFault kSilent[] = {
    {"", "zrtlog125.ini", false, ENODEV, "the next of many writes of the settings will do"},
    {"Close", "", true, 0, "a file that was read holds nothing that could be lost"},
    {"", "callmtch.dat", true, 0, "a station without recordings has no such file"},
    {"Remove", "!temp%!!.zrb", false, 0,
     "its copy is safe; what stays is offered at the next start"},
    {"", "Unsaved ZRT Log ", false, 0,
     "the log that can't be moved stays, until File, New moves it"},
    {"", "!temp%!!.zrb", true, 0, "the log is saved from memory", "Save As"},
};

bool IsSilent(const FileOperation &operation, int error) {
    return std::any_of(std::begin(kSilent), std::end(kSilent), [&](const SilentFault &row) {
        return (*row.Step == '\0' || row.Step == Walk.FaultIn) &&
               (*row.Operation == '\0' || std::string_view(row.Operation) == operation.Name) &&
               operation.File.starts_with(row.File) && row.ForReading == operation.ForReading &&
               row.ToldAs != error;
    });
}

// ---- the sweep

struct Mode {
    const char *Name;
    FaultKind Kind;
    int Error;
    bool GivesUp;
};
constexpr Mode kModes[] = {
    {"no space", FaultKind::Fails, ENOSPC, false},
    {"I/O error", FaultKind::Fails, EIO, false},
    {"no permission", FaultKind::Fails, EACCES, false},
    {"drive gone", FaultKind::Fails, ENODEV, false},
    {"half written", FaultKind::HalfWritten, ENOSPC, false},
    {"given up", FaultKind::Fails, EIO, true},
    {"half written and given up", FaultKind::HalfWritten, ENOSPC, true},
    {"stays full", FaultKind::StaysFull, ENOSPC, false},
};
constexpr Mode kCrashes[] = {
    {"crash", FaultKind::Crash, EIO, false},
    {"torn write", FaultKind::TornCrash, EIO, false},
    {"power cut", FaultKind::PowerCut, EIO, false},
    {"power cut, names kept", FaultKind::NamesKept, EIO, false},
};

bool IsOfWrites(FaultKind kind) {
    return kind == FaultKind::HalfWritten || kind == FaultKind::StaysFull ||
           kind == FaultKind::TornCrash;
}

class FaultSweep : public ProgramTest {
  protected:
    FaultSweep() : Base(Devices.ProgramFolder) {
        for (const auto &file : std::filesystem::directory_iterator(Base))
            Minimal.push_back(file.path());
        std::error_code error; // a folder in memory, where there is one
        const std::string inMemory =
            "/dev/shm/" + std::filesystem::path(Base).filename().string() + "-sweep";
        RunFolder = std::filesystem::create_directory(inMemory, error) ? inMemory : Base + "/run";
    }
    ~FaultSweep() override {
        FaultyFiles = {};
        std::error_code error;
        std::filesystem::remove_all(RunFolder, error);
        BeginProcess(Base);
    }
    void TearDown() override {}

    // A folder as it is after seasons of use, and a process that is about to start in it.
    void PrepareWalk(bool faulty) {
        std::filesystem::remove_all(RunFolder);
        std::filesystem::create_directories(RunFolder + "/stick");
        for (const auto &file : Minimal)
            std::filesystem::copy(file, RunFolder);
        FaultOperator = {};
        Walk = {};
        Walk.OnFaultyDoor = faulty;
        FaultyFiles = {};
        if (faulty)
            InterruptedCalls = {};
        BeginProcessOn(RunFolder);
        SetTime(2015, 11, 28, 0, 5);
        MakeFile(kLogName, LogOf(2, "OLD"));
        MakeFile(kBackupName, LogOf(3, "OLD"));
        MakeFile(kCabrilloName, kOldCabrillo);
        MakeFile("KilledFile.zrt", kOldKilledFile);
        for (int number = 1; number <= 3; ++number)
            MakeFile("KilledLog " + std::to_string(number) + ".zrt", LogOf(number, "KILLED"));
    }
    // The walk without a fault; returns its operations.
    std::vector<FileOperation> WalkOnce() {
        PrepareWalk(true);
        Walk.LearnsSettings = true;
        LearnSettings();
        TakeWalk();
        EXPECT_TRUE(FaultOperator.Told.empty()) << FaultOperator.Told.front();
        ExpectEndOfWalk(true);
        return FaultyFiles.Done;
    }
    void PrepareRecoveryWalk(bool recovers) {
        PrepareWalk(true);
        FaultOperator.Recovers = recovers;
        MakeFile(kTempLog, kLostLog);
        for (int number = 1; number <= 3; ++number)
            MakeFile(Unsaved(number), "unsaved " + std::to_string(number));
    }
    void RecoveryWithFault(bool recovers, const Mode &mode, int n) {
        PrepareRecoveryWalk(recovers);
        SetFault(mode, n);
        TakeRecoveryWalk();
        EXPECT_TRUE(Walk.Ended);
        ExpectToldOnce(mode);
        ExpectLostLogIsKept();
    }
    void RecoveryIntoCrash(bool recovers, const Mode &mode, int n) {
        PrepareRecoveryWalk(recovers);
        SetFault(mode, n);
        EXPECT_THROW(TakeRecoveryWalk(), ProcessGone);
        FaultOperator.Recovers = true;
        StartOnHealthyDisk();
        ExpectLostLogIsKept();
    }
    // Through the door to the real disk, whose every call must succeed.
    void WalkOnRealDoor() {
        PrepareWalk(false);
        TakeWalk();
        EXPECT_TRUE(FaultOperator.Told.empty()) << testing::PrintToString(FaultOperator.Told);
        ExpectEndOfWalk(true);
    }
    static void SetFault(const Mode &mode, int n) {
        FaultyFiles.FaultAt = n;
        FaultyFiles.Kind = mode.Kind;
        FaultyFiles.Error = mode.Error;
        FaultOperator.GivesUp = mode.GivesUp;
    }
    static void ExpectToldOnce(const Mode &mode) {
        EXPECT_FALSE(FaultyFiles.Failed.empty());
        const bool silent = std::all_of(
            FaultyFiles.Failed.begin(), FaultyFiles.Failed.end(),
            [&](const FileOperation &operation) { return IsSilent(operation, mode.Error); });
        // Of a disk that stays full he is told twice, for he tries once more.
        const std::size_t expected = silent ? 0 : mode.Kind == FaultKind::StaysFull ? 2 : 1;
        EXPECT_EQ(FaultOperator.Told.size(), expected)
            << testing::PrintToString(FaultOperator.Told);
    }
    void WalkWithFault(const Mode &mode, int n) {
        PrepareWalk(true);
        SetFault(mode, n);
        TakeWalk();
        EXPECT_TRUE(Walk.Ended);
        ExpectToldOnce(mode);
        ExpectEndOfWalk(!mode.GivesUp && mode.Kind != FaultKind::StaysFull);
    }
    static void StartOnHealthyDisk() {
        FaultyFiles = {};
        Walk.OnFaultyDoor = false;
        BeginProcessOn(Devices.ProgramFolder);
        StartProgram();
        EXPECT_TRUE(LogForm.Visible && !Program.Ending);
        EXPECT_TRUE(FaultOperator.Told.empty()) << testing::PrintToString(FaultOperator.Told);
    }
    void WalkIntoCrash(const Mode &mode, int n) {
        PrepareWalk(true);
        SetFault(mode, n);
        EXPECT_THROW(TakeWalk(), ProcessGone);
        ExpectNoHalfFiles();
        StartOnHealthyDisk();
        ExpectContactsAfterCrash();
    }
    template <typename Run>
    static int Sweep(std::span<const Mode> modes, const std::vector<FileOperation> &operations,
                     Run run) {
        int runs = 0;
        for (const Mode &mode : modes) {
            for (std::size_t i = 0; i < operations.size() && !HasFatalFailure(); i += kStep) {
                const FileOperation &operation = operations[i];
                if (IsOfWrites(mode.Kind) && operation.Name != std::string_view("WriteAt"))
                    continue;
                SCOPED_TRACE(std::string(mode.Name) + " at operation " + std::to_string(i + 1) +
                             ", " + operation.Name + " of " + operation.File);
                run(mode, static_cast<int>(i) + 1);
                ++runs;
            }
        }
        std::cout << runs << " walks, " << operations.size() << " operations each\n";
        RecordProperty("Walks", runs);
        RecordProperty("Operations", static_cast<int>(operations.size()));
        return runs;
    }

  private:
    std::string Base, RunFolder;
    std::vector<std::filesystem::path> Minimal;
};

TEST_F(FaultSweep, EveryFaultOfEveryOperation) {
    const int runs =
        Sweep(kModes, WalkOnce(), [this](const Mode &mode, int n) { WalkWithFault(mode, n); });
    EXPECT_GT(runs, 1000 / kStep);
}

// What a signal interrupts is done again, or the rest of it, and nobody is told.
TEST_F(FaultSweep, EveryInterruptionOfASystemCall) {
    (void)WalkOnce();
    int runs = 0;
    std::set<std::string> names;
    for (const bool halves : {false, true}) {
        InterruptedCalls = {};
        WalkOnRealDoor();
        const auto calls = InterruptedCalls.Done;
        names.insert(calls.begin(), calls.end());
        for (std::size_t i = 0; i < calls.size() && !HasFatalFailure(); i += kStep) {
            if (halves && calls[i] != "pread" && calls[i] != "pwrite")
                continue;
            SCOPED_TRACE(std::string(halves ? "half of call " : "call ") + std::to_string(i + 1) +
                         ", " + calls[i]);
            InterruptedCalls = {static_cast<int>(i) + 1, halves, {}};
            WalkOnRealDoor();
            ++runs;
        }
    }
    InterruptedCalls = {};
    const std::set<std::string> expected = {"open",  "pread", "pwrite", "fdatasync",
                                            "fsync", "close", "unlink", "rename"};
    EXPECT_EQ(names, expected); // or the linker does not wrap them
    std::cout << runs << " walks\n";
    RecordProperty("Walks", runs);
}

TEST_F(FaultSweep, ACrashAtEveryOperation) {
    const int runs =
        Sweep(kCrashes, WalkOnce(), [this](const Mode &mode, int n) { WalkIntoCrash(mode, n); });
    EXPECT_GT(runs, 600 / kStep);
}

TEST_F(FaultSweep, EveryFaultAndCrashInAStartAfterACrash) {
    for (const bool recovers : {true, false}) {
        SCOPED_TRACE(recovers ? "recovery" : "no recovery");
        PrepareRecoveryWalk(recovers);
        TakeRecoveryWalk();
        EXPECT_EQ(LostLogIsOpen(), recovers);
        ExpectLostLogIsKept();
        const auto operations = FaultyFiles.Done;
        (void)Sweep(kModes, operations,
                    [&](const Mode &mode, int n) { RecoveryWithFault(recovers, mode, n); });
        (void)Sweep(kCrashes, operations,
                    [&](const Mode &mode, int n) { RecoveryIntoCrash(recovers, mode, n); });
    }
}

// ---- what the sweeps have found, each by itself

bool renamesFail = false, opensFail = false, folderSyncsFail = false;

int SometimesRename(const std::string &from, const std::string &to) {
    return renamesFail ? EACCES : DiskFiles().Rename(from, to);
}

int SometimesOpen(const std::string &path, OpenMode mode, int &handle) {
    return opensFail && path == PathOf(kTempLog) ? EIO : DiskFiles().Open(path, mode, handle);
}

int SometimesSyncFolder(const std::string &) {
    return folderSyncsFail ? EIO : 0;
}

class DiskFault : public ProgramTest {
  protected:
    DiskFault() {
        renamesFail = opensFail = folderSyncsFail = false;
        Files.Rename = SometimesRename;
        Files.Open = SometimesOpen;
        Files.SyncFolder = SometimesSyncFolder;
    }
};

TEST_F(DiskFault, AMoveThatIsTriedAgainLosesNoKeptFile) {
    const std::array names = {PathOf("kept 1"), PathOf("kept 2"), PathOf("kept 3")};
    for (int number = 1; number <= 3; ++number)
        MakeFile("kept " + std::to_string(number), std::to_string(number));
    MakeFile("new", "new");
    Files.Rename = [](const std::string &from, const std::string &to) {
        return to.ends_with("kept 1") ? EIO : DiskFiles().Rename(from, to);
    };
    EXPECT_EQ(MoveToFirst(PathOf("new"), names), EIO);
    EXPECT_EQ(MoveToFirst(PathOf("new"), names), EIO);
    Files.Rename = DiskFiles().Rename;
    EXPECT_EQ(MoveToFirst(PathOf("new"), names), 0);
    EXPECT_EQ(BytesOf("kept 1"), "new");
    EXPECT_EQ(BytesOf("kept 2"), "1");
    EXPECT_EQ(BytesOf("kept 3"), "2");
    EXPECT_FALSE(FileExists("new"));
}

TEST_F(DiskFault, ANewLogDoesNotReplaceOneThatCouldNotBeMovedAway) {
    MakeFile(kTempLog, kLostLog);
    renamesFail = true;
    Answer({BoxAnswer::No});
    StartProgram();
    ChooseInDialog(0);
    Answer({BoxAnswer::Retry, BoxAnswer::Cancel});
    ClickControl(LogForm.mnuFileNew); // given up
    EXPECT_EQ(LastBox().Text, "Permission denied");
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_EQ(BytesOf(kTempLog), kLostLog);
    renamesFail = false;
    ClickControl(LogForm.mnuFileNew);
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(BytesOf(Unsaved(1)), kLostLog);
    EXPECT_EQ(BytesOf(kTempLog).size(), kHeaderLength);
}

TEST_F(DiskFault, ANewLogKeepsNoEmptyOne) {
    StartProgram();
    MakeFile(kTempLog, LogOf(0, ""));
    ChooseInDialog(0);
    ClickControl(LogForm.mnuFileNew);
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_FALSE(FileExists(Unsaved(1)));
}

TEST_F(DiskFault, ATemporaryLogThatCantBeReadIsToldAtStart) {
    MakeFile(kTempLog, kLostLog);
    opensFail = true;
    Answer({BoxAnswer::Retry, BoxAnswer::Retry, BoxAnswer::Yes});
    WhileBoxShows([] { EXPECT_EQ(LastBox().Text, "Input/output error"); });
    WhileBoxShows([] { opensFail = false; });
    StartProgram();
    EXPECT_TRUE(LostLogIsOpen());
}

TEST_F(DiskFault, AKillThatIsGivenUpLeavesMemoryAsTheDiskIs) {
    StartProgram();
    for (const bool emptied : {false, true}) {
        LoadTemporary(kLostLog);
        renamesFail = !emptied;
        Answer({BoxAnswer::Yes, BoxAnswer::Cancel});
        WhileBoxShows([] {});
        if (emptied) { // the folder fails behind KilledFile.zrt
            Files.Rename = [](const std::string &from, const std::string &to) {
                folderSyncsFail = to == PathOf(kTempLog);
                return DiskFiles().Rename(from, to);
            };
        }
        ClickControl(LogForm.mnuEditKillAll);
        EXPECT_EQ(Log.NextEntry, emptied ? 1 : 21);
        EXPECT_EQ(BytesOf(kTempLog).size(), emptied ? kHeaderLength : kLostLog.size());
    }
}

// A signal may interrupt the wait for the disk, and some file systems let it.
TEST_F(DiskFault, AnInterruptedSyncIsDoneAgain) {
    OpenedFile file;
    ASSERT_EQ(file.Open(PathOf("file"), OpenMode::Create), 0);
    InterruptedCalls = {1, false, {}};
    EXPECT_EQ(DiskFiles().SyncFolder(Devices.ProgramFolder), 0);
    EXPECT_EQ(InterruptedCalls.Done, (std::vector<std::string>{"open", "open", "fsync", "close"}));
    InterruptedCalls = {1, false, {}};
    EXPECT_EQ(file.Sync(), 0);
    EXPECT_EQ(InterruptedCalls.Done, (std::vector<std::string>{"fdatasync", "fdatasync"}));
    InterruptedCalls = {};
    EXPECT_EQ(file.Close(), 0);
}

} // namespace
} // namespace zrt
