// ChCoForm, the dialog that chooses the contest of a new log.
#pragma once

#include "platform/controls.h"

#include <array>

namespace zrt {

struct ChCoFormWindow : Form {
    ListBox lstContest;                    // in the order of the display
    Frame Frame1;                          // "   Mode  " or "   Location   "
    std::array<OptionButton, 2> optFrame1; // group 1
    Frame Frame2;                          // " QTH " or " Contest Hours "
    std::array<OptionButton, 3> optFrame2; // group 2
    ListBox lstContinent;
    Button cmdOK, cmdCancel;
};
extern ChCoFormWindow ChCoForm;

void RegisterContestChooser();

// Lets the operator choose, and makes contest and header of the new log. Returns false, with
// ChooserCancelled set and nothing changed, after Cancel. May pump.
bool ChooseNewLog();

} // namespace zrt
