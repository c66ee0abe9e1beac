// From nothing to the idle window: the real program on the offscreen platform, splash and all, and
// the part of it that is the program's own logic.
#include "app/start_up.h"
#include "bench/percentiles.h"
#include "headless/devices.h"
#include "platform/files.h"
#include "qt/real_program.h"
#include "session/log_file.h"
#include "session/session_flags.h"

#include <cstdlib>
#include <filesystem>

namespace zrt {

namespace {

std::string MakeFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "bench-XXXXXX").string();
    return mkdtemp(name.data());
}

// Until the program answers a question, which it does when it waits for the operator.
void StartToIdleWindow(benchmark::State &state) {
    const std::string home = MakeFolder();
    RealProgram program(home);
    Percentiles percentiles;
    while (state.KeepRunning()) {
        percentiles.Time(state, [&] {
            program.Start();
            bool gone = false;
            while (program.Ask("window", gone) != "ZRTLOG") // the splash comes first
                if (gone)
                    break;
            if (gone)
                state.SkipWithError("the window did not come");
        });
        program.Kill();
    }
    percentiles.Report(state);
    std::filesystem::remove_all(home);
}

void StartRoutine(benchmark::State &state) {
    const std::string folder = MakeFolder() + "/";
    std::filesystem::copy(ZRT_SHIPPED_DATA, folder, std::filesystem::copy_options::recursive);
    Percentiles percentiles;
    while (state.KeepRunning()) {
        InstallHeadlessDoors();
        Devices.ProgramFolder = folder;
        // The lock of the last round stands.
        Files.Lock = [](const std::string &) { return FileLock{LockResult::Taken, 0, {}, -1}; };
        RegisterWindows();
        Log = {};
        Session = {};
        percentiles.Time(state, [] { StartProgram(); });
    }
    percentiles.Report(state);
    std::filesystem::remove_all(folder);
}

BENCHMARK(StartToIdleWindow)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);
BENCHMARK(StartRoutine)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace zrt
