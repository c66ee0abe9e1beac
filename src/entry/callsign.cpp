#include "entry/callsign.h"

#include "session/call_areas.h"
#include "session/contests.h"
#include "session/reference_data.h"
#include "session/settings.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zrt {

CallAnalysisState CallAnalysis;

namespace {

// ---- WPX prefix

// Signs that tell how a station is portable, not where. Before the "/" fewer of them are known.
constexpr std::array<std::string_view, 7> kSignsBehind = {"A", "P", "J", "M", "MM", "N", "T"};
constexpr std::array<std::string_view, 5> kSignsBefore = {"A", "P", "J", "M", "MM"};
// As long as many a call, so that their length tells nothing.
constexpr std::array<std::string_view, 3> kLongPrefixes = {"VP2M", "VP2E", "VP2V"};

template <typename Table> bool Holds(const Table &table, std::string_view text) {
    return std::find(table.begin(), table.end(), text) != table.end();
}

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Up to the last digit. A digit in the first place belongs to the letters.
std::string PrefixOfCall(std::string_view call) {
    for (std::size_t i = call.size(); i-- > 1;)
        if (IsDigit(call[i]))
            return std::string(call.substr(0, i + 1));
    return call.empty() ? std::string() : std::string(call.substr(0, 2)) + '0';
}

std::string PrefixOfCandidate(std::string_view candidate) {
    const std::string_view lastTwo = candidate.substr(candidate.size() - 2);
    const bool complete = IsDigit(lastTwo[0]) || IsDigit(lastTwo[1]);
    return complete ? std::string(candidate) : std::string(candidate) + '0';
}

// `candidate` is the side of the "/" that tells the place, `call` the other one.
std::string PortablePrefix(std::string_view candidate, std::string_view call) {
    if (candidate.size() > 1)
        return PrefixOfCandidate(candidate);
    if (candidate.size() == 1 && !IsDigit(candidate[0]))
        return std::string(candidate) + '0';
    std::string prefix = PrefixOfCall(call);
    if (!candidate.empty() && !prefix.empty())
        prefix.back() = candidate[0];
    return prefix;
}

// ---- call areas

constexpr std::array kNorthAmericanPrefixes = {
    TextRange{"6D", "6J"}, TextRange{"6Y", "6Y"}, TextRange{"8P", "8P"}, TextRange{"C6", "C6"},
    TextRange{"CM", "CM"}, TextRange{"CO", "CO"}, TextRange{"FG", "FG"}, TextRange{"FJ", "FJ"},
    TextRange{"FM", "FM"}, TextRange{"FP", "FP"}, TextRange{"FS", "FS"}, TextRange{"HH", "HI"},
    TextRange{"HO", "HR"}, TextRange{"HT", "HU"}, TextRange{"J3", "J3"}, TextRange{"J6", "J8"},
    TextRange{"OX", "OX"}, TextRange{"TD", "TE"}, TextRange{"TG", "TG"}, TextRange{"TI", "TI"},
    TextRange{"V2", "V4"}, TextRange{"XA", "XI"}, TextRange{"YN", "YN"}, TextRange{"YS", "YS"},
    TextRange{"ZF", "ZF"}};
// Prefixes of two characters in all.
constexpr std::array kShortNorthAmerican = {TextRange{"C6", "C6"}, TextRange{"J3", "J3"},
                                            TextRange{"J6", "J8"}, TextRange{"V2", "V4"}};
constexpr std::array kLongNorthAmerican = {TextRange{"PJ5", "PJ8"}, TextRange{"VP2", "VP2"},
                                           TextRange{"VP5", "VP5"}, TextRange{"VP9", "VP9"}};

// The USA or Canada by the first letters of a call or prefix.
CallArea UsOrCanada(std::string_view call) {
    const std::string_view two = call.substr(0, 2);
    if (InRanges(two, kUsAreas))
        return CallArea::Usa;
    if (InRanges(two, kCanadianAreas))
        return CallArea::Canada;
    if (InRanges(two, kUsNorthAmerica) || InRanges(two, kUsPacific))
        return CallArea::Neither;
    return BeginsWithUsLetter(call) ? CallArea::Usa : CallArea::Neither;
}

CallArea ClassifyShort(std::string_view prefix) {
    if (BeginsWithUsLetter(prefix))
        return CallArea::Usa;
    return InRanges(prefix, kShortNorthAmerican) ? CallArea::NorthAmerica : CallArea::Neither;
}

// By the digit of the call.
constexpr std::array<i16, 10> kUsZones = {4, 5, 5, 5, 5, 4, 3, 3, 4, 4};
constexpr std::array<i16, 10> kCanadianZones = {3, 5, 5, 4, 4, 4, 4, 3, 1, 5};

struct ZoneOfPrefix {
    std::string_view Prefix;
    i16 Zone;
};
constexpr std::array kNorthernZones = {ZoneOfPrefix{"VY1", 1}, ZoneOfPrefix{"VE8", 1},
                                       ZoneOfPrefix{"VO2", 2}, ZoneOfPrefix{"VY2", 2}};

// The designator itself, as against the prefix of a call like KG5BTN/4.
bool IsPortableInGuantanamo(std::string_view call) {
    return call.starts_with("KG4/") || call.ends_with("/KG4");
}

double Radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

} // namespace

