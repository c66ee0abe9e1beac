// The system calls of the file door, one of which is interrupted by a signal or does only half of
// what it was asked for. For the test program that is linked with --wrap for each of them; see its
// CMakeLists.txt.
#pragma once

#include <string>
#include <vector>

namespace zrt {

struct InterruptedCallsState {
    int FaultAt = 0;     // the call with the fault, counted from 1; 0 for none
    bool Halves = false; // a read or write moves half of its bytes; all other calls go through
    std::vector<std::string> Done; // the names of all calls so far
};
extern InterruptedCallsState InterruptedCalls;

} // namespace zrt
