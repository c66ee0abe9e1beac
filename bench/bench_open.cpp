// Opening a full log of 9000 contacts, re-scan included, with the settings written and without.
#include "app/file_menu.h"
#include "app/start_up.h"
#include "bench/bench_folder.h"
#include "bench/percentiles.h"
#include "headless/devices.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"

namespace zrt {

namespace {

constexpr const char *kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

// Contacts as a contest has them: calls of many areas, four bands, a contact in about 19 seconds.
LogEntry ContactNumber(int n) {
    LogEntry entry;
    std::string call = n % 3 == 0 ? "DL" : n % 3 == 1 ? "K" : "JA";
    call += std::to_string(n % 10);
    for (int rest = n; rest > 0; rest /= 26)
        call += kLetters[rest % 26];
    const int minutes = n * 48 * 60 / kMostEntries;
    entry.Callsign = call;
    entry.Date = DateCode(2015, 10, 24 + minutes / 1440);
    entry.Time = static_cast<i16>(minutes / 60 % 24 * 100 + minutes % 60);
    entry.BandIndex = static_cast<i16>(1 + n / 500 % 4);
    entry.SentNumber = static_cast<i16>(n);
    entry.RcvdNumber = 14;
    entry.RcvdExchange = "DL";
    entry.Points = "3";
    return entry;
}

// Makes a log of the contest in the folder, and its name the first of the recent ones.
bool MakeFullLog(const std::string &folder) {
    ContestState contest;
    contest.ContestId = kCqWw;
    contest.ModeCW = contest.QthUSA = true;
    Log.LogFileName = folder + "FULL.ZRT";
    Log.KeptHeader = BuildHeader(contest);
    Log.CurrentFormat = true;
    Log.NextEntry = kMostEntries + 1;
    for (i16 n = 1; n < Log.NextEntry; ++n) {
        Log.LogEntries[n] = ContactNumber(n);
        Log.Unwritten.push_back(n);
    }
    Settings.RecentFile[0] = Log.LogFileName;
    return CreateLogFile() == 0 && WriteOwedEntries() == 0;
}

void OpenFullLog(benchmark::State &state, bool sync) {
    const BenchFolder folder;
    StartInFolder(folder.Path);
    if (!MakeFullLog(folder.Path))
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
