// What the exchange parser of a contest makes of the two fields of the entry window. The parsers
// fill it, LogQso and the multiplier rules read it.
#pragma once

#include "session/fixed_text.h"

#include <string>

namespace zrt {

struct ParsedExchange {
    std::string Call;     // as typed; a parser may cut a number off its end or correct it
    i16 Number = 0;       // serial, zone, age or power
    std::string Name;     // Sprint, NAQP, CW Ops: at most 10 characters
    std::string Mult;     // county, state or section as typed
    std::string Prec;     // SS: precedence, one letter
    std::string Check;    // SS: two digits
    int DigitsOnCall = 0; // CQ WW, WPX: those of a refused number that ends the call
};

} // namespace zrt
