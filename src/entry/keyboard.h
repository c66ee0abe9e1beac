// The keys of the entry fields. The fields of the entry window call the two handlers; app/ installs
// them.
#pragma once

#include "session/fixed_text.h"

#include <array>
#include <string>

namespace zrt {

struct KeyboardState {
    std::array<std::string, 5> QuickMem; // remembered calls, newest first, 10 characters each
    i16 QuickMemPos = 1;                 // the one that was recalled last, 1 to 5
    bool RightBracketHit = false;        // set by the character, used up by the key
    bool BackslashHit = false;
    bool RITClearOnTU = false; // Ctrl+R: the TU message takes the radio's RIT back
};
extern KeyboardState Keyboard;

// `keyCode` 0 on return: the key is used up, the field does not see it. May pump.
void InDataKeyDown(i16 fieldIndex, int &keyCode, int shift);
// `charCode` is upper-cased, or 0 on return when the character is swallowed.
void InDataKeyPress(i16 fieldIndex, int &charCode);

// The Cancel button and the Esc key: ends what is being sent, or wipes the entry.
void EscAction();

} // namespace zrt
