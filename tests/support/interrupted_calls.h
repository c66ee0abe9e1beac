// The system calls of the file door, one of which is interrupted by a signal, fails, or does only
// half of what it was asked for. For the test program that is linked with --wrap for each of them;
// see its CMakeLists.txt.
#pragma once

#include <cerrno>
#include <string>
#include <vector>

namespace zrt {

struct InterruptedCallsState {
    int FaultAt = 0;     // the call with the fault, counted from 1; 0 for none
    bool Halves = false; // a read or write moves half of its bytes; all other calls go through
    std::vector<std::string> Done; // the names of all calls so far

    int Error = EINTR;                          // what the call with the fault fails with
    int ReaddirError = 0;                       // what reading a folder ends with, if not 0
    void (*BeforeOpen)(const char *) = nullptr; // what another process does in front of an open
};
extern InterruptedCallsState InterruptedCalls;

} // namespace zrt
