// The real program on the offscreen platform. A key in the call field with a full log and the
// Partial window open, until the windows are drawn; its floor is the question whether they are. And
// the resident memory after that; its floor is that of the program with no log.
#include "bench/bench_folder.h"
#include "bench/full_log.h"
#include "bench/percentiles.h"
#include "platform/files.h"
#include "qt/real_program.h"
#include "session/contests.h"
#include "session/log_file.h"

#include <chrono>
#include <fstream>
#include <string>

namespace zrt {

namespace {

// Asks until the answer holds the text; false if it never does.
bool Comes(RealProgram &program, const std::string &question, const std::string &text) {
    constexpr auto kPatience = std::chrono::seconds(30);
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (std::chrono::steady_clock::now() < end) {
        bool gone = false;
        if (program.Ask(question, gone).find(text) != std::string::npos)
            return true;
        if (gone)
            return false;
    }
    return false;
}

// Megabytes of 10^6 bytes; the kernel's "kB" are 1024. 0 if the kernel does not tell.
double ResidentMegabytes(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    std::string word;
    double kilobytes = 0;
    while (status >> word)
        if (word == "VmRSS:")
            status >> kilobytes;
    return kilobytes * 1024 / 1e6;
}

bool OpenTheFullLog(RealProgram &program, const std::string &fullLog) {
    // A program that finds a log without a name offers to open it.
    if (CopyFile(fullLog, program.TemporaryLog()) != 0)
        return false;
    program.Start();
    if (!Comes(program, "focus", "Yes"))
        return false;
    program.Send("key Enter");
    return Comes(program, "text QSONrLabel", "QSO Nr " + std::to_string(kMostEntries + 1) + " ");
}

// Until the program has nothing left to do.
bool IsIdle(RealProgram &program) {
    bool gone = false;
    return program.Ask("sync", gone) == "ok";
}

bool UseIt(RealProgram &program) {
    program.Send("menu mnuviewCheckPartial");
    for (const std::string &call : TypedCalls()) {
        program.Send("type " + call);
        program.Send("key Esc");
    }
    return IsIdle(program);
}

void AnswerOfRealProgram(benchmark::State &state, bool withKey) {
    const BenchFolder folder;
    if (!OpenFullLog(folder.Path, kCqWw)) {
        state.SkipWithError("no log");
        return;
    }
    Files = DiskFiles();
    RealProgram program(folder.Path + "home");
    if (!OpenTheFullLog(program, folder.Path + "FULL.ZRT") || !UseIt(program)) {
        state.SkipWithError("not open");
        return;
    }
    std::size_t call = 0, place = 0;
    Percentiles percentiles;
    while (state.KeepRunning()) {
        if (place == TypedCalls()[call].size()) {
            call = (call + 1) % TypedCalls().size();
            place = 0;
            program.Send("key Esc");
        }
        bool idle = IsIdle(program);
        const std::string key = TypedCalls()[call].substr(place++, 1);
        percentiles.Time(state, [&] {
            if (withKey)
                program.Send("type " + key);
            idle = idle && IsIdle(program);
        });
        if (!idle)
            state.SkipWithError("the program is gone");
    }
    if (withKey && !Comes(program, "text InData(0)", TypedCalls()[call].substr(0, place)))
        state.SkipWithError("the keys did not come");
    percentiles.Report(state);
}

void KeyInRealProgram(benchmark::State &state) {
    AnswerOfRealProgram(state, true);
}

void FloorAnswerOfRealProgram(benchmark::State &state) {
    AnswerOfRealProgram(state, false);
}

void ResidentMemory(benchmark::State &state, bool withLog) {
    const BenchFolder folder;
    Files = DiskFiles();
    const std::string home = folder.Path + "home";
    if (withLog && !OpenFullLog(folder.Path, kCqWw)) {
        state.SkipWithError("no log");
        return;
    }
    const std::string fullLog = folder.Path + "FULL.ZRT";
    Files = DiskFiles();
    RealProgram program(home);
    Values megabytes;
    while (state.KeepRunning()) {
        const auto start = std::chrono::steady_clock::now();
        bool ready = false;
        if (withLog) {
            ready = OpenTheFullLog(program, fullLog) && UseIt(program);
        } else {
            program.Start();
            ready = Comes(program, "window", "ZRTLOG");
        }
        const double resident = ready ? ResidentMegabytes(program.Process()) : 0;
        program.Kill();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(took.count());
        if (resident == 0)
            state.SkipWithError("not measured");
        megabytes.push_back(resident);
    }
    ReportPercentiles(state, megabytes, "MB");
}

void ResidentWithFullLog(benchmark::State &state) {
    ResidentMemory(state, true);
}

void FloorResidentWithoutLog(benchmark::State &state) {
    ResidentMemory(state, false);
}

constexpr int kKeys = 500;
constexpr int kStarts = 5;

BENCHMARK(KeyInRealProgram)->UseManualTime()->Iterations(kKeys)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorAnswerOfRealProgram)
    ->UseManualTime()
    ->Iterations(kKeys)
    ->Unit(benchmark::kMicrosecond);

BENCHMARK(ResidentWithFullLog)->UseManualTime()->Iterations(kStarts)->Unit(benchmark::kMillisecond);
BENCHMARK(FloorResidentWithoutLog)
    ->UseManualTime()
    ->Iterations(kStarts)
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace zrt
