// The process itself: where its folders are and how it ends.
#pragma once

#include <string>

namespace zrt {

struct ProgramDoor {
    std::string (*ExecutableFolder)() = nullptr; // where the executable stands
    std::string (*UserFolder)() = nullptr; // the user's own data folder for this program; or empty
    bool (*RootWithoutHome)() =
        nullptr; // UserFolder is root's, and nothing but his account says so
    std::string (*DefaultsFolder)() = nullptr;  // what a first installation is filled from
    std::string (*DocumentsFolder)() = nullptr; // the user's documents; empty if there is none
};
extern ProgramDoor ProgramFolders;

struct ProgramState {
    bool Ending = false; // every wait returns at once when this is set
    int ExitStatus = 0;
};
extern ProgramState Program;

// Ends the program: the caller returns, all waits return, and the process leaves with `status`.
void EndProgram(int status);

} // namespace zrt
