// The table of prior contacts on the entry window: on which bands a station was worked, and under
// which number. The duplicate check calls it.
#pragma once

#include "session/bands.h"

#include <array>

namespace zrt {

// By BandIndex: the SentNumber of the last contact with a station there, 0 for none.
using SentNumbers = std::array<i16, kBandCodeRows>;

// Fills Modelabel and the PrevQSO labels; nothing in SS, which counts a station once on any band.
// Name and numbers of a band stand below each other in its label, as the modes do in Modelabel.
void ShowPriorContacts(const SentNumbers &sent);
void HidePriorContacts();

} // namespace zrt
