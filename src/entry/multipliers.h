// The multipliers of the open contest: the tables of what counts, and what of them is worked. The
// loader fills them; the re-scan and LogQso mark them.
#pragma once

#include "session/fixed_text.h"

#include <array>
#include <string>
#include <vector>

namespace zrt {

// A row of a table. A spelling that is empty matches nothing.
struct MultRow {
    std::array<std::string, 3>
        Spellings; // the first one is for display, but in NeqpMults the third
    // By BandIndex 1 to 14 where a multiplier counts once a band; else the flag is at 0.
    std::array<bool, 15> Worked{};
};
using MultTable = std::vector<MultRow>; // row n is at n - 1

struct MultiplierState {
    MultTable ZrtMults; // states of a station at home, counties of any other
    MultTable ZrtCounties;
    MultTable PaqpMults, NeqpMults, SprintMults, SsMults, ArrlMults, NaqpMults, TenMults;
};
extern MultiplierState Multipliers;

// Fills the tables of the open contest from the reference data, with nothing worked; all others
// are empty.
void FillMultiplierTables();

} // namespace zrt
