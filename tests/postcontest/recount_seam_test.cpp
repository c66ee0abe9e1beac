// The seam between the counting while a contest runs and the recount of its log: random logs in
// each contest, mode and location must come to the same totals.
#include "app/session_reset.h"
#include "entry/callsign.h"
#include "entry/multipliers.h"
#include "entry/statistics.h"
#include "postcontest/post_contest.h"
#include "postcontest/recount.h"
#include "session/log_file.h"
#include "support/program.h"
#include "support/random_log.h"

#include <numeric>
#include <set>

namespace zrt {
namespace {

i32 SumOf(const CountsByCode &counts) {
    return std::accumulate(counts.begin(), counts.end(), i32{0});
}

// The contacts by mode of the whole log, as the sheets have them.
ByMode ValidByMode() {
    ByMode sum;
    for (const SlotCounts &slot : Recount.Slots) {
        sum.Cw += slot.ValidByMode.Cw;
        sum.Phone += slot.ValidByMode.Phone;
    }
    return sum;
}

void ExpectLiveCounters(const StatisticsState &live) {
    EXPECT_EQ(Recount.TotalPoints, live.TotalPoints);
    EXPECT_EQ(Recount.RawByCode, live.QsosPerBand);
    EXPECT_EQ(Recount.PointsByCode, live.PointsAllPerBand);
    EXPECT_EQ(Recount.OnTimeMinutes, live.OnTimeMinutes);
    for (std::size_t code = 1; code < kBandCodeRows; ++code)
        EXPECT_EQ(static_cast<float>(Recount.HalfMinutesByCode[code]),
                  2 * live.MinutesPerBand[code]);
    // While it runs a contest begins on its first day; a log that begins behind midnight is on the
    // second one in the recount.
    const i32 shift = (FirstContestDay(Log.LogEntries[1].Time) - 1) * kMinutesADay;
    for (std::size_t n = 1; n < static_cast<std::size_t>(Log.NextEntry); ++n)
        ASSERT_EQ(Recount.Minutes[n], live.MinuteIndex[n] + shift) << n;
}

void ExpectLiveMultipliers(const StatisticsState &live) {
    EXPECT_EQ(Recount.TotalMults, live.TotalMults);
    EXPECT_EQ(Recount.Score, live.Score);
    const i32 total = SumOf(Recount.MultsByCode);
    switch (Contest.ContestId) {
    case kTenMeter: // the states have no band in the meters, but they have one in the sheets
        EXPECT_EQ(total,
                  SumOf(live.MultsPerBand) + Multipliers.TenCwMults + Multipliers.TenSsbMults);
        break;
    case kCwOpen: // nor have the calls
        EXPECT_EQ(SumOf(live.MultsPerBand), 0);
        EXPECT_EQ(total, live.TotalMults);
        break;
    default: EXPECT_EQ(Recount.MultsByCode, live.MultsPerBand);
    }
}

void ExpectLiveModes(const StatisticsState &live) {
    const ByMode modes = ValidByMode();
    const i32 withoutPoints = SumOf(Recount.RawByCode) - SumOf(Recount.ValidByCode);
    i32 novices = 0;
    for (i16 n = 1; n < Log.NextEntry; ++n)
        novices += EntryFields(n).Points == "8" ? 1 : 0;
    switch (Contest.ContestId) {
    case kZrt:
    case kNeqp:
    case kGeneric: EXPECT_EQ(modes, (ByMode{live.CwCount, live.SsbCount})); break;
    case kPaqp: // the meters count dupes as CW
        EXPECT_EQ(modes, (ByMode{live.CwCount - withoutPoints, live.SsbCount}));
        break;
    case kTenMeter:            // the meters count novices, who are worth 8, as SSB
        EXPECT_GT(novices, 0); // or the log tells nothing of them
        EXPECT_EQ(modes, (ByMode{live.CwCount + novices, live.SsbCount - novices}));
        break;
    default: EXPECT_EQ(modes, (ByMode{SumOf(Recount.ValidByCode), 0}));
    }
}

// A Generic log has no live score: its countries, once on each band in each mode, and its calls are
// counted here by the rules.
void ExpectPlainGeneric() {
    std::set<std::pair<i16, i16>> countries;
    std::set<std::string> calls;
    i32 points = 0;
    CountsByCode mults{};
    for (i16 n = 1; n < Log.NextEntry; ++n) {
        const OldEntry36 entry = EntryFields(n);
        const i16 country = CountryLookup(entry.Callsign.Trimmed());
        points += ValueI16(entry.Points.Whole());
        const bool isNew = country != 0 && countries.insert({country, entry.BandIndex}).second;
        mults[static_cast<std::size_t>(entry.BandIndex)] += isNew ? 1 : 0;
        EXPECT_EQ(Recount.NewMult[static_cast<std::size_t>(n)], isNew) << n;
        calls.insert(entry.Callsign.Trimmed());
    }
    EXPECT_EQ(Recount.TotalMults, static_cast<i32>(countries.size()));
    EXPECT_EQ(Recount.MultsByCode, mults);
    EXPECT_EQ(Recount.Score, points * Recount.TotalMults);
    EXPECT_EQ(Recount.CwtMults, static_cast<i32>(calls.size()));
    EXPECT_EQ(SumOf(Recount.CwtMultsByCode), Recount.CwtMults);
}

// Every slot and hour adds up to the totals.
void ExpectSums() {
    i32 slotPoints = 0, slotMults = 0, slotQsos = 0, hourPoints = 0, hourMults = 0, hourQsos = 0;
    for (const SlotCounts &slot : Recount.Slots) {
        slotPoints += slot.Points;
        slotMults += slot.Mults;
        slotQsos += slot.RawQsos;
    }
    for (const HourCounts &hour : Recount.Hours) {
        hourPoints += hour.Points;
        hourMults += hour.Mults;
        for (const ByMode &qsos : hour.Qsos)
            hourQsos += qsos.Cw + qsos.Phone;
    }
    EXPECT_EQ(slotPoints, Recount.TotalPoints);
    EXPECT_EQ(slotMults, SumOf(Recount.MultsByCode));
    EXPECT_EQ(slotQsos, Recount.TotalQsos);
    EXPECT_EQ(SumOf(Recount.HalfMinutesByCode), 2 * Recount.OnTimeMinutes);
    if (Contest.ContestId == kGeneric) { // which has no hours
        EXPECT_EQ(hourPoints + hourMults + hourQsos, 0);
        return;
    }
    // Where the hours part the modes, by the points, they leave out what has none.
    const bool parted = ContestTable(Contest.ContestId).BothModes;
    EXPECT_EQ(hourPoints, Recount.TotalPoints);
    EXPECT_EQ(hourMults, slotMults);
    EXPECT_EQ(hourQsos, parted ? SumOf(Recount.ValidByCode) : Recount.TotalQsos);
}

class RecountSeam : public RandomLogTest {};

TEST_P(RecountSeam, LoggedAndRecountedAreOneScore) {
    unsigned seed = 1;
    for (const ContestState &variant : VariantsOf(GetParam())) {
        for (int log = 0; log < kRandomLogs && !HasFailure(); ++log, ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            Dice dice(seed);
            ResetSession();
            OpenNewLog(variant);
            LogRandomContacts(dice, dice.Below(24));
            const StatisticsState live = Statistics;
            const auto entries = Log.LogEntries;
            const i16 next = Log.NextEntry;
            ASSERT_GT(next, kRandomContacts / 2);
            TakePostContestLog();
            PostData.IsCwtFile = GetParam() == kGeneric;
            ASSERT_EQ(PostTally(), 0);
            EXPECT_EQ(Recount.TotalQsos, next - 1);
            EXPECT_EQ(Log.NextEntry, next);
            EXPECT_EQ(Log.LogEntries, entries);
            ExpectLiveCounters(live);
            ExpectLiveModes(live);
            ExpectSums();
            if (GetParam() == kGeneric)
                ExpectPlainGeneric();
            else
                ExpectLiveMultipliers(live);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Contests, RecountSeam,
                         testing::Range(i16{1}, static_cast<i16>(kContests + 1)), ContestOfTest);

} // namespace
} // namespace zrt
