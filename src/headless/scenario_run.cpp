#include "headless/scenario_run.h"

#include "platform/events.h"
#include "platform/program.h"

#include <fstream>
#include <iostream>
#include <sstream>

namespace zrt {

ScenarioRun Run;

namespace {

[[noreturn]] void End(int status, const std::string &text) {
    Print(Run.File + ":" + std::to_string(Run.CurrentLine) + ": " + text + "\n");
    throw ScenarioOver{status};
}

void SetCurrentLine(int number) {
    Run.CurrentLine = number;
    if (Run.SharedLine != nullptr)
        *Run.SharedLine = number;
}

// The end of the file, in whatever depth of dialogs it comes.
void ReachTheEnd() {
    if (Run.Lines.empty())
        return;
    SetCurrentLine(Run.Lines.back().Number);
    ExpectNoBoxLeft("no box left at the end");
}

// Runs the next line that is no comment. False at the end of the file.
bool RunNextLine() {
    while (Run.Cursor < Run.Lines.size()) {
        const ScriptLine &line = Run.Lines[Run.Cursor++];
        if (!line.Comment) {
            RunLine(line);
            return true;
        }
        if (Run.Options.Narrate) {
            const auto text = line.Text.find_first_not_of("# \t");
            Print((text == std::string::npos ? std::string() : line.Text.substr(text)) + "\n");
        }
    }
    ReachTheEnd();
    return false;
}

// A wait for the operator inside a command. The end of the file ends the wait, and all above it.
bool OperatorActs() {
    if (!RunNextLine())
        throw ScenarioOver{kHolds};
    return true;
}

void CheckTimes(const CommandRow &command) {
    switch (command.When) {
    case CommandRow::Times::Always: return;
    case CommandRow::Times::BeforeStart:
        if (Run.Started)
            CannotDo("the program has been started");
        return;
    case CommandRow::Times::Running:
        if (!Run.Started)
            CannotDo("the program has not been started");
        if (Program.Ending)
            CannotDo("the program has ended");
        return;
    }
}

} // namespace

void Print(const std::string &text) {
    std::fputs(text.c_str(), Run.Options.Output);
    std::fflush(Run.Options.Output);
}

void Fail(const std::string &text) {
    End(kFails, text);
}

void FailExpectation(const std::string &expected, const std::string &got) {
    End(kFails, "expected " + expected + " got " + got);
}

void CannotDo(const std::string &text) {
    End(kNotUnderstood, text);
}

const CommandRow *FindCommand(std::string_view name) {
    for (const auto &table : {SetupCommands(), ActingCommands(), ExpectingCommands()})
        for (const CommandRow &command : table)
            if (command.Name == name)
                return &command;
    return nullptr;
}

void RunLine(const ScriptLine &line) {
    const int above = Run.CurrentLine;
    SetCurrentLine(line.Number);
    if (Run.Options.Trace)
        Print(Run.File + ":" + std::to_string(line.Number) + ": " + line.Text + "\n");
    if (!line.Error.empty())
        CannotDo(line.Error);
    const CommandRow *command =
        line.Words.empty() || line.Words[0].Quoted ? nullptr : FindCommand(line.Words[0].Text);
    if (command == nullptr)
        CannotDo("not known: " + (line.Words.empty() ? line.Text : line.Words[0].Text));
    const std::size_t words = line.Words.size() - 1;
    if (words < command->LeastWords || words > command->MostWords)
        CannotDo("too " + std::string(words < command->LeastWords ? "few" : "many") + " words");
    CheckTimes(*command);
    command->Do(line);
    if (Run.Options.AfterLine)
        Run.Options.AfterLine();
    SetCurrentLine(above);
}

void PrepareRun(const std::string &programFolder) {
    InstallHeadlessDoors();
    Devices.ProgramFolder = programFolder;
    Devices.Operator = OperatorActs;
    Devices.Fail = [](const std::string &text) { Fail(text); };
    if (Run.Options.Trace)
        Devices.Trace = [](const std::string &text) { Print("    " + text + "\n"); };
    Run.Program.RegisterWindows();
}

int RunLines() {
    try {
        do {
            if (Run.Started)
                ServeDueEvents();
        } while (RunNextLine());
        if (Run.Options.AtEnd)
            Run.Options.AtEnd();
        return kHolds;
    } catch (const ScenarioOver &over) {
        return over.Status;
    }
}

std::string TextOfFile(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file.is_open() || file.bad())
        CannotDo("can't read " + path);
    return text.str();
}

bool BeginRun(const ProgramUnderTest &program, const RunOptions &options, const std::string &file) {
    Run = {};
    Run.Program = program;
    Run.Options = options;
    Run.File = file;
    std::ostringstream text;
    if (file == "-") {
        text << std::cin.rdbuf();
    } else {
        std::ifstream stream(file, std::ios::binary);
        if (!stream.is_open()) {
            Print(file + ": can't be read\n");
            return false;
        }
        text << stream.rdbuf();
    }
    Run.Lines = ParseScript(text.str());
    return true;
}

void EndRun(const std::string &programFolder) {
    if (Run.Options.Keep)
        Print(Run.File + ": the program folder is " + programFolder + "\n");
    else
        RemoveProgramFolder(programFolder);
}

} // namespace zrt
