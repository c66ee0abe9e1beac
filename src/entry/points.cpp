#include "entry/points.h"

#include "entry/callsign.h"
#include "entry/log_form.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/reference_data.h"

#include <array>

namespace zrt {

PointsState Points;

namespace {

// What a station is worth in CQ WW and WPX. Home: it counts into SameContinentCount.
struct Worth {
    char CqWw;
    char WpxHigh; // on the high bands, 20 m and up
    char WpxLow;
    bool Home;
};

// clang-format off
// The worked station by its call area, at a station in the USA and in Canada. Row: CallArea.
struct AreaRow { Worth AtUsa, AtCanada; };
constexpr std::array<AreaRow, 4> kByArea = {{
    //  at USA: WW   WPX high, low       at Canada: WW   WPX high, low
    {         {'3',  '3', '6', false},           {'3',  '3', '6', false}},  // neither
    {         {'0',  '1', '1', true},            {'2',  '2', '4', false}},  // USA
    {         {'2',  '2', '4', false},           {'0',  '1', '1', true}},   // Canada
    {         {'2',  '2', '4', false},           {'2',  '2', '4', false}},  // other North America
}};

// At a station anywhere else.
//                                        WW   WPX high, low
constexpr Worth kSameNorthAmerica     = {'2',  '2', '4', true};
constexpr Worth kSameContinent        = {'1',  '1', '2', true};
constexpr Worth kOtherContinent       = {'3',  '3', '6', false};
// clang-format on

bool InUsaOrCanada() {
    return Contest.QthUSA || Contest.QthVE;
}

// Empty for a call of no known country.
std::string ContinentOf(const OldEntry36 &entry) {
    return Reference.CountryTable[CountryLookup(entry.Callsign.Trimmed())].Continent.Trimmed();
}

Worth WorthByArea(const OldEntry36 &entry) {
    const CallArea area = ClassifyNorthAmerica(WpxPrefix(entry.Callsign.Trimmed()));
    const AreaRow &row = kByArea[static_cast<std::size_t>(area)];
    return Contest.QthUSA ? row.AtUsa : row.AtCanada;
}

Worth WorthByContinent(const OldEntry36 &entry) {
    const std::string continent = ContinentOf(entry);
    if (continent.empty() || continent != Contest.QthContinent)
        return kOtherContinent;
    return continent == "NA" ? kSameNorthAmerica : kSameContinent;
}

Worth WorthOf(const OldEntry36 &entry) {
    return InUsaOrCanada() ? WorthByArea(entry) : WorthByContinent(entry);
}

// The two kinds of stations part on codes that WPX doesn't use: 8 and 16 are high for one of them.
bool IsHighBand(i16 bandIndex) {
    if (InUsaOrCanada())
        return (bandIndex >= 1 && bandIndex <= 3) || (bandIndex >= 9 && bandIndex <= 11);
    return bandIndex % 8 < 4;
}

char WpxPoints(const OldEntry36 &entry) {
    const Worth worth = WorthOf(entry);
    if (worth.Home)
        ++Points.SameContinentCount;
    return IsHighBand(entry.BandIndex) ? worth.WpxHigh : worth.WpxLow;
}

char AaPoints(const OldEntry36 &entry) {
    if (ContinentOf(entry) != "AS")
        return '0';
    switch (entry.BandIndex) {
    case 5:
    case 13: return '2'; // 80 m
    case 6:
    case 14: return '3'; // 160 m
    default: return '1';
    }
}

// ZRT, NEQP and ARRL 10 m take the codes below 9 for CW, so CW on 12, 17 and 30 m (21 to 23)
// scores as SSB there. It has always done so.
bool LowCode(i16 bandIndex) {
    return bandIndex < 9;
}

char PaqpPoints(i16 bandIndex) {
    switch (bandIndex) {
    case 1:
    case 2:
    case 3:
    case 4:
    case 7:
    case 8: return '3'; // 1.5
    case 5:
    case 6: return '2';
    default: return '1';
    }
}

// Novices and technicians, who sign /N and /T, count double on CW.
char TenMeterPoints(const OldEntry36 &entry) {
    if (!LowCode(entry.BandIndex))
        return '2';
    const std::string call = entry.Callsign.Trimmed();
    return call.ends_with("/T") || call.ends_with("/N") ? '8' : '4';
}

char ZrtPoints(i16 bandIndex) {
    if (Entry.CountyLineFlag)
        return '0';
    return LowCode(bandIndex) ? '3' : '2';
}

} // namespace

char PointsFor(const OldEntry36 &entry) {
    switch (Contest.ContestId) {
    case kArrlDx: return '3';
    case kZrt: return ZrtPoints(entry.BandIndex);
    case kCqWw: return WorthOf(entry).CqWw;
    case kSprint:
    case kNaqp:
    case kCwOpen: return '1';
    case kSs: return '2';
    case kWpx: return WpxPoints(entry);
    case kAa: return AaPoints(entry);
    case kPaqp: return PaqpPoints(entry.BandIndex);
    case kTenMeter: return TenMeterPoints(entry);
    case kNeqp: return LowCode(entry.BandIndex) ? '2' : '1';
    case kGeneric: return IsPhone(entry.BandIndex) ? '1' : '2';
    default: return '0';
    }
}

i32 NumericPoints(char points) {
    const i32 value = points >= '0' && points <= '9' ? points - '0' : 0;
    if (Contest.ContestId != kPaqp)
        return value;
    return value == 3 ? 15 : value * 10;
}

} // namespace zrt
