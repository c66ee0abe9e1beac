// From Qt's key events to the program's key strokes. Called by operator_filter.cpp.
#pragma once

#include "platform/keys.h"

class QKeyEvent;

namespace zrt {

// KeyCode is kKeyNone for a modifier alone and for keys that have no number.
KeyStroke StrokeOf(const QKeyEvent &event);

} // namespace zrt
