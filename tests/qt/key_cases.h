// The keys of the entry fields, with their modifiers: how a keyboard sends each one, and how the
// handlers are to know it. For the tests that press them all.
#pragma once

#include "platform/keys.h"

#include <Qt>

#include <string>
#include <vector>

namespace zrt {

struct KeyCase {
    std::string Chord; // as xdotool takes it: a name or, for the keypad, the number of the key
    int QtKey = 0;     // as Qt tells it
    Qt::KeyboardModifiers Modifiers;
    std::string Text;
    KeyStroke Expected;
    bool NumLock = false;
    bool KeptByManager = false; // the window manager of X11 takes it
};

std::vector<KeyCase> KeyCases();

// "90/2/0": code, shift and character.
std::string StrokeText(const KeyStroke &stroke);

} // namespace zrt
