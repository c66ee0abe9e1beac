// The recount: reads the whole log from its file again and counts everything from nothing, so that
// no file depends on what was counted while the contest ran. The post-contest files print its
// tables.
#pragma once

#include "postcontest/contest_hours.h"
#include "session/bands.h"
#include "session/log_file.h"

#include <array>
#include <string>
#include <vector>

namespace zrt {

// A slot is a band of both modes: the BandIndex with 8 taken off above 8.
inline constexpr int kSlots = 16;
constexpr int SlotOf(int bandIndex) {
    return bandIndex > 8 ? bandIndex - 8 : bandIndex;
}

// Where stations of a contest may be, in the order of the sheets.
inline constexpr std::array<const char *, 9> kContinentRows = {"US", "VE", "NA", "AF", "JA",
                                                               "AS", "EU", "OC", "SA"};

// Contacts by mode, told by their points in the contests of both modes; in all others all stand
// under Cw.
struct ByMode {
    i32 Cw = 0;
    i32 Phone = 0;
    friend bool operator==(const ByMode &, const ByMode &) = default;
};

struct SlotCounts {
    i32 RawQsos = 0;        // all but the voids
    i32 ValidQsos = 0;      // those with points
    i32 Points = 0;         // tenths of a point in PAQP
    float PointsPerQso = 0; // per valid QSO
    i32 Mults = 0;
    ByMode ValidByMode, PointsByMode;
};

struct HourCounts {
    std::array<ByMode, kSlots + 1> Qsos{}; // by slot
    i32 Mults = 0;
    i32 Points = 0;
};

using CountsByCode = std::array<i32, kBandCodeRows>; // by BandIndex; the row 0 stays unused

struct RecountState {
    CountsByCode RawByCode{}, ValidByCode{}, PointsByCode{}, MultsByCode{};
    CountsByCode CwtMultsByCode{}; // Generic log of a mini-contest: calls that are new in the log
    CountsByCode HalfMinutesByCode{}; // operating time in units of 30 seconds
    // Raw QSOs by BandIndex and row of kContinentRows, in the contests whose sheets show them.
    std::array<std::array<i32, kContinentRows.size()>, kBandCodeRows> ContinentsByCode{};
    std::array<SlotCounts, kSlots + 1> Slots{};                      // from 1
    std::array<HourCounts, kContestHours + 1> Hours{};               // from 1
    MinutesByHour OffMinutes{};                                      // from 1
    std::vector<bool> NewMult = std::vector<bool>(kMostEntries + 1); // by entry
    std::vector<i32> Minutes = std::vector<i32>(kMostEntries + 1);   // elapsed, by entry
    i32 TotalQsos = 0;                                               // all entries, voids too
    i32 Beyond = 0; // entries of the file that did not fit, and are not counted
    i32 TotalPoints = 0, TotalMults = 0;
    i32 CwtMults = 0;
    i32 Score = 0;
    i32 OnTimeMinutes = 0;
};
extern RecountState Recount;

// Reads Log.LogFileName, whose header and contest are taken already (PostData too), and counts.
// Fills the tables of entry/multipliers on the way. Returns 0 or the system's error of reading. No
// entry is changed.
[[nodiscard]] int PostTally();

// The row in kContinentRows that a call counts in, -1 for none.
int ContinentOfCall(std::string_view call);

} // namespace zrt
