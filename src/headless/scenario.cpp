#include "headless/scenario.h"

#include "headless/scenario_run.h"
#include "headless/window_probe.h"

#include <algorithm>

namespace zrt {

int RunScenarioHere(const ProgramUnderTest &program, const RunOptions &options,
                    const std::string &file) {
    if (!BeginRun(program, options, file))
        return kNotUnderstood;
    const std::string folder = MakeProgramFolder();
    PrepareRun(folder);
    const int status = RunLines();
    EndRun(folder);
    Devices.Operator = nullptr;
    Devices.Fail = nullptr;
    Devices.Trace = nullptr;
    return status;
}

int RunCommandLine(const ProgramUnderTest &program, const std::vector<std::string> &arguments,
                   std::FILE *output) {
    RunOptions options;
    options.Output = output;
    std::vector<std::string> files;
    for (const std::string &argument : arguments) {
        if (argument == "--keep") {
            options.Keep = true;
        } else if (argument == "--trace") {
            options.Trace = true;
        } else if (argument == "--narrate") {
            options.Narrate = true;
        } else if (argument == "--list") {
            InstallHeadlessDoors();
            program.RegisterWindows();
            std::fputs(ListForms().c_str(), output);
            return kHolds;
        } else if (argument.starts_with("--")) {
            std::fprintf(output, "no such option: %s\n", argument.c_str());
            return kNotUnderstood;
        } else {
            files.push_back(argument);
        }
    }
    if (files.empty()) {
        std::fputs("usage: zrtlog-scenario [--keep] [--trace] [--narrate] FILE...\n"
                   "       zrtlog-scenario --list\n",
                   output);
        return kNotUnderstood;
    }
    int status = kHolds;
    for (const std::string &file : files)
        status = std::max(status, RunScenario(program, options, file));
    return status;
}

} // namespace zrt
