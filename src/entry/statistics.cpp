#include "entry/statistics.h"

#include "entry/points.h"
#include "session/contests.h"

namespace zrt {

StatisticsState Statistics;

namespace {

// A damaged record may hold any code; those outside the tables count nowhere.
i16 BandRow(i16 bandIndex) {
    return IsBandCode(bandIndex) ? bandIndex : i16{0};
}

// The counters by mode go by the points of the contact, which tell the mode in these contests.
struct ModeCountRow {
    i16 ContestId;
    std::array<i32, 2> SsbPoints;
    i32 CwPoints;
};
constexpr std::array<ModeCountRow, 4> kModeCounts = {{
    {kZrt, {2, 2}, 3},
    {kNeqp, {1, 1}, 2},
    {kGeneric, {1, 1}, 2},
    // An 8-point contact is counted under SSB, as designed.
    {kTenMeter, {2, 8}, 4},
}};

void CountMode(i32 points) {
    // In PAQP all but the single points count as CW, a dupe too.
    if (Contest.ContestId == kPaqp)
        ++(points == 10 ? Statistics.SsbCount : Statistics.CwCount);
    for (const ModeCountRow &row : kModeCounts) {
        if (row.ContestId != Contest.ContestId)
            continue;
        if (points == row.CwPoints)
            ++Statistics.CwCount;
        else if (points == row.SsbPoints[0] || points == row.SsbPoints[1])
            ++Statistics.SsbCount;
    }
}

// The band and the mode that the time d between two entries belongs to; half to each at a change.
void AddMinutes(float &left, float &entered, bool changed, i32 minutes) {
    const auto d = static_cast<float>(minutes);
    if (changed) {
        left += d / 2;
        entered += d / 2;
    } else {
        entered += d;
    }
}

float &ModeMinutes(i16 bandIndex) {
    return IsCw(bandIndex) ? Statistics.CwMinutes : Statistics.SsbMinutes;
}

void AddBandAndModeTime(i16 bandBefore, i16 band, i32 d) {
    const i32 gap = Contest.OffTimeGap;
    if (d > 0 && d <= gap)
        AddMinutes(Statistics.MinutesPerBand[BandRow(bandBefore)],
                   Statistics.MinutesPerBand[BandRow(band)], bandBefore != band, d);
    // The mode times allow a minute more.
    if (ContestTable(Contest.ContestId).BothModes && d > 0 && d <= gap + 1)
        AddMinutes(ModeMinutes(bandBefore), ModeMinutes(band), IsCw(bandBefore) != IsCw(band), d);
}

void AddOperatingTime(bool changed, i32 d, StampRule rule) {
    if (changed)
        Statistics.OnBandMinutes = 0;
    if (d <= 0 || d > Contest.OffTimeGap)
        return;
    Statistics.OnTimeMinutes += d;
    if (!changed || rule == StampRule::Rescan)
        Statistics.OnBandMinutes += d;
}

i16 LastDay() {
    switch (Contest.ContestId) {
    case kSs: return 3;
    case kGeneric: return kMostDays;
    default: return 2;
    }
}

void CountDay(i16 n, const OldEntry36 &entry, const OldEntry36 &before, StampRule rule) {
    if (n == 1) {
        if (rule == StampRule::Rescan)
            Statistics.DayCount = FirstContestDay(entry.Time);
        return;
    }
    if (entry.Date != before.Date && Statistics.DayCount < kMostDays)
        ++Statistics.DayCount;
    if (rule == StampRule::Rescan && Log.CurrentFormat && Statistics.DayCount > LastDay())
        --Statistics.DayCount;
}

} // namespace

void CountContact(const OldEntry36 &entry, const NewMults &found) {
    const i16 band = BandRow(entry.BandIndex);
    const i32 points = NumericPoints(entry.Points.Whole().front());
    ++Statistics.QsosPerBand[band];
    Statistics.TotalPoints += points;
    Statistics.TotalMults += found.Total;
    Statistics.MultsPerBand[band] += found.OnBand;
    Statistics.PointsAllPerBand[band] += points;
    // Where every contact is worth the same the points of a band are not shown.
    if (Contest.ContestId == kSprint || Contest.ContestId == kSs || Contest.ContestId == kNaqp)
        return;
    Statistics.PointsPerBand[band] += points;
    Statistics.PointsPerQso[band] = static_cast<float>(Statistics.PointsPerBand[band]) /
                                    static_cast<float>(Statistics.QsosPerBand[band]);
    CountMode(points);
}

void StampContact(i16 n, const OldEntry36 &entry, const OldEntry36 &before, StampRule rule) {
    CountDay(n, entry, before, rule);
    const bool keepsStamp = n > 1 && rule == StampRule::Rescan && IsVoid(entry);
    Statistics.MinuteIndex[n] =
        keepsStamp ? Statistics.MinuteIndex[n - 1]
                   : MinuteOfDay(entry.Time) + (Statistics.DayCount - 1) * kMinutesADay;
    if (n == 1) {
        Statistics.OnBandMinutes = 0;
        return;
    }
    const i32 d = Statistics.MinuteIndex[n] - Statistics.MinuteIndex[n - 1];
    AddBandAndModeTime(before.BandIndex, entry.BandIndex, d);
    AddOperatingTime(before.BandIndex != entry.BandIndex, d, rule);
}

i16 FirstContestDay(i16 time) {
    switch (Contest.ContestId) {
    case kSs: return time < 2100 ? 2 : 1;
    case kZrt:
    case kPaqp: return time < 1600 ? 2 : 1;
    case kNeqp: return time < 2000 ? 2 : 1;
    default: return 1;
    }
}

i32 ScoreOf(i32 points, i32 mults) {
    return Contest.ContestId == kPaqp ? RoundToEven(points / 10.0 * mults) : points * mults;
}

void ComputeScore() {
    Statistics.Score = ScoreOf(Statistics.TotalPoints, Statistics.TotalMults);
}

std::string WithCommas(i32 number) {
    std::string text = std::to_string(number);
    if (text.size() < 4 || text.size() > 7)
        return text;
    text.insert(text.size() - 3, ",");
    if (text.size() > 7)
        text.insert(text.size() - 7, ",");
    return text;
}

} // namespace zrt
