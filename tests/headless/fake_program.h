// A small program with windows of its own, for the tests of the scenario runner.
#pragma once

#include "headless/scenario.h"

#include <string>

namespace zrt::test {

struct Result {
    int Status = -1;
    std::string Output;
};

// Plays a script against the fake program, in a child process or in this one. `arguments` are
// options of the command line.
Result Play(const std::string &script, const std::string &argument = "");
Result PlayHere(const std::string &script, const std::function<void()> &afterLine = {});

// Behind "start": the line must hold, must fail with this text behind its own line number, or must
// be refused likewise. What went before must hold.
void Holds(const std::string &script);
void Fails(const std::string &script, const std::string &text);
void Refused(const std::string &script, const std::string &text);

ProgramUnderTest FakeProgram();

} // namespace zrt::test
