// Text on its way into a text field: typed, pasted, dropped or set. Every way passes here, so that
// a field never holds a line end, a tab or a character that its record does not take.
#pragma once

#include "platform/controls.h"

#include <string>
#include <string_view>

namespace zrt {

// Puts a text in the place of the selection, without the characters that the field does not take.
// The blanks at its ends go, but for a blank alone, which is typed. If nothing is left of a text,
// the field stays as it is. Runs Change if the field's text is another one then.
void InsertText(TextBox &box, std::string_view text);

// The same for a widget that has edited its text by itself and shows `shown` now, with the caret
// behind what came in. The widget must then show the record's text. True if that has changed.
bool TakeEdit(TextBox &box, const std::string &shown, int selStart, int selLength);

} // namespace zrt
