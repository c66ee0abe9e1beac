// Date and time of a contact, and the two clocks of the entry window.
#pragma once

#include "session/fixed_text.h"

#include <string>

namespace zrt {

// UTC as the log takes it.
struct ContestTime {
    i16 Date = 0; // date code
    i16 Time = 0; // HHMM
    // The year has a decade that the date code can't hold (from 2020): its digit, else a blank.
    char Decade = ' ';
};

// The time now: the machine clock as it stands if IsGMTFlag is "True", else moved by
// TimeCorrection, with the date moved along across midnight.
ContestTime TimeNow();

// The date code of the machine's date plus dayShift (-1, 0 or 1). February has 29 days in 2004,
// 2008, 2012 and 2016 only; UtcFromSystem reads a clock that needs no shift.
i16 GetGMTDate(i16 dayShift);

// "GMT: " and "LocalTime: " (or "Local Time: ") with HHMM.
struct ClockTexts {
    std::string Gmt;
    std::string Local;
};
ClockTexts ClockLabels();

} // namespace zrt
