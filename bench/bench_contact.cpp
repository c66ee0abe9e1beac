// A contact from Enter to stored: with the disk and its sync, without the sync, and without the
// disk. Beside it the floors: the bare write of a record with the sync and without.
#include "app/contest_chooser.h"
#include "app/file_menu.h"
#include "bench/bench_folder.h"
#include "bench/percentiles.h"
#include "entry/log_form.h"
#include "headless/devices.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/log_file.h"

#include <array>

namespace zrt {

namespace {

// What stands between the work and the time that is told.
enum class Disk { None, Unsynced, Synced };

// A disk that takes the log's writes and does nothing.
void TakeDiskAway() {
    Files.Open = [](const std::string &, OpenMode, int &handle) { return handle = 0; };
    Files.Length = [](int, std::uint64_t &length) {
        length = kEntryLength * static_cast<std::uint64_t>(Log.NextEntry);
        return 0;
    };
    Files.WriteAt = [](int, std::uint64_t, std::span<const std::byte>) { return 0; };
    Files.Sync = Files.Close = [](int) { return 0; };
}

void TakeDisk(Disk disk) {
    if (disk == Disk::Unsynced)
        Files.Sync = [](int) { return 0; };
    if (disk == Disk::None)
        TakeDiskAway();
}

// The rows of the contest chooser, and an exchange that each takes.
struct ContestToLog {
    int ChooserRow;
    i16 ContestId;
    const char *Exchange;
};
constexpr std::array<ContestToLog, 3> kContestsToLog = {
    {{4, kCqWw, "14"}, {11, kWpx, "123"}, {12, kGeneric, "HIRAM CT"}}};

bool StartLog(const std::string &folder, const ContestToLog &contest) {
    StartInFolder(folder);
    Devices.Operator = [row = contest.ChooserRow] {
        ChCoForm.lstContest.ListIndex = row;
        ClickControl(ChCoForm.cmdOK);
        return true;
    };
    FileNew();
    return Contest.ContestId == contest.ContestId;
}

// Into the fields as if typed; only what follows is of interest.
void FillFields(int n, const std::string &exchange) {
    constexpr std::array<const char *, 4> kPrefixes = {"DL", "K", "JA", "PY"};
    std::string call = kPrefixes[static_cast<std::size_t>(n) % kPrefixes.size()];
    call += static_cast<char>('0' + n % 10);
    for (int rest = n; rest > 0; rest /= 26)
        call += static_cast<char>('A' + rest % 26);
    SetFieldText(LogForm.InData[0], call);
    LogForm.InData[0].Change();
    SetFieldText(LogForm.InData[1], exchange);
    LogForm.InData[1].Change();
}

void LogContacts(benchmark::State &state, Disk disk) {
    const BenchFolder folder;
    const ContestToLog &contest = kContestsToLog[static_cast<std::size_t>(state.range(0))];
    if (!StartLog(folder.Path, contest)) {
        state.SkipWithError("no log");
        return;
    }
    state.SetLabel(ContestTable(contest.ContestId).ChooserRow);
    TakeDisk(disk);
    Percentiles percentiles;
    int n = 0;
    while (state.KeepRunning()) {
        FillFields(++n, contest.Exchange);
        percentiles.Time(state, [] { OfferKey(LogForm, {kKeyEnter, 0, 0}); });
    }
    if (Log.NextEntry != n + 1)
        state.SkipWithError("a contact was not logged");
    percentiles.Report(state);
}

void WriteRecords(benchmark::State &state, bool sync) {
    const BenchFolder folder;
    Files = DiskFiles();
    const std::string path = folder.Path + "floor";
    OpenedFile made;
    if (made.Open(path, OpenMode::Create) != 0 || made.Close() != 0)
        state.SkipWithError("no file");
    const std::array<std::byte, kEntryLength> record{};
    Percentiles percentiles;
    std::uint64_t n = 0;
    while (state.KeepRunning()) {
        percentiles.Time(state, [&] {
            OpenedFile file;
            int error = file.Open(path, OpenMode::Update);
            error |= file.WriteAt(++n * kEntryLength, record);
            if (sync)
                error |= file.Sync();
            error |= file.Close();
            if (error != 0)
                state.SkipWithError("a write failed");
        });
    }
    percentiles.Report(state);
}

void EnterToStored(benchmark::State &state) {
    LogContacts(state, Disk::Synced);
}

void EnterToStoredWithoutSync(benchmark::State &state) {
    LogContacts(state, Disk::Unsynced);
}

void EnterToStoredWithoutDisk(benchmark::State &state) {
    LogContacts(state, Disk::None);
}

void FloorWriteAndSync(benchmark::State &state) {
    WriteRecords(state, true);
}

void FloorWrite(benchmark::State &state) {
    WriteRecords(state, false);
}

constexpr int kContacts = 8500; // the log is nearly full then
constexpr int kSyncedContacts = 4000;
constexpr int kLastContest = static_cast<int>(kContestsToLog.size()) - 1;

BENCHMARK(EnterToStoredWithoutDisk)
    ->DenseRange(0, kLastContest)
    ->UseManualTime()
    ->Iterations(kContacts)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(EnterToStoredWithoutSync)
    ->DenseRange(0, kLastContest)
    ->UseManualTime()
    ->Iterations(kContacts)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorWrite)->UseManualTime()->Iterations(kContacts)->Unit(benchmark::kMicrosecond);
BENCHMARK(EnterToStored)
    ->Arg(0)
    ->UseManualTime()
    ->Iterations(kSyncedContacts)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorWriteAndSync)
    ->UseManualTime()
    ->Iterations(kSyncedContacts)
    ->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace zrt
