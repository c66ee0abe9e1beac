// Which keys a message box takes. An operator who types must not answer a box that comes up under
// the fingers. Called by operator_filter.cpp and boxes.cpp.
#pragma once

#include "platform/clock.h"

class QKeyEvent;

namespace zrt {

// Keys that follow each other more closely than this are typed in one go.
inline constexpr Microseconds kTypingPause = 700 * kMillisecond;

// As at the start: no key has come yet.
void ForgetTyping();
// A key has gone to one of the program's windows.
void NoteTyping();
// A message box comes up: while keys are being typed it takes none at first.
void BoxComesUp();
// Whether keys are being typed, or the box has come up in the middle of it.
bool IsTyping();

// Whether the box is to see a key that was pressed in it. A letter answers only with Alt; in the
// box it counts as typed, so that no Enter or blank behind it answers either.
bool BoxTakesKey(const QKeyEvent &event);

} // namespace zrt
