// What the program fills in: the exchange of a station that is known, when the operator goes on to
// the exchange field. Its GotFocus and the call field's LostFocus are here; the typing fills in the
// zone of CQ WW.
#pragma once

#include "session/fixed_text.h"

#include <string>

namespace zrt {

struct PrefillState {
    std::string Text;  // what was filled in last, as long as no key was typed behind it
    i16 NextEntry = 0; // of the entry that it was filled in for
};
extern PrefillState Prefill;

// The exchange as entry Dupes.LastMatch has it; nothing where each contact has another.
void FillFromLog();
// The exchange of an earlier log, in lower case: it is a guess. Only a log of the same contest
// tells it, but CW Open takes the name from any.
void FillFromOldLog();

// Fills the exchange field, with the caret at the end or at `caret`.
void FillExchange(const std::string &text);
// The exchange field holds nothing but what was filled in, and that counts as empty.
bool IsPrefillOnly();
// The operator has typed into the exchange field.
void EndPrefill();

// Shows what the last check of the call has found: red and the DUPE line, or neither.
void ShowVerdict();

// Checks the call for a dupe, shows the DUPE line and fills in the exchange; may pump. Not while a
// refused exchange is selected, nor for the next county of a county line.
void ExchangeFieldGotFocus();
// Leaving for the exchange field hides the call-match lines.
void CallFieldLostFocus();

} // namespace zrt
