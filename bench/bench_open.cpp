// Opening a full log of 9000 contacts, re-scan included, with the settings written and without.
#include "app/file_menu.h"
#include "bench/bench_folder.h"
#include "bench/full_log.h"
#include "bench/percentiles.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/log_file.h"

namespace zrt {

namespace {

void OpenFullLog(benchmark::State &state, bool sync) {
    const BenchFolder folder;
    StartInFolder(folder.Path);
    if (!MakeFullLog(folder.Path, kCqWw))
        state.SkipWithError("no log");
    if (!sync)
        Files.Sync = [](int) { return 0; };
    Percentiles percentiles;
    while (state.KeepRunning()) {
        Log.LogState = kNoLog; // or the menu asks
        percentiles.Time(state, [] { FileOpenRecent(1); });
        if (Log.NextEntry != kMostEntries + 1)
            state.SkipWithError("not opened");
    }
    percentiles.Report(state);
}

void OpenNineThousand(benchmark::State &state) {
    OpenFullLog(state, false);
}

void OpenNineThousandAndSyncSettings(benchmark::State &state) {
    OpenFullLog(state, true);
}

constexpr int kOpenings = 200;

BENCHMARK(OpenNineThousand)->UseManualTime()->Iterations(kOpenings)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenNineThousandAndSyncSettings)
    ->UseManualTime()
    ->Iterations(kOpenings)
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace zrt
