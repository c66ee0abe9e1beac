// What every input of a fuzzer must hold to.
#pragma once

#include <cstdlib>

// Ends the process, as a finding does.
inline void Expect(bool holds) {
    if (!holds)
        std::abort();
}
