#include "entry/utc_clock.h"

#include "platform/clock.h"
#include "session/log_entry.h"
#include "session/settings.h"

#include <array>

namespace zrt {

namespace {

constexpr std::array<int, 13> kDaysInMonth = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// The short list is the rule: logs of three decades were dated by it.
constexpr std::array<int, 4> kLeapYears = {2004, 2008, 2012, 2016};

int DaysIn(int month, int year) {
    if (month == 2)
        for (const int leap : kLeapYears)
            if (year == leap)
                return 29;
    return kDaysInMonth[month];
}

bool ClockIsUtc() {
    return Settings.IsGMTFlag == "True";
}

MachineTime MachineClock() {
    return ClockIsUtc() && Extensions.UtcFromSystem ? Clock.Utc() : Clock.Local();
}

// The hour moved by TimeCorrection into 0 to 23, and the day shift that this makes.
struct CorrectedHour {
    int Hour;
    i16 DayShift;
};

CorrectedHour Corrected(int hour) {
    const int sum = hour + ValueI16(Settings.TimeCorrection);
    if (sum > 23)
        return {(sum - 24) % 24, 1};
    if (sum < 0)
        return {((sum % 24) + 24) % 24, -1};
    return {sum, 0};
}

i16 DateOf(const MachineTime &now, i16 dayShift) {
    int month = now.Month;
    int day = now.Day + dayShift;
    int yearDigit = now.Year % 10;
    if (dayShift > 0 && day > DaysIn(month, now.Year)) {
        day = 1;
        ++month;
    } else if (dayShift < 0 && day < 1) {
        --month;
        day = month == 0 ? 31 : DaysIn(month, now.Year);
        // The day before 1 November is dated 31 November: it has always stood so in the table.
        if (now.Month == 11) {
            month = 11;
            day = 31;
        }
    }
    // Over the end of a year only the last digit moves, and not over a decade.
    if (month > 12) {
        month = 1;
        yearDigit += yearDigit < 9 ? 1 : 0;
    } else if (month < 1) {
        month = 12;
        yearDigit -= yearDigit > 0 ? 1 : 0;
    }
    return DateCode(now.Year - now.Year % 10 + yearDigit, month, day);
}

std::string HourMinute(int hour, int minute) {
    return PadLeft(std::to_string(hour * 100 + minute), 4, '0');
}

} // namespace

ContestTime TimeNow() {
    const MachineTime now = MachineClock();
    const CorrectedHour corrected = ClockIsUtc() ? CorrectedHour{now.Hour, 0} : Corrected(now.Hour);
    ContestTime time;
    time.Date = DateOf(now, corrected.DayShift);
    time.Time = static_cast<i16>(corrected.Hour * 100 + now.Minute);
    if (now.Year >= 2020)
        time.Decade = static_cast<char>('0' + now.Year / 10 % 10);
    return time;
}

i16 GetGMTDate(i16 dayShift) {
    return DateOf(MachineClock(), dayShift);
}

ClockTexts ClockLabels() {
    const MachineTime now = MachineClock();
    const std::string machine = HourMinute(now.Hour, now.Minute);
    const std::string corrected = HourMinute(Corrected(now.Hour).Hour, now.Minute);
    if (ClockIsUtc())
        return {"GMT: " + machine, "LocalTime: " + corrected};
    return {"GMT: " + corrected, "Local Time: " + machine};
}

} // namespace zrt
