// The files after a contest, of a full log of 9000 contacts with the real data: the recount alone,
// the Cabrillo text alone, and the file with it, synced or not. The floor is the bare write of as
// many bytes.
#include "app/file_menu.h"
#include "bench/bench_folder.h"
#include "bench/full_log.h"
#include "bench/percentiles.h"
#include "entry/callsign.h"
#include "platform/files.h"
#include "postcontest/cabrillo.h"
#include "postcontest/post_contest.h"
#include "postcontest/recount.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/settings.h"

#include <array>
#include <fstream>
#include <span>
#include <string>

namespace zrt {

namespace {

constexpr std::array<i16, 5> kBenchContests = {kArrlDx, kCqWw, kSs, kWpx, kGeneric};

// What was received, as the contest has it; the full log itself has the same for all.
void FillExchange(LogEntry &entry, i16 contestId, int n) {
    constexpr std::array<const char *, 3> kPrefixes = {"DL", "K", "JA"}; // of the full log's calls
    entry.RcvdExchange = kPrefixes[static_cast<std::size_t>(n) % kPrefixes.size()];
    constexpr std::array<const char *, 4> kSections = {"A72EM", "B68CT", "U01SV", "S99BC"};
    switch (contestId) {
    case kArrlDx: entry.RcvdNumber = 100; break;
    case kCqWw: entry.RcvdNumber = static_cast<i16>(1 + n % 40); break;
    case kSs:
        entry.RcvdNumber = static_cast<i16>(n);
        entry.RcvdExchange = kSections[static_cast<std::size_t>(n) % kSections.size()];
        break;
    case kWpx:
        entry.RcvdNumber = static_cast<i16>(n);
        entry.RcvdExchange = WpxPrefix(entry.Callsign.Trimmed());
        break;
    default: entry.RcvdName = "HIRAM"; entry.RcvdExchange = "3211";
    }
}

// Opens the full log of the contest for its files, nothing made yet; false if that fails.
bool OpenForPostContest(const std::string &folder, i16 contestId) {
    StartInFolder(folder);
    const auto sync = Files.Sync;
    Files.Sync = [](int) { return 0; };
    if (!MakeFullLog(folder, contestId))
        return false;
    for (i16 n = 1; n < Log.NextEntry; ++n) {
        FillExchange(Log.LogEntries[n], contestId, n);
        Log.Unwritten.push_back(n);
    }
    if (WriteOwedEntries() != 0)
        return false;
    Log.LogState = kNoLog;
    FileOpenRecent(1);
    Files.Sync = sync;
    Settings.ExchangeGeneric = "# CT";
    Settings.ExchangeSSPrec = "A";
    Settings.ExchangeSSCheck = "72";
    Settings.ExchangeSSSection = "CT";
    Settings.ExchangeARRLMult = "CT";
    Settings.ExchangeCQWWMult = "05";
    TakePostContestLog();
    return Log.NextEntry == kMostEntries + 1;
}

// The contest, or kNoContest where its log could not be opened.
i16 Begin(benchmark::State &state, const std::string &folder) {
    const i16 contestId = kBenchContests[static_cast<std::size_t>(state.range(0))];
    if (!OpenForPostContest(folder, contestId) || Contest.ContestId != contestId) {
        state.SkipWithError("no log");
        return kNoContest;
    }
    state.SetLabel(ContestTable(contestId).ChooserRow);
    return contestId;
}

void PostTallyAlone(benchmark::State &state) {
    const BenchFolder folder;
    const i16 contestId = Begin(state, folder.Path);
    Percentiles percentiles;
    while (state.KeepRunning()) {
        int error = -1;
        percentiles.Time(state, [&error] { error = PostTally(); });
        if (error != 0 || Recount.TotalQsos != kMostEntries)
            state.SkipWithError("not counted");
    }
    percentiles.Report(state);
    state.counters["score"] = contestId == kNoContest ? 0 : Recount.Score;
}

// The number of QSO lines, so that no benchmark measures the writing of nothing.
int QsoLines(const std::string &text) {
    int lines = 0;
    for (std::size_t at = text.find("\nQSO: "); at != std::string::npos;
         at = text.find("\nQSO: ", at + 1))
        ++lines;
    return lines;
}

void CabrilloTextAlone(benchmark::State &state) {
    const BenchFolder folder;
    if (Begin(state, folder.Path) == kNoContest || PostTally() != 0)
        state.SkipWithError("no log");
    Percentiles percentiles;
    std::string text;
    while (state.KeepRunning())
        percentiles.Time(state, [&text] { text = CabrilloText(); });
    if (QsoLines(text) != kMostEntries)
        state.SkipWithError("not one line for each contact");
    percentiles.Report(state);
    state.counters["bytes"] = static_cast<double>(text.size());
}

void WriteCabrillo(benchmark::State &state, bool sync) {
    const BenchFolder folder;
    if (Begin(state, folder.Path) == kNoContest || PostTally() != 0)
        state.SkipWithError("no log");
    if (!sync)
        Files.Sync = [](int) { return 0; };
    Percentiles percentiles;
    while (state.KeepRunning()) {
        int error = -1;
        percentiles.Time(state, [&error] { error = WriteCabrilloFile(); });
        if (error != 0)
            state.SkipWithError("not written");
    }
    std::ifstream file(folder.Path + "FULL.LOG", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    if (QsoLines(bytes) != kMostEntries)
        state.SkipWithError("not one line for each contact");
    percentiles.Report(state);
}

void WriteCabrilloUnsynced(benchmark::State &state) {
    WriteCabrillo(state, false);
}

void WriteCabrilloSynced(benchmark::State &state) {
    WriteCabrillo(state, true);
}

// Writing the text of the same length, and nothing else.
void WriteBare(benchmark::State &state, bool sync) {
    const BenchFolder folder;
    if (Begin(state, folder.Path) == kNoContest || PostTally() != 0)
        state.SkipWithError("no log");
    const std::string text = CabrilloText();
    const std::string path = folder.Path + "floor";
    Percentiles percentiles;
    while (state.KeepRunning()) {
        int error = 0;
        percentiles.Time(state, [&] {
            OpenedFile file;
            error |= file.Open(path, OpenMode::Create);
            error |= file.WriteAt(0, std::as_bytes(std::span(text)));
            if (sync)
                error |= file.Sync();
            error |= file.Close();
        });
        if (error != 0)
            state.SkipWithError("not written");
    }
    percentiles.Report(state);
    state.counters["bytes"] = static_cast<double>(text.size());
}

void FloorWriteText(benchmark::State &state) {
    WriteBare(state, false);
}

void FloorWriteTextAndSync(benchmark::State &state) {
    WriteBare(state, true);
}

constexpr int kRuns = 200;
constexpr int kLastContest = static_cast<int>(kBenchContests.size()) - 1;

BENCHMARK(PostTallyAlone)
    ->DenseRange(0, kLastContest)
    ->UseManualTime()
    ->Iterations(kRuns)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(CabrilloTextAlone)
    ->DenseRange(0, kLastContest)
    ->UseManualTime()
    ->Iterations(kRuns)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(WriteCabrilloUnsynced)
    ->DenseRange(0, kLastContest)
    ->UseManualTime()
    ->Iterations(kRuns)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(WriteCabrilloSynced)
    ->DenseRange(0, kLastContest)
    ->UseManualTime()
    ->Iterations(kRuns)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(FloorWriteText)
    ->Arg(0)
    ->UseManualTime()
    ->Iterations(kRuns)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(FloorWriteTextAndSync)
    ->Arg(0)
    ->UseManualTime()
    ->Iterations(kRuns)
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace zrt
