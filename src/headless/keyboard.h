// The operator's keyboard: key names, and what a field does by itself with a key that the program
// leaves to it. Called by the scenario runner.
#pragma once

#include "platform/controls.h"
#include "platform/keys.h"

#include <optional>
#include <string_view>
#include <vector>

namespace zrt {

// "Enter", "Shift+F1", "Ctrl+Up", "Num+", "A": nothing for a key that there isn't.
std::optional<KeyStroke> KeyNamed(std::string_view name);

// The strokes that type a UTF-8 text on a US keyboard.
std::vector<KeyStroke> StrokesOf(std::string_view text);

// Presses and releases a key on the active form: the form first, then the focused control.
void PressKey(Form &form, const KeyStroke &stroke);

// Replaces a field's whole text as the operator would, with Change.
void EnterText(TextBox &box, const std::string &text);

} // namespace zrt
