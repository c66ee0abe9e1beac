#include "postcontest/recount.h"

#include "entry/callsign.h"
#include "entry/multipliers.h"
#include "entry/points.h"
#include "entry/statistics.h"
#include "postcontest/post_contest.h"
#include "session/contests.h"
#include "session/reference_data.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace zrt {

RecountState Recount;

namespace {

std::size_t CodeRow(const OldEntry36 &entry) {
    return static_cast<std::size_t>(entry.BandIndex);
}

std::size_t SlotRow(const OldEntry36 &entry) {
    return static_cast<std::size_t>(SlotOf(entry.BandIndex));
}

// ---- modes

// The sheets of these contests part the modes, by the points of the contact. An 8-point contact of
// ARRL 10 m is CW here, though the meters of the running contest count it under SSB.
struct ModeRow {
    i16 ContestId;
    i32 PhonePoints;
    std::array<i32, 2> CwPoints; // the second is 0 where there is one value alone
};
constexpr std::array<ModeRow, 5> kModes = {{
    {kZrt, 2, {3}},
    {kNeqp, 1, {2}},
    {kGeneric, 1, {2}},
    {kPaqp, 10, {}}, // any other points
    {kTenMeter, 2, {4, 8}},
}};

// The counter that a contact belongs to; in these contests none for one without points.
i32 ByMode::*ModeOf(i32 points) {
    const auto row = std::find_if(kModes.begin(), kModes.end(), [](const ModeRow &mode) {
        return mode.ContestId == Contest.ContestId;
    });
    if (row == kModes.end())
        return &ByMode::Cw;
    if (points == row->PhonePoints)
        return &ByMode::Phone;
    const auto &cw = row->CwPoints;
    const bool isCw = cw[0] == 0 || points == cw[0] || points == cw[1];
    return isCw && points > 0 ? &ByMode::Cw : nullptr;
}

// ---- multipliers

// ARRL DX counts by the country that stands in the log, so that what the operator has put right
// there holds. Countries of CQ contests alone, which have a "*", are none.
using CountryByPrefix = std::map<std::string, i16, std::less<>>;

CountryByPrefix CountriesByPrefix() {
    CountryByPrefix countries;
    for (i16 row = 1; row <= Reference.CountryCount; ++row) {
        const Country &country = Reference.CountryTable[static_cast<std::size_t>(row)];
        if (const std::string prefix = country.MainPrefix.Trimmed(); !prefix.starts_with('*'))
            countries.emplace(prefix, row);
    }
    return countries;
}

i32 GenericCountries(std::size_t code) {
    return Multipliers.CountriesPerBand[code];
}

i32 NewMultipliers(const OldEntry36 &entry, const CountryByPrefix &countries) {
    if (Contest.ContestId == kArrlDx && PostData.RcvdIsPower) {
        const auto found = countries.find(entry.RcvdExchange.Trimmed());
        return ReplayCountry(found == countries.end() ? i16{0} : found->second, entry.BandIndex)
            .Total;
    }
    // In the Generic log countries are counted, though they are no multipliers while it runs.
    const std::size_t code = CodeRow(entry);
    const i32 before = GenericCountries(code);
    const i32 found = ReplayMultiplier(entry).Total;
    return Contest.ContestId == kGeneric ? GenericCountries(code) - before : found;
}

// These contests count what each of the six bands has; all others what the log has.
i32 TotalOfMultipliers() {
    i32 total = 0;
    switch (Contest.ContestId) {
    case kArrlDx:
    case kCqWw:
    case kAa:
    case kNaqp:
        for (std::size_t slot = 1; slot <= 6; ++slot)
            total += Recount.Slots[slot].Mults;
        return total;
    default:
        for (const i32 mults : Recount.MultsByCode)
            total += mults;
        return total;
    }
}

// ---- time

// The day of the contest of each entry follows from the one before.
struct DayClock {
    i16 Day = 1;
    i16 Date = 0;

