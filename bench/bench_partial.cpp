// The look for partial calls with one key: a full log, ten thousand calls of earlier logs and the
// known calls of the air. The texts are those of calls while they grow, of calls that nobody has,
// and those that a selection turns most of what it meets away from.
#include "app/partial_window.h"
#include "bench/bench_folder.h"
#include "bench/full_log.h"
#include "bench/percentiles.h"
#include "entry/old_calls.h"
#include "session/contests.h"
#include "session/reference_data.h"
#include "support/plain_partials.h"

namespace zrt {

namespace {

std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    for (const std::string &call : TypedCalls())
        for (std::size_t length = 1; length <= call.size(); ++length)
            texts.push_back(call.substr(0, length));
    return texts;
}

void PartialCheckOfOneKey(benchmark::State &state, const char *selection) {
    const BenchFolder folder;
    if (!OpenFullLog(folder.Path, kCqWw) || !OpenPartialWithAllCalls()) {
        state.SkipWithError("no log");
        return;
    }
    Contest.SCPSelection = selection;
    const std::vector<std::string> texts = Texts();
    Percentiles percentiles;
    std::size_t place = 0;
    while (state.KeepRunning()) {
        const std::string &text = texts[place++ % texts.size()];
        percentiles.Time(state, [&text] { PartialCheck(text); });
    }
    percentiles.Report(state);
    state.counters["known"] = Reference.SCPCount;
    state.counters["old"] = static_cast<double>(OldCalls.Rows.size());
}

// The same texts by the plain loops, for comparison; without the window.
void PlainLoops(benchmark::State &state) {
    const BenchFolder folder;
    if (!OpenFullLog(folder.Path, kCqWw) || !OpenPartialWithAllCalls()) {
        state.SkipWithError("no log");
        return;
    }
    Contest.SCPSelection = "ALL";
    const std::vector<std::string> texts = Texts();
    Percentiles percentiles;
    std::size_t place = 0;
    while (state.KeepRunning()) {
        const std::string &text = texts[place++ % texts.size()];
        percentiles.Time(state, [&text] {
            const auto matches = PlainMatches(text);
            benchmark::DoNotOptimize(PlainOldCalls(text, kMostPartials - matches.size()).size());
            benchmark::DoNotOptimize(PlainKnownCalls(text).size());
        });
    }
    percentiles.Report(state);
}

BENCHMARK(PlainLoops)->UseManualTime()->Iterations(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PartialCheckOfOneKey, All, "ALL")
    ->UseManualTime()
    ->Iterations(20000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PartialCheckOfOneKey, Us, "US")
    ->UseManualTime()
    ->Iterations(20000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PartialCheckOfOneKey, Dx, "DX")
    ->UseManualTime()
    ->Iterations(20000)
    ->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace zrt
