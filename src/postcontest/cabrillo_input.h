// Whether a file is a Cabrillo log that a rate sheet can be made of, by its first lines.
#pragma once

#include "session/contests.h"

#include <string_view>

namespace zrt {

struct CabrilloHead {
    bool IsCabrillo = false;      // "START-OF-LOG" stands in the first 20 lines
    i16 ContestId = kNoContest;   // CQ WW, WPX or ARRL DX
    const char *ContestName = ""; // "CQWW", "WPX" or "ARRL DX"
    const char *Mode = "";        // "CW" or "SSB"
};
CabrilloHead RecogniseCabrillo(std::string_view text);

} // namespace zrt