    i32 Minutes(i16 n, const OldEntry36 &entry) {
        if (n == 1)
            Day = FirstContestDay(entry.Time);
        else if (entry.Date != Date && Day < kMostDays)
            ++Day;
        Date = entry.Date;
        return (Day - 1) * kMinutesADay + MinuteOfDay(entry.Time);
    }
};

// Half of the time goes to each of two bands when the band was changed.
void AddOperatingTime(const OldEntry36 &before, const OldEntry36 &entry, i32 gap) {
    if (gap <= 0 || gap > Contest.OffTimeGap)
        return;
    Recount.OnTimeMinutes += gap;
    Recount.HalfMinutesByCode[CodeRow(before)] += gap;
    const bool changed = CodeRow(before) != CodeRow(entry);
    Recount.HalfMinutesByCode[changed ? CodeRow(entry) : CodeRow(before)] += gap;
}

void CountTimes(i16 n, const OldEntry36 &before, const OldEntry36 &entry) {
    const i32 minutes = Recount.Minutes[static_cast<std::size_t>(n)];
    if (n == 1) {
        PostTimeOffFirst(minutes, false, Recount.OffMinutes);
    } else {
        const i32 minutesBefore = Recount.Minutes[static_cast<std::size_t>(n) - 1];
        AddOperatingTime(before, entry, minutes - minutesBefore);
        PostTimeOff(minutesBefore, minutes, false, Recount.OffMinutes);
    }
    if (n == Recount.TotalQsos)
        PostTimeOffLast(minutes, false, Recount.OffMinutes);
}

// ---- one entry

// As the loader has it: it puts a code right, but for the records of 36 bytes, which then count on
// no band. The rows 0 of the tables are read by nobody.
i16 BandOfBadCode() {
    return RecordLength(Log.CurrentFormat, Contest.ContestId) == kOld36Length ? i16{0}
                                                                              : kBandOfBadCode;
}

bool CountsContinents() {
    switch (Contest.ContestId) {
    case kArrlDx: return PostData.RcvdIsPower;
    case kCqWw:
    case kWpx:
    case kAa:
    case kGeneric: return true;
    default: return false;
    }
}

void CountQso(const OldEntry36 &entry, i32 points, i32 mults) {
    const std::size_t code = CodeRow(entry);
    SlotCounts &slot = Recount.Slots[SlotRow(entry)];
    ++Recount.RawByCode[code];
    ++slot.RawQsos;
    Recount.MultsByCode[code] += mults;
    slot.Mults += mults;
    if (points <= 0)
        return;
    ++Recount.ValidByCode[code];
    Recount.PointsByCode[code] += points;
    ++slot.ValidQsos;
    slot.Points += points;
    slot.PointsPerQso = static_cast<float>(slot.Points) / static_cast<float>(slot.ValidQsos);
    Recount.TotalPoints += points;
    if (i32 ByMode::*mode = ModeOf(points)) {
        ++(slot.ValidByMode.*mode);
        slot.PointsByMode.*mode += points;
    }
}

void CountHour(i16 n, const OldEntry36 &entry, i32 points, i32 mults) {
    const int number = GetContestHour(Recount.Minutes[static_cast<std::size_t>(n)], false);
    if (number == 0)
        return;
    HourCounts &hour = Recount.Hours[static_cast<std::size_t>(number)];
    hour.Points += points;
    hour.Mults += mults;
    if (i32 ByMode::*mode = ModeOf(points))
        ++(hour.Qsos[SlotRow(entry)].*mode);
}

void CountContinent(const OldEntry36 &entry) {
    const int row = ContinentOfCall(entry.Callsign.Trimmed());
    if (row >= 0)
        ++Recount.ContinentsByCode[CodeRow(entry)][static_cast<std::size_t>(row)];
}

// What the pass over the log remembers from entry to entry.
struct Tally {
    CountryByPrefix Countries = CountriesByPrefix();
    bool WithContinents = CountsContinents();
    std::set<std::string> Calls; // of a mini-contest: each counts once in the log
    DayClock Clock;
    OldEntry36 Before;

    void CountEntry(i16 n, const OldEntry36 &entry) {
        const i32 points = NumericPoints(entry.Points.Whole().front());
        const i32 mults = NewMultipliers(entry, Countries);
        Recount.NewMult[static_cast<std::size_t>(n)] = mults > 0;
        CountQso(entry, points, mults);
        CountHour(n, entry, points, mults);
        if (WithContinents)
            CountContinent(entry);
        if (PostData.IsCwtFile && Calls.insert(entry.Callsign.Trimmed()).second) {
            ++Recount.CwtMultsByCode[CodeRow(entry)];
            ++Recount.CwtMults;
        }
    }

    // A void takes the time of the entry before, and nothing else of it counts.
    void Take(i16 n) {
        OldEntry36 entry = EntryFields(n);
        if (!IsBandCode(entry.BandIndex))
            entry.BandIndex = BandOfBadCode();
        // The old forms know no void: there it is a call like any other, as in the Cabrillo file.
        const bool isVoid = Log.CurrentFormat && IsVoid(entry);
        const i32 minutes = Clock.Minutes(n, entry);
        const auto row = static_cast<std::size_t>(n);
        Recount.Minutes[row] = isVoid && n > 1 ? Recount.Minutes[row - 1] : minutes;
        if (!isVoid)
            CountEntry(n, entry);
        CountTimes(n, Before, entry);
        Before = entry;
    }
};

} // namespace

int PostTally() {
    Recount = {};
    FillMultiplierTables();
    if (const int error = ReadEntries(Contest.ContestId, Recount.Beyond))
        return error;
    Recount.TotalQsos = Log.NextEntry - 1;
    Tally tally;
    for (i16 n = 1; n < Log.NextEntry; ++n)
        tally.Take(n);
    Recount.TotalMults = TotalOfMultipliers();
    Recount.Score = ScoreOf(Recount.TotalPoints, Recount.TotalMults);
    return 0;
}

int ContinentOfCall(std::string_view call) {
    // The call areas of the Caribbean that belong to countries elsewhere.
    constexpr std::array<std::string_view, 7> kCaribbean = {"PJ5", "PJ6", "PJ7", "PJ8",
                                                            "VP2", "VP5", "VP9"};
    const auto rowOf = [](std::string_view continent) {
        const auto found = std::find(kContinentRows.begin(), kContinentRows.end(), continent);
        return found == kContinentRows.end() ? -1
                                             : static_cast<int>(found - kContinentRows.begin());
    };
    const std::string prefix = WpxPrefix(call).substr(0, 3);
    if (std::find(kCaribbean.begin(), kCaribbean.end(), prefix) != kCaribbean.end())
        return rowOf("NA");
    const i16 country = CountryLookup(call);
    if (country == 0)
        return -1;
    if (country == Reference.CountryRowUsa)
        return rowOf("US");
    if (country == Reference.CountryRowCanada)
        return rowOf("VE");
    const Country &row = Reference.CountryTable[static_cast<std::size_t>(country)];
    return row.MainPrefix.Trimmed() == "JA" ? rowOf("JA") : rowOf(row.Continent.Trimmed());
}

} // namespace zrt
