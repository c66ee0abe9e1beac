// Opening a full log of 9000 contacts, re-scan included: in each contest, with the settings synced
// as an operator's are, and the floor, which is the reading of the log's file alone.
#include "app/file_menu.h"
#include "bench/bench_folder.h"
#include "bench/full_log.h"
#include "bench/percentiles.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/log_file.h"

namespace zrt {

namespace {

void OpenAgainAndAgain(benchmark::State &state, i16 contestId, bool sync) {
    const BenchFolder folder;
    if (!OpenFullLog(folder.Path, contestId)) {
        state.SkipWithError("no log");
        return;
    }
    state.SetLabel(ContestTable(contestId).ChooserRow);
    if (sync)
        Files.Sync = DiskFiles().Sync;
    Percentiles percentiles;
    while (state.KeepRunning()) {
        Log.LogState = kNoLog; // or the menu asks
        Log.NextEntry = 1;
        percentiles.Time(state, [] { FileOpenRecent(1); });
        if (Log.NextEntry != kMostEntries + 1)
            state.SkipWithError("not opened");
    }
    percentiles.Report(state);
}

void OpenLogOfContest(benchmark::State &state) {
    OpenAgainAndAgain(state, static_cast<i16>(state.range(0)), false);
}

void OpenLogAndSyncSettings(benchmark::State &state) {
    OpenAgainAndAgain(state, kCqWw, true);
}

void FloorReadLogFile(benchmark::State &state) {
    const BenchFolder folder;
    if (!OpenFullLog(folder.Path, kCqWw)) {
        state.SkipWithError("no log");
        return;
    }
    Percentiles percentiles;
    std::size_t read = 0;
    while (state.KeepRunning())
        percentiles.Time(state, [&read] {
            FileBytes bytes;
            if (ReadFile(Log.LogFileName, bytes) == 0)
                read = bytes.size();
        });
    if (read != kEntryLength * (kMostEntries + 1))
        state.SkipWithError("not read");
    percentiles.Report(state);
    state.counters["bytes"] = static_cast<double>(read);
}

constexpr int kOpenings = 200;

BENCHMARK(OpenLogOfContest)
    ->DenseRange(1, kContests)
    ->UseManualTime()
    ->Iterations(kOpenings)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(OpenLogAndSyncSettings)
    ->UseManualTime()
    ->Iterations(kOpenings)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(FloorReadLogFile)->UseManualTime()->Iterations(kOpenings)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace zrt
