// The Cabrillo file for the sponsor, version 3.0. Its layout is exact to the byte.
#pragma once

#include <string>

namespace zrt {

// Writes BaseName + ".LOG" from the log in memory, the recount's score, the category and the
// current profile. Cuts and pads the contest's sent exchange in Settings for good. Returns 0 or the
// system's error; after an error an older file of the name is as it was.
[[nodiscard]] int WriteCabrilloFile();

// The whole text of that file, Latin-1, lines ended by CR LF. The multiplier tables are filled.
std::string CabrilloText();

} // namespace zrt
