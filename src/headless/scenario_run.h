// The state of a running scenario, shared by the sources of the runner and by nobody else.
#pragma once

#include "headless/devices.h"
#include "headless/program_under_test.h"
#include "headless/script.h"

#include <span>
#include <string>
#include <vector>

namespace zrt {

struct ScenarioRun {
    ProgramUnderTest Program;
    RunOptions Options;
    std::string File; // as the operator named it
    std::vector<ScriptLine> Lines;
    std::size_t Cursor = 0;    // the next line
    int CurrentLine = 0;       // number of the line that is being run
    int *SharedLine = nullptr; // the same, where a parent process sees it
    bool FolderFilled = false;
    bool Started = false;
    // Ends this process as a crash would, to go on in a new one; null where that can't be done.
    void (*Restart)() = nullptr;
};
extern ScenarioRun Run;

// Thrown when the file is over before its last line, after the reason has been printed.
struct ScenarioOver {
    int Status;
};

void Print(const std::string &text);
// Print "FILE:LINE: ..." and end the file.
[[noreturn]] void Fail(const std::string &text);
[[noreturn]] void FailExpectation(const std::string &expected, const std::string &got);
[[noreturn]] void CannotDo(const std::string &text);

// A command gets its line; Words[0] is its own name.
struct CommandRow {
    std::string_view Name;
    std::size_t LeastWords, MostWords; // behind the name
    void (*Do)(const ScriptLine &line);
    enum class Times { Always, BeforeStart, Running } When;
};
inline constexpr std::size_t kAnyNumber = 1000;

std::span<const CommandRow> SetupCommands();
std::span<const CommandRow> ActingCommands();
std::span<const CommandRow> ExpectingCommands();

// Fails, with the oldest box that no line has expected, if there is one.
void ExpectNoBoxLeft(const std::string &expected);

const CommandRow *FindCommand(std::string_view name);
void RunLine(const ScriptLine &line);
void StartProgramUnderTest();
// Reads the file into a fresh Run; false, with a message, if it can't be read. EndRun removes the
// program folder, unless it is to be kept.
bool BeginRun(const ProgramUnderTest &program, const RunOptions &options, const std::string &file);
void EndRun(const std::string &programFolder);
// Makes the devices and the windows of the run, before its first line.
void PrepareRun(const std::string &programFolder);
// Runs what is left of the file and returns its status.
int RunLines();

// The program folder (scenario_setup.cpp). Paths of scripts are relative to it, or to the file.
void FillFolder();
void RemoveProgramFolder(const std::string &folder);
std::string MakeProgramFolder();
std::string InProgramFolder(const std::string &name);
std::string BesideFile(const std::string &name);

std::string TextOfFile(const std::string &path); // CannotDo if it can't be read

} // namespace zrt
