// What a callsign tells of its station: the WPX prefix, the country, the zone, the heading. The
// entry window asks live, the loader and the post-contest files for every entry. Calls come trimmed
// and in upper case; any bytes are safe.
#pragma once

#include "session/fixed_text.h"

#include <string>
#include <string_view>

namespace zrt {

struct CallAnalysisState {
    i16 LastZone = 0; // CQ zone that the last CountryLookup found; 0 if the entry has none
};
extern CallAnalysisState CallAnalysis;

// The call in a field of the window: upper case, without blanks around it and without "." and "?",
// which are the operator's notes and never reach the log.
std::string PlainCall(std::string_view field);

// "W1AW" gives "W1", "W1AW/4" "W4", "F/W1AW" "F0"; an empty call gives "".
std::string WpxPrefix(std::string_view call);

// The row in Reference.CountryTable, 0 for none; sets LastZone.
i16 CountryLookup(std::string_view call);

enum class CallArea { Neither, Usa, Canada, NorthAmerica };
// Classes a WPX prefix without the country file, for the points of a station in the USA or Canada.
CallArea ClassifyNorthAmerica(std::string_view prefix);

// The CQ zone of the call area of a US or Canadian call; 0 for any other call.
i16 DefaultZone(std::string_view call);

// The main prefix of a country, empty for row 0; a "*" marks one that counts in CQ contests alone,
// and is not shown.
std::string MainPrefix(i16 country);
std::string DisplayPrefix(i16 country);

// Degrees, 0 to 360, from the station to a country: the great circle's direction at its start.
// Computed once, then kept in the country's Heading. 0 for a row that holds no country.
i16 HeadingTo(i16 row);

} // namespace zrt
