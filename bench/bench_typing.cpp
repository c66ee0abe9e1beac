// One key in the call field and all of its work, the duplicate check alone, and the opening of a
// full log in each contest, on the real data.
#include "app/file_menu.h"
#include "bench/bench_folder.h"
#include "bench/full_log.h"
#include "bench/percentiles.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/typing.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/session_flags.h"

namespace zrt {

namespace {

// A key as the window hands it over: the handlers, the field's own edit, and what follows it.
void Key(char c) {
    const KeyOutcome outcome = OfferKey(LogForm, {c, 0, c});
    TextBox &field = LogForm.InData[0];
    field.Text += static_cast<char>(outcome.CharCode);
    field.SelStart = static_cast<int>(field.Text.size());
    field.Change();
}

bool OpenFullLog(const std::string &folder, i16 contestId) {
    StartInFolder(folder);
    Files.Sync = [](int) { return 0; };
    if (!MakeFullLog(folder, contestId))
        return false;
    Log.LogState = kNoLog;
    FileOpenRecent(1);
    return Log.NextEntry == kMostEntries + 1;
}

void KeyInCallField(benchmark::State &state) {
    const BenchFolder folder;
    if (!OpenFullLog(folder.Path, static_cast<i16>(state.range(0))))
        state.SkipWithError("no log");
    Percentiles percentiles;
    std::size_t place = 0;
    const std::string calls = "DL1ABC K1ZZ JA1XYZ VE3/G4ABC KH6XX ";
    while (state.KeepRunning()) {
        const char c = calls[place++ % calls.size()];
        if (c == ' ')
            WipeEntry();
        percentiles.Time(state, [c] { Key(c == ' ' ? 'K' : c); });
    }
    percentiles.Report(state);
}

void DupecheckAlone(benchmark::State &state) {
    const BenchFolder folder;
    if (!OpenFullLog(folder.Path, kCqWw))
        state.SkipWithError("no log");
    Percentiles percentiles;
    i16 n = 0;
    while (state.KeepRunning()) {
        n = static_cast<i16>(n % kMostEntries + 1);
        const std::string call = Dupes.CallText[n].Trimmed();
        percentiles.Time(state, [&call] { FindDupe(call); });
        if (!Dupes.SeenBefore)
            state.SkipWithError("not found");
    }
    percentiles.Report(state);
}

void OpenLogOfContest(benchmark::State &state) {
    const BenchFolder folder;
    if (!OpenFullLog(folder.Path, static_cast<i16>(state.range(0))))
        state.SkipWithError("no log");
    Percentiles percentiles;
    while (state.KeepRunning()) {
        Log.LogState = kNoLog; // or the menu asks
        percentiles.Time(state, [] { FileOpenRecent(1); });
    }
    percentiles.Report(state);
}

BENCHMARK(KeyInCallField)
    ->DenseRange(1, kContests)
    ->UseManualTime()
    ->Iterations(5000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(DupecheckAlone)->UseManualTime()->Iterations(20000)->Unit(benchmark::kMicrosecond);
BENCHMARK(OpenLogOfContest)
    ->DenseRange(1, kContests)
    ->UseManualTime()
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace zrt
