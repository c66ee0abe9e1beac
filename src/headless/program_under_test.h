// What a scenario runs on, and how: the records of the runner's interface. Part of scenario.h.
#pragma once

#include <cstdio>
#include <functional>
#include <optional>
#include <string>

namespace zrt {

// The runner knows nothing of what the program does.
struct ProgramUnderTest {
    void (*RegisterWindows)() = nullptr;
    void (*Start)() = nullptr;
    void (*Exit)() = nullptr;
    std::optional<std::string> (*StateValue)(const std::string &name) = nullptr;
    std::string ShippedData, MinimalData; // folders that a program folder is filled from
    std::string SettingsFile = "zrtlog125.ini";
};

struct RunOptions {
    bool Keep = false;    // leave the program folder, and say where it is
    bool Trace = false;   // print each line, box and byte
    bool Narrate = false; // print the comments
    std::FILE *Output = stdout;
    std::function<void()> AfterLine; // after each line that has been run
    std::function<void()> AtEnd;     // after the last one, while the program folder still stands
};

// What a run comes to, the worse the higher.
enum ScenarioStatus : int { kHolds = 0, kFails = 1, kNotUnderstood = 2 };

} // namespace zrt