std::string PlainCall(std::string_view field) {
    std::string call = UpperCase(ToLatin1(field));
    std::erase_if(call, [](char c) { return c == '.' || c == '?'; });
    return std::string(Trim(call));
}

std::string WpxPrefix(std::string_view call) {
    const auto slash = call.find('/');
    if (slash == std::string_view::npos)
        return PrefixOfCall(call);
    const std::string_view left = call.substr(0, slash);
    const std::string_view right = call.substr(slash + 1);
    if (left.size() == right.size() && Holds(kLongPrefixes, left))
        return std::string(left);
    std::string prefix;
    if (left.size() >= right.size())
        prefix = Holds(kSignsBehind, right) ? PrefixOfCall(left) : PortablePrefix(right, left);
    else
        prefix = Holds(kSignsBefore, left) ? PrefixOfCall(right) : PortablePrefix(left, right);
    return prefix == "C6A" ? "C6" : prefix;
}

i16 CountryLookup(std::string_view call) {
    const auto starred =
        Contest.ContestId == kArrlDx ? StarredCountries::Skip : StarredCountries::Count;
    FoundPrefix found = FindPrefix(Reference.Prefixes, call, starred);
    const bool designated = IsPortableInGuantanamo(call);
    std::string prefix;
    if (!found.IsCall && call.find('/') != std::string_view::npos) {
        prefix = WpxPrefix(call);
        call = prefix;
        found = FindPrefix(Reference.Prefixes, call, starred);
    }
    CallAnalysis.LastZone = found.Entry == nullptr ? i16{0} : found.Entry->Zone;
    const i16 row = found.Entry == nullptr ? i16{0} : found.Entry->Row;
    if (!call.starts_with("KG4"))
        return row;
    // Two letters behind KG4 are Guantanamo Bay, any other number of them the USA.
    const bool guantanamo = designated || call.size() == 5;
    CallAnalysis.LastZone = guantanamo ? 8 : 5;
    return guantanamo ? row : Reference.CountryRowUsa;
}

CallArea ClassifyNorthAmerica(std::string_view prefix) {
    if (prefix.size() < 2)
        return CallArea::Neither;
    if (prefix.size() == 2)
        return ClassifyShort(prefix);
    const std::string_view two = prefix.substr(0, 2);
    if (InRanges(two, kNorthAmericanPrefixes) || InRanges(two, kUsNorthAmerica))
        return CallArea::NorthAmerica;
    if (InRanges(prefix.substr(0, 3), kLongNorthAmerican))
        return CallArea::NorthAmerica;
    return UsOrCanada(prefix);
}

i16 DefaultZone(std::string_view call) {
    const auto *const digit = std::find_if(call.begin(), call.end(), IsDigit);
    const CallArea area = UsOrCanada(call);
    if (digit == call.end() || area == CallArea::Neither)
        return 0;
    for (const ZoneOfPrefix &row : kNorthernZones)
        if (call.starts_with(row.Prefix))
            return row.Zone;
    const auto &zones = area == CallArea::Usa ? kUsZones : kCanadianZones;
    return zones[static_cast<std::size_t>(*digit - '0')];
}

std::string MainPrefix(i16 country) {
    return country == 0
               ? std::string()
               : Reference.CountryTable[static_cast<std::size_t>(country)].MainPrefix.Trimmed();
}

std::string DisplayPrefix(i16 country) {
    const std::string prefix = MainPrefix(country);
    return prefix.starts_with('*') ? prefix.substr(1) : prefix;
}

i16 HeadingTo(i16 row) {
    if (row < 1 || row > Reference.CountryCount)
        return 0;
    Country &country = Reference.CountryTable[row];
    if (country.Heading == FixedText<3>()) {
        const double here = Radians(Settings.StationLatitude);
        const double there = Radians(static_cast<double>(country.Latitude));
        // Both longitudes count west positive, so this is how far east the country lies.
        const double east =
            Radians(Settings.StationLongitude - static_cast<double>(country.Longitude));
        const double eastward = std::sin(east) * std::cos(there);
        const double northward =
            std::cos(here) * std::sin(there) - std::sin(here) * std::cos(there) * std::cos(east);
        const double degrees = std::atan2(eastward, northward) * 180 / std::numbers::pi;
        country.Heading = std::to_string(RoundToEven(degrees < 0 ? degrees + 360 : degrees));
    }
    return ValueI16(country.Heading.Whole());
}

} // namespace zrt
