// What the station that is being typed is worth: "NEEDED" or "Worked", the bands on which its
// multiplier is needed, its country. The typing and the fills of the exchange field call it.
#pragma once

#include "session/fixed_text.h"

#include <string_view>

namespace zrt {

// ARRL DX at a station that receives states: the bands on which the state or province is needed, on
// Modelabel. `text` is the exchange as it stands; below two characters nothing happens.
void ARRLFindMult(std::string_view text);
// NAQP: the same for what stands behind the first blank, on LabelNeededOn.
void NaqpFindMult(std::string_view text);

// ARRL DX, CQ WW, Generic: whether the country is needed on the current band. 0 hides the line.
void ShowNeeded(i16 country);
// WPX and AA: whether the prefix is new, in AA on the current band.
void ShowWpxNeed(std::string_view prefix);
void ShowAaNeed(std::string_view prefix);
// ARRL 10 m and Generic: whether the country is needed on CW and on SSB. Nothing for the countries
// that count by states, and for Hawaii in Generic.
void ShowMultNeed(i16 country);

// The name of the country, and the heading to it if the station's place is known; 0 hides both.
void ShowCountry(i16 country);

} // namespace zrt
