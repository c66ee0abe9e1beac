#include "qt/box_keys.h"

#include "qt/key_codes.h"

#include <QKeyEvent>

namespace zrt {

namespace {

Microseconds lastTyped = -kTypingPause;

} // namespace

void ForgetTyping() {
    lastTyped = -kTypingPause;
}

void NoteTyping() {
    lastTyped = Clock.Steady();
}

void BoxComesUp() {
    if (IsTyping())
        NoteTyping();
}

bool IsTyping() {
    return Clock.Steady() - lastTyped < kTypingPause;
}

bool BoxTakesKey(const QKeyEvent &event) {
    const KeyStroke stroke = StrokeOf(event);
    const bool typing = IsTyping();
    const bool isBlank = stroke.CharCode == ' '; // presses the button that has the focus
    const bool isText = stroke.CharCode != 0 && !isBlank;
    if (isText || (isBlank && typing))
        NoteTyping();
    // A key that is held down was pressed for what was there before.
    return !isText && !typing && !event.isAutoRepeat();
}

} // namespace zrt
