// Key codes, the modifier mask and the state of the keyboard.
#pragma once

namespace zrt {

// Virtual key numbers, as the key handlers of the windows take them.
enum Key : int {
    kKeyNone = 0,
    kKeyBackspace = 8,
    kKeyTab = 9,
    kKeyEnter = 13,
    kKeyCapsLock = 20,
    kKeyEsc = 27,
    kKeySpace = 32,
    kKeyPageUp = 33,
    kKeyPageDown = 34,
    kKeyEnd = 35,
    kKeyHome = 36,
    kKeyLeft = 37,
    kKeyUp = 38,
    kKeyRight = 39,
    kKeyDown = 40,
    kKeyInsert = 45,
    kKeyDelete = 46,
    kKey0 = 48,
    kKeyA = 65,
    kKeyZ = 90,
    kKeyNumpad0 = 96,
    kKeyMultiply = 106,
    kKeyAdd = 107,
    kKeySubtract = 109,
    kKeyDecimal = 110,
    kKeyDivide = 111,
    kKeyF1 = 112,
    kKeyF5 = 116,
    kKeyF6 = 117,
    kKeyF7 = 118,
    kKeyF8 = 119,
    kKeyF9 = 120,
    kKeyF10 = 121,
    kKeyF11 = 122,
    kKeyF12 = 123,
    kKeyApostrophe = 222,
};

enum ShiftMask : int { kShift = 1, kCtrl = 2, kAlt = 4 };

// One press of a key. CharCode is the character that it types, 0 for none.
struct KeyStroke {
    int KeyCode = kKeyNone;
    int Shift = 0;
    int CharCode = 0;
};

struct KeyStateDoor {
    // True if the key is down, or was pressed since the last time it was asked about; asking
    // forgets the press. Drains what the windowing system has queued first.
    bool (*Pressed)(int keyCode) = nullptr;
};
extern KeyStateDoor KeyState;

} // namespace zrt
