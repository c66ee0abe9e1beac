// The hours of a contest, for the rate sheets: to which one a contact belongs, and the minutes off
// the air in each. The recount asks for each entry of a log.
#pragma once

#include "session/fixed_text.h"

#include <array>

namespace zrt {

inline constexpr int kContestHours = 48;
// By hour, from 1; the row 0 stays unused.
using MinutesByHour = std::array<i32, kContestHours + 1>;

// The hour, 1 to the contest's last, of an entry `minutes` after 0000 of the contest's first day.
// What lies before or behind the contest falls into its first or last hour. A Generic log has no
// hours: 0. A Cabrillo file of somebody else counts from 0000, to hour 48.
int GetContestHour(i32 minutes, bool isCabrilloInput);

// Adds the time off the air between two entries, in minutes as above. Pauses of 10 minutes are
// none.
void PostTimeOff(i32 before, i32 minutes, bool isCabrilloInput, MinutesByHour &off);
// The time before the first entry of a log, and behind the last one.
void PostTimeOffFirst(i32 minutes, bool isCabrilloInput, MinutesByHour &off);
void PostTimeOffLast(i32 minutes, bool isCabrilloInput, MinutesByHour &off);

} // namespace zrt
