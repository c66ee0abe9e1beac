// What the program fills in: the exchange of a station that is known, when the operator goes on to
// the exchange field. Its GotFocus and the call field's LostFocus are here; the typing fills in the
// zone of CQ WW. What the operator has typed is never replaced.
#pragma once

#include "session/fixed_text.h"

#include <string>

namespace zrt {

struct PrefillState {
    std::string Text; // what was filled in last; empty once the operator has edited it
    std::string Call; // the call and the entry that it was filled in for
    i16 NextEntry = 0;
};
extern PrefillState Prefill;

// The exchange as entry Dupes.LastMatch has it; nothing where each contact has another.
void FillFromLog();
// The exchange of an earlier log, in lower case: it is a guess. Only a log of the same contest
// tells it, but CW Open takes the name from any.
void FillFromOldLog();

// Fills the exchange field unless something is typed there; every fill passes here. The caret goes
// to the end, or to where the number is still to be typed. False if nothing was filled in.
bool FillExchange(const std::string &text);
// The call has changed: what was filled in for another one is taken out.
void DropFillOfAnotherCall();
// The exchange field holds nothing but what was filled in, and that counts as empty.
bool IsPrefillOnly();
// What stands in the exchange field now counts as typed.
void EndPrefill();

// Shows what the last check of the call has found: red and the DUPE line, or neither.
void ShowVerdict();

// Checks the call for a dupe, shows the DUPE line and fills in the exchange; may pump. Not while a
// refused exchange is selected, nor for the next county of a county line.
void ExchangeFieldGotFocus();
// Leaving for the exchange field hides the call-match lines.
void CallFieldLostFocus();

} // namespace zrt
