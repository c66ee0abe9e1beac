// One key in the call field and all of its work, on the real data: a full log, ten thousand calls
// of earlier logs, the known calls of the air, the Partial window open. Beside it the floor, a scan
// of the same bytes for the same text; and the duplicate check alone.
#include "bench/bench_folder.h"
#include "bench/full_log.h"
#include "bench/percentiles.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/old_calls.h"
#include "entry/partial_calls.h"
#include "entry/typing.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/reference_data.h"

#include <span>

#include <cstring> // memmem too, in the GNU library

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

bool Prepare(benchmark::State &state, const std::string &folder, i16 contestId) {
    if (!OpenFullLog(folder, contestId) || !OpenPartialWithAllCalls()) {
        state.SkipWithError("no log, or no master.scp");
        return false;
    }
    state.SetLabel(ContestTable(contestId).ChooserRow);
    return true;
}

// Hands the calls out key by key; tells before the first key of each.
struct Typist {
    std::size_t Call = TypedCalls().size() - 1, Place = TypedCalls().back().size();
    bool Begins() {
        if (Place < TypedCalls()[Call].size())
            return false;
        Call = (Call + 1) % TypedCalls().size();
        Place = 0;
        return true;
    }
    char Next() { return TypedCalls()[Call][Place++]; }
};

void KeyInCallField(benchmark::State &state) {
    const BenchFolder folder;
    if (!Prepare(state, folder.Path, static_cast<i16>(state.range(0))))
        return;
    Typist typist;
    Percentiles percentiles;
    while (state.KeepRunning()) {
        if (typist.Begins())
            WipeEntry();
        const char c = typist.Next();
        percentiles.Time(state, [c] { Key(c); });
    }
    if (LogForm.InData[0].Text != TypedCalls()[typist.Call].substr(0, typist.Place))
        state.SkipWithError("the keys did not come");
    percentiles.Report(state);
    state.counters["known"] = Reference.SCPCount;
    state.counters["old"] = static_cast<double>(OldCalls.Rows.size());
}

// The places of the text in the block, `most` at most; what the partial search can't do without.
std::size_t Scan(std::string_view block, std::string_view text, std::size_t most) {
    std::size_t found = 0;
    const char *at = block.data();
    const char *const end = at + block.size();
    while (found < most) {
        const void *place =
            memmem(at, static_cast<std::size_t>(end - at), text.data(), text.size());
        if (place == nullptr)
            break;
        ++found;
        at = static_cast<const char *>(place) + text.size();
    }
    return found;
}

void FloorScanOfTheSameBytes(benchmark::State &state) {
    const BenchFolder folder;
    if (!Prepare(state, folder.Path, kCqWw))
        return;
    PrepareOldCallBlock();
    const auto calls = std::as_bytes(std::span(Dupes.CallText).subspan(1, kMostEntries));
    const std::string_view logBlock(reinterpret_cast<const char *>(calls.data()), calls.size());
    Typist typist;
    Percentiles percentiles;
    while (state.KeepRunning()) {
        typist.Begins();
        typist.Next();
        const std::string text = TypedCalls()[typist.Call].substr(0, typist.Place);
        percentiles.Time(state, [&] {
            std::size_t found = Scan(logBlock, text, kMostPartials);
            found += Scan(OldCalls.Block, text, kMostPartials - found);
            found += Scan(Reference.SCPTable, text, kMostKnownPartials);
            benchmark::DoNotOptimize(found);
        });
    }
    percentiles.Report(state);
    state.counters["bytes"] =
        static_cast<double>(logBlock.size() + OldCalls.Block.size() + Reference.SCPTable.size());
}

void DupecheckAlone(benchmark::State &state) {
    const BenchFolder folder;
    if (!OpenFullLog(folder.Path, kCqWw)) {
        state.SkipWithError("no log");
        return;
    }
    Percentiles percentiles;
    i16 n = 0;
    while (state.KeepRunning()) {
        n = static_cast<i16>(n % kMostEntries + 1);
        const std::string call = Dupes.CallText[static_cast<std::size_t>(n)].Trimmed();
        percentiles.Time(state, [&call] { FindDupe(call); });
        if (!Dupes.SeenBefore)
            state.SkipWithError("not found");
    }
    percentiles.Report(state);
}

constexpr int kKeys = 5000;

BENCHMARK(KeyInCallField)
    ->DenseRange(1, kContests)
    ->UseManualTime()
    ->Iterations(kKeys)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorScanOfTheSameBytes)
    ->UseManualTime()
    ->Iterations(kKeys)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(DupecheckAlone)->UseManualTime()->Iterations(20000)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace zrt
