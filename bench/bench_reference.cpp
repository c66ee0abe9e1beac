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

// The program's folder of a first installation, on a file system of the operating system's choice.
// An empty path where the machine had no files of the air to fill it with.
std::string MakeFolder() {
    if (!std::filesystem::exists(ZRT_SHIPPED_DATA "/master.scp"))
        return "";
    std::string name = (std::filesystem::temp_directory_path() / "bench-XXXXXX").string();
    std::string folder = std::string(mkdtemp(name.data())) + "/";
    std::filesystem::copy(ZRT_SHIPPED_DATA, folder, std::filesystem::copy_options::recursive);
    return folder;
}

void ReadEverything() {
    ReadCountries();
    ReadMasterScp();
    ReadCallMatch();
    ReadStartupData();
}

void Prepare(const std::string &folder) {
    InstallHeadlessDoors();
    Session.AppPath = folder;
    Extensions.ScpLimit = 200000;
    Contest.ContestId = kCqWw;
}

void ReadReferenceFiles(benchmark::State &state) {
    const std::string folder = MakeFolder();
    if (folder.empty()) {
        state.SkipWithError("this machine has no data of the air");
        return;
    }
    Prepare(folder);
    Percentiles percentiles;
    while (state.KeepRunning()) {
        Reference = {};
        percentiles.Time(state, ReadEverything);
    }
    percentiles.Report(state);
    state.counters["prefixes"] = Reference.PrefixCount;
    state.counters["calls"] = Reference.SCPCount;
    std::filesystem::remove_all(folder);
}

// The bytes of the four files, and nothing done with them.
void FloorReadReferenceFiles(benchmark::State &state) {
    const std::string folder = MakeFolder();
    if (folder.empty()) {
        state.SkipWithError("this machine has no data of the air");
        return;
    }
    Prepare(folder);
    Percentiles percentiles;
    std::size_t read = 0;
    while (state.KeepRunning()) {
        read = 0;
        percentiles.Time(state, [&] {
            for (const char *name : {"cty.dat", "master.scp", "callmtch.dat", "ZRTLOG126.DAT"}) {
                FileBytes bytes;
                if (ReadFile(folder + name, bytes) != 0)
                    state.SkipWithError("not read");
                read += bytes.size();
            }
        });
    }
    percentiles.Report(state);
    state.counters["bytes"] = static_cast<double>(read);
    std::filesystem::remove_all(folder);
}

// One iteration is one call.
void CountryOfKnownCall(benchmark::State &state) {
    const std::string folder = MakeFolder();
    if (folder.empty()) {
        state.SkipWithError("this machine has no data of the air");
        return;
    }
    Prepare(folder);
    ReadEverything();
    i32 n = 0;
    while (state.KeepRunning()) {
        const std::string_view row = SCPRow(n + 1);
        const bool marked = row.starts_with('*') || row.starts_with('+');
        benchmark::DoNotOptimize(CountryLookup(row.substr(marked ? 1 : 0)));
        n = (n + 1) % Reference.SCPCount;
    }
    std::filesystem::remove_all(folder);
}

void CountryOfPortableCall(benchmark::State &state) {
    const std::string folder = MakeFolder();
    if (folder.empty()) {
        state.SkipWithError("this machine has no data of the air");
        return;
    }
    Prepare(folder);
    ReadEverything();
    while (state.KeepRunning())
        benchmark::DoNotOptimize(CountryLookup("W1AW/VE3"));
    std::filesystem::remove_all(folder);
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
