// Which band and mode a frequency belongs to.
#pragma once

#include "session/fixed_text.h"

#include <array>

namespace zrt {

// Frequencies are kHz in single precision, as the radios' tables have them; both ends are included.
struct BandRange {
    int Position; // of the band, see session/bands.h
    float Lowest, Highest;
    float HighestCw; // where CW ends in a log of both modes
};

inline constexpr std::array kBandPlan = {
    BandRange{6, 1800, 2000, 1849.999F},    BandRange{5, 3500, 4000, 3749.999F},
    BandRange{4, 7000, 7300, 7049.999F},    BandRange{11, 10100, 10150, 10150}, // no phone
    BandRange{3, 14000, 14350, 14099.999F}, BandRange{10, 18068, 18168, 18109.998F},
    BandRange{2, 21000, 21450, 21099.998F}, BandRange{9, 24890, 24990, 24922.998F},
    BandRange{1, 28000, 29700, 28099.998F}, BandRange{7, 50000, 54000, 50500},
    BandRange{8, 144000, 148000, 144500}};

// The band that holds a frequency; nullptr for none.
const BandRange *RangeOf(float kHz);

// The BandIndex of a frequency in a log of the modes of the open contest; 0 for none. The band may
// be one that the contest has not active.
i16 FrequencyToBandMode(float kHz);

} // namespace zrt
