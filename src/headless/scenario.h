// The scenario runner: drives a whole program from plain text files, on the headless doors, and
// checks what it shows, sends and writes. Called by main() of zrtlog-scenario and by the tests.
#pragma once

#include "headless/program_under_test.h"

#include <cstdio>
#include <string>
#include <vector>

namespace zrt {

// Runs one file ("-" for standard input) in a child process, from a fresh program state in a fresh
// program folder.
int RunScenario(const ProgramUnderTest &program, const RunOptions &options,
                const std::string &file);

// The same in this process, whose program must never have been started. `restart` is refused.
int RunScenarioHere(const ProgramUnderTest &program, const RunOptions &options,
                    const std::string &file);

// `zrtlog-scenario [--keep] [--trace] [--narrate] FILE...` or `--list`: the arguments without the
// name of the program. Returns the exit status, the highest of the files.
int RunCommandLine(const ProgramUnderTest &program, const std::vector<std::string> &arguments,
                   std::FILE *output);

} // namespace zrt
