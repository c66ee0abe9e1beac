// What the statistics window shows: the rate meters and the table by bands, as texts. The window
// asks after each contact and every ten seconds.
#pragma once

#include <string>
#include <vector>

namespace zrt {

// A text is empty where there is nothing to show.
struct MeterTexts {
    std::string Last10;        // "Last 10: " contacts an hour, "/" points an hour
    std::string Overall;       // "Overall: " likewise
    std::string Total;         // "     Total: " operating time
    std::string OnBand;        // "On Band: ", "Band-Mode: " or "Mode: " and the time
    std::string LastHour;      // "Last Hr: " contacts and points
    std::string SameContinent; // WPX: "USA: ", "CAN: " or "   EU: " and the contacts there
    std::string Dx;            // WPX: "DX: " all other contacts
    std::string ModeTimes;     // contests of both modes: "SSB/CW: " and the two times
};

// With `force` the rates sag while the operator is idle: they are those of now, until the pause
// gets too long to be operating time; then they stay those of the last contact.
MeterTexts Meters(bool force);

// One text for each row of the table; the first is the head, a band or a mode.
using BandColumn = std::vector<std::string>;

struct BandTableTexts {
    BandColumn Titles;
    // The active bands and any other that holds a contact; in ARRL 10 m the two modes.
    std::vector<BandColumn> Columns;
};

// Empty while no log is open. Of contests titled "SSB/CW" each value is a pair.
BandTableTexts BandTable();

} // namespace zrt
