// The reference data: reading all of it at start, from the country file and the known calls of the
// air, beside the floor, which reads the same files alone; and asking the country of every known
// call.
#include "bench/percentiles.h"
#include "entry/callsign.h"
#include "headless/devices.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/reference_data.h"
#include "session/session_flags.h"
#include "session/settings.h"

#include <cstdlib>
#include <filesystem>

namespace zrt {

namespace {

// The program's folder of a first installation, on a file system of the operating system's choice,
// and the session in it. The path is empty, and the bench skipped, where the machine had no files
// of the air to fill it with.
struct Installation {
    explicit Installation(benchmark::State &state) {
        if (!std::filesystem::exists(ZRT_SHIPPED_DATA "/master.scp")) {
            state.SkipWithError("this machine has no data of the air");
            return;
        }
        std::string name = (std::filesystem::temp_directory_path() / "bench-XXXXXX").string();
        Folder = std::string(mkdtemp(name.data())) + "/";
        std::filesystem::copy(ZRT_SHIPPED_DATA, Folder, std::filesystem::copy_options::recursive);
        InstallHeadlessDoors();
        Session.AppPath = Folder;
        Extensions.ScpLimit = 200000;
        Contest.ContestId = kCqWw;
    }
    ~Installation() { std::filesystem::remove_all(Folder); }
    Installation(const Installation &) = delete;
    Installation &operator=(const Installation &) = delete;

    std::string Folder;
};

void ReadEverything() {
    ReadCountries();
    ReadMasterScp();
    ReadCallMatch();
    ReadStartupData();
}

void ReadReferenceFiles(benchmark::State &state) {
    const Installation installation(state);
    if (installation.Folder.empty())
        return;
    Percentiles percentiles;
    while (state.KeepRunning()) {
        Reference = {};
        percentiles.Time(state, ReadEverything);
    }
    percentiles.Report(state);
    state.counters["prefixes"] = Reference.PrefixCount;
    state.counters["calls"] = Reference.SCPCount;
}

// The bytes of the four files, and nothing done with them.
void FloorReadReferenceFiles(benchmark::State &state) {
    const Installation installation(state);
    if (installation.Folder.empty())
        return;
    Percentiles percentiles;
    std::size_t read = 0;
    while (state.KeepRunning()) {
        read = 0;
        percentiles.Time(state, [&] {
            for (const char *name : {"cty.dat", "master.scp", "callmtch.dat", "ZRTLOG126.DAT"}) {
                FileBytes bytes;
                if (ReadFile(installation.Folder + name, bytes) != 0)
                    state.SkipWithError("not read");
                read += bytes.size();
            }
        });
    }
    percentiles.Report(state);
    state.counters["bytes"] = static_cast<double>(read);
}

// Times `look`, which is given the numbers of the known calls in turn.
void TimeLookUps(benchmark::State &state, void (*look)(i32 n)) {
    const Installation installation(state);
    if (installation.Folder.empty())
        return;
    ReadEverything();
    i32 n = 0;
    while (state.KeepRunning()) {
        look(n + 1);
        n = (n + 1) % Reference.SCPCount;
    }
}

void CountryOfKnownCall(benchmark::State &state) {
    TimeLookUps(state, [](i32 n) {
        const std::string_view row = SCPRow(n);
        const bool marked = row.starts_with('*') || row.starts_with('+');
        benchmark::DoNotOptimize(CountryLookup(row.substr(marked ? 1 : 0)));
    });
}

void CountryOfPortableCall(benchmark::State &state) {
    TimeLookUps(state, [](i32) { benchmark::DoNotOptimize(CountryLookup("W1AW/VE3")); });
}

constexpr int kReadings = 300;

BENCHMARK(ReadReferenceFiles)
    ->UseManualTime()
    ->Iterations(kReadings)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(FloorReadReferenceFiles)
    ->UseManualTime()
    ->Iterations(kReadings)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(CountryOfKnownCall);
BENCHMARK(CountryOfPortableCall);

} // namespace

} // namespace zrt
