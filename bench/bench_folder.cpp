#include "bench/bench_folder.h"

#include "app/start_up.h"
#include "headless/devices.h"
#include "session/log_file.h"
#include "session/session_flags.h"

#include <cstdlib>
#include <filesystem>

namespace zrt {

BenchFolder::BenchFolder() {
    std::string name = std::filesystem::current_path().string() + "/bench-XXXXXX";
    Path = std::string(mkdtemp(name.data())) + "/";
}

BenchFolder::~BenchFolder() {
    std::filesystem::remove_all(Path);
}

void StartInFolder(const std::string &folder) {
    std::filesystem::copy(ZRT_SHIPPED_DATA, folder, std::filesystem::copy_options::recursive);
    InstallHeadlessDoors();
    Devices.ProgramFolder = folder;
    RegisterWindows();
    Log = {};
    Session = {};
    StartProgram();
}

} // namespace zrt
