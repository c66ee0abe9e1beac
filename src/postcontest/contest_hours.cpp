#include "postcontest/contest_hours.h"

#include "session/contests.h"

#include <algorithm>

namespace zrt {

namespace {

constexpr i32 kMinutesAnHour = 60;
constexpr i32 kLeastPause = 11; // minutes that count as off the air
constexpr int kHoursOfCabrillo = 48;

// Hours of a contest: when it starts, in minutes of its first day; the last hour of the rate sheet;
// and the last one that gets minutes off the air, which stops where a single operator's contest
// does. Generic logs have no hours.
struct HoursRow {
    i32 Start;
    int LastRow;
    int LastOffHour;
};

HoursRow HoursOf(i16 contestId) {
    switch (contestId) {
    case kZrt:
    case kPaqp: return {960, 30, 30};
    case kSs: return {1260, 48, 30};
    case kNaqp: return {1080, 48, 12};
    case kNeqp: return {1200, 28, 28};
    case kSprint: return {0, 48, 4};
    case kCwOpen:
        return {Contest.CWOSession == 1200 ? 720 : Contest.CWOSession == 2000 ? 1200 : 0, 4, 4};
    case kGeneric: return {0, 0, 0};
    default: return {0, 48, 48};
    }
}

HoursRow Hours(bool isCabrilloInput) {
    return isCabrilloInput ? HoursRow{0, kHoursOfCabrillo, kHoursOfCabrillo}
                           : HoursOf(Contest.ContestId);
}

// Of the hour that a time lies in.
i32 MinuteOfHour(i32 minutes) {
    return (minutes % kMinutesAnHour + kMinutesAnHour) % kMinutesAnHour;
}

void AddPause(MinutesByHour &off, int hour, i32 minutes) {
    off[static_cast<std::size_t>(hour)] += minutes;
}

void AddIfPause(MinutesByHour &off, int hour, i32 minutes) {
    if (minutes >= kLeastPause)
        AddPause(off, hour, minutes);
}

void AddWholeHours(MinutesByHour &off, int first, int last) {
    for (int hour = first; hour <= last; ++hour)
        AddPause(off, hour, kMinutesAnHour);
}

} // namespace

int GetContestHour(i32 minutes, bool isCabrilloInput) {
    const HoursRow hours = Hours(isCabrilloInput);
    if (hours.LastRow == 0)
        return 0;
    return std::clamp((minutes - hours.Start) / kMinutesAnHour + 1, 1, hours.LastRow);
}

void PostTimeOff(i32 before, i32 minutes, bool isCabrilloInput, MinutesByHour &off) {
    const int hourBefore = GetContestHour(before, isCabrilloInput);
    const int hour = GetContestHour(minutes, isCabrilloInput);
    const i32 gap = minutes - before;
    if (hour == 0 || gap < kLeastPause)
        return;
    if (hour == hourBefore) {
        AddPause(off, hour, gap);
        return;
    }
    // Over the edge of an hour each part counts, however short; the minute of the edge is lost.
    AddPause(off, hourBefore, kMinutesAnHour - 1 - MinuteOfHour(before));
    AddPause(off, hour, MinuteOfHour(minutes));
    AddWholeHours(off, hourBefore + 1, hour - 1);
}

void PostTimeOffFirst(i32 minutes, bool isCabrilloInput, MinutesByHour &off) {
    const int hour = GetContestHour(minutes, isCabrilloInput);
    if (hour == 0)
        return;
    AddWholeHours(off, 1, hour - 1);
    AddIfPause(off, hour, MinuteOfHour(minutes));
}

void PostTimeOffLast(i32 minutes, bool isCabrilloInput, MinutesByHour &off) {
    const int hour = GetContestHour(minutes, isCabrilloInput);
    if (hour == 0)
        return;
    AddIfPause(off, hour, kMinutesAnHour - 1 - MinuteOfHour(minutes));
    AddWholeHours(off, hour + 1, Hours(isCabrilloInput).LastOffHour);
}

} // namespace zrt
