// zrtlog-scenario: the whole program on the headless doors, driven by scenario files.
#include "app/start_up.h"
#include "headless/scenario.h"
#include "headless/state_names.h"

#include <cstdio>

int main(int argc, char **argv) {
    zrt::ProgramUnderTest program;
    program.RegisterWindows = zrt::RegisterWindows;
    program.Start = zrt::StartProgram;
    program.Exit = zrt::ExitProgram;
    program.StateValue = zrt::StateValue;
    program.ShippedData = ZRT_SHIPPED_DATA;
    program.MinimalData = ZRT_MINIMAL_DATA;
    return zrt::RunCommandLine(program, {argv + 1, argv + argc}, stdout);
}
