// Partial: the window of the calls that hold what is typed in the call field. The typing asks it
// with each key; a click on a call puts it into the field.
#pragma once

#include "entry/partial_calls.h"
#include "platform/controls.h"

#include <array>
#include <string_view>

namespace zrt {

struct PartialWindow : Form {
    Label lblInstaMatchResults;
    std::array<Label, kMostPartials> Match; // named Match(0) to Match(14), five to a row
    Label lblSCPResults;
    std::array<Label, kMostKnownPartials> lblSCP; // named lblSCP(0) to lblSCP(19), five to a row
};
extern PartialWindow Partial;

// Registers the window, and takes its part in the typing and in the storing of contacts.
void RegisterPartial();

// Opens and closes the window; Settings.SCPEnabled and the tick in the View menu follow. The
// keyboard stays where it is.
void OpenPartial();
void ClosePartial();
void TogglePartial(); // the menu

// Shows the calls that hold the text, as the fields' Change has it. Does nothing while the window
// is closed, unless Settings.SCPEnabled is set: then it opens.
void PartialCheck(std::string_view text);
// Empties the window, unless it is closed.
void ClearPartial();
// Empties it in any case: the entries it tells of belong to the log that ends.
void ForgetPartials();

} // namespace zrt
