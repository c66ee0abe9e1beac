// The machine's clocks. The logic reads time here and nowhere else, so that the scenario runner
// can hold the time still.
#pragma once

#include <cstdint>

namespace zrt {

// Microseconds of the steady clock; only differences mean anything.
using Microseconds = std::int64_t;

inline constexpr Microseconds kMillisecond = 1000;
inline constexpr Microseconds kSecond = 1000 * kMillisecond;

// A calendar time. Year is complete (2026), Month and Day count from 1, Hour is 0 to 23.
struct MachineTime {
    int Year = 2000;
    int Month = 1;
    int Day = 1;
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

struct ClockDoor {
    Microseconds (*Steady)() = nullptr;
    MachineTime (*Local)() = nullptr; // in the machine's time zone
    MachineTime (*Utc)() = nullptr;
};
extern ClockDoor Clock;

} // namespace zrt
