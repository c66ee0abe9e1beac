// BandMode, the dialog for the bands that are active in the contest.
#pragma once

#include "platform/controls.h"

#include <array>

namespace zrt {

struct BandModeWindow : Form {
    std::array<CheckBox, 11> chkBand; // by band position, named chkBand(1) to chkBand(11)
    Label lblNote;                    // ten lines
    Button cmdOK, cmdCancel;
};
extern BandModeWindow BandMode;

void RegisterBandMode();

// Shows the dialog until OK is accepted or Cancel pressed. May pump.
void ShowBandMode();

} // namespace zrt
