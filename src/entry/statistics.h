// The counters of the log, the score, and the operating time. The live contact and the re-scan of
// a log count by the same procedures.
#pragma once

#include "entry/multipliers.h"
#include "session/bands.h"
#include "session/log_file.h"

#include <array>
#include <string>
#include <vector>

namespace zrt {

inline constexpr i16 kMostDays = 18; // of a log; the count of days stops there on purpose
inline constexpr i32 kMinutesADay = 1440;

// Of a time as the log has it, HHMM.
constexpr i32 MinuteOfDay(i16 time) {
    return time / 100 * 60 + time % 100;
}

struct StatisticsState {
    i32 TotalPoints = 0; // tenths of a point in PAQP
    i32 TotalMults = 0;
    i32 Score = 0;
    // By BandIndex; the row 0 stays unused.
    std::array<i32, kBandCodeRows> QsosPerBand{};
    std::array<i32, kBandCodeRows> MultsPerBand{};
    std::array<i32, kBandCodeRows> PointsPerBand{};
    std::array<i32, kBandCodeRows> PointsAllPerBand{};
    std::array<float, kBandCodeRows> PointsPerQso{};
    std::array<float, kBandCodeRows> MinutesPerBand{};
    i32 CwCount = 0; // contacts by mode in the contests of both modes
    i32 SsbCount = 0;
    float CwMinutes = 0;
    float SsbMinutes = 0;
    i16 DayCount = 1; // the contest day of the last entry
    std::vector<i32> MinuteIndex = std::vector<i32>(kMostEntries + 1); // contest minute by entry
    i32 OnTimeMinutes = 0; // operating time in the contest
    i32 OnBandMinutes = 0; // on the present band and mode
};
extern StatisticsState Statistics;

// Counts a contact, its points and its multipliers.
void CountContact(const OldEntry36 &entry, const NewMults &found);

// A contact as it is logged, and the same contact when a log is read again, differ in the contest
// day of the first entry, in the last day, and in the minutes on the band at a band change.
enum class StampRule { Live, Rescan };

// Stamps entry n with its contest minute and adds the time since the entry before (not looked at
// for n 1) to the operating times. A void takes the stamp of the entry before.
void StampContact(i16 n, const OldEntry36 &entry, const OldEntry36 &before, StampRule rule);

// The contest day, 1 or 2, that a first contact at this time (HHMM) falls on: contests that start
// late in the UTC day go on into the second one.
i16 FirstContestDay(i16 time);

// Points times multipliers; in PAQP the points are tenths, ties to even.
i32 ScoreOf(i32 points, i32 mults);
// Of the log that is open.
void ComputeScore();
// "12,345": commas in numbers of 4 to 7 digits, any other as it is.
std::string WithCommas(i32 number);

} // namespace zrt
