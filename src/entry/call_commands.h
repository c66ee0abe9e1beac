// The commands that are typed into the call field and ended by Enter. LogQso asks first of all.
#pragma once

#include "session/fixed_text.h"

#include <string_view>

namespace zrt {

enum class CallCommand : i16 {
    None = 0,
    Repeat = 1, // R, RPT: the last contact comes back into the fields
    Frequency = 4,
    Timing = 5,      // TM1 to TM4
    ShowTiming = 6,  // TMSHOW
    Interval = 7,    // INT and a number
    StoreRadio = 8,  // STO
    RecallRadio = 9, // RCL
    Power = 10,      // PWR, and up to three digits
    TuEvery = 11,    // TU and a digit
    Mode = 12,       // CW, SSB, PH, with the extension ModeCommands
};

// What the text, trimmed and in upper case, asks for. Whatever is no command is a call.
CallCommand ParseCallCommand(std::string_view text);

// Carries out the command in the call field. False if there is none. May pump.
bool CarryOutCallCommand();

// Empties the call field and what is shown for it, and gives it the focus.
void ClearTextCommand();

} // namespace zrt
