// The change of the band and mode that are being logged. Keys, menus and commands of the call field
// change them here, so that all that shows about the call in the field follows.
#pragma once

#include "session/fixed_text.h"

namespace zrt {

struct BandChangeHooks {
    // The operator has chosen another band or mode for the log radio: the radio follows.
    void (*BandChosen)() = [] {};
};
extern BandChangeHooks BandHooks;

// The log radio is on this band and mode now. Nothing if it was already. May pump.
void ChangeBand(i16 bandIndex);
// Another radio logs, or the band has changed: shows band, maps and call anew. May pump.
void ShowBandAnew();

// The next active band of the ring, downwards (10 m to 160 m) or upwards.
void StepBand(bool upwards);
// CW or phone on the same band; nothing if the log does not allow the mode.
void SwitchMode(bool phone);

// The operator has typed a frequency, in kHz: band and mode follow, and the log radio's table keeps
// it. Nothing if the contest has the band not active, or if the frequency belongs to none.
void TakeTypedFrequency(float kHz);

} // namespace zrt
