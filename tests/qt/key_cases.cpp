#include "qt/key_cases.h"

namespace zrt {

namespace {

struct Modifier {
    const char *Chord;
    Qt::KeyboardModifiers Qt;
    int Shift;
};

const Modifier kPlain = {"", Qt::NoModifier, 0};
const Modifier kWithShift = {"shift+", Qt::ShiftModifier, kShift};
const Modifier kWithCtrl = {"ctrl+", Qt::ControlModifier, kCtrl};
const Modifier kWithAlt = {"alt+", Qt::AltModifier, kAlt};
const Modifier kWithCtrlShift = {"ctrl+shift+", Qt::ControlModifier | Qt::ShiftModifier,
                                 kCtrl | kShift};
const Modifier kWithAltShift = {"alt+shift+", Qt::AltModifier | Qt::ShiftModifier, kAlt | kShift};
const Modifier kWithCtrlAlt = {"ctrl+alt+", Qt::ControlModifier | Qt::AltModifier, kCtrl | kAlt};

// A key that types nothing. `text` is the control character that comes with it.
struct CommandKey {
    const char *Name;
    const char *Text;
    int QtKey;
    int KeyCode;
};

constexpr CommandKey kCommandKeys[] = {
    {"Prior", "", Qt::Key_PageUp, 33},
    {"Next", "", Qt::Key_PageDown, 34},
    {"End", "", Qt::Key_End, 35},
    {"Home", "", Qt::Key_Home, 36},
    {"Left", "", Qt::Key_Left, 37},
    {"Up", "", Qt::Key_Up, 38},
    {"Right", "", Qt::Key_Right, 39},
    {"Down", "", Qt::Key_Down, 40},
    {"Insert", "", Qt::Key_Insert, 45},
    {"Delete", "\x7f", Qt::Key_Delete, 46},
    {"Return", "\r", Qt::Key_Return, 13},
    {"KP_Enter", "\r", Qt::Key_Enter, 13},
    {"BackSpace", "\b", Qt::Key_Backspace, 8},
};

// Keys of the keypad: number of the key, what it is without and with Num Lock.
struct KeypadKey {
    const char *Chord;
    int PlainKey;
    int PlainCode;
    int LockedKey;
    char LockedText;
    int LockedCode;
};

constexpr KeypadKey kKeypad[] = {
    {"79", Qt::Key_Home, 36, Qt::Key_7, '7', 103},
    {"80", Qt::Key_Up, 38, Qt::Key_8, '8', 104},
    {"81", Qt::Key_PageUp, 33, Qt::Key_9, '9', 105},
    {"83", Qt::Key_Left, 37, Qt::Key_4, '4', 100},
    {"84", Qt::Key_Clear, 12, Qt::Key_5, '5', 101},
    {"85", Qt::Key_Right, 39, Qt::Key_6, '6', 102},
    {"87", Qt::Key_End, 35, Qt::Key_1, '1', 97},
    {"88", Qt::Key_Down, 40, Qt::Key_2, '2', 98},
    {"89", Qt::Key_PageDown, 34, Qt::Key_3, '3', 99},
    {"90", Qt::Key_Insert, 45, Qt::Key_0, '0', 96},
    {"91", Qt::Key_Delete, 46, Qt::Key_Period, '.', 110},
};

struct SignKey {
    const char *Name;
    int QtKey;
    char Character;
    int KeyCode;
    int Shift;
};

constexpr SignKey kSigns[] = {
    {"slash", Qt::Key_Slash, '/', 191, 0},
    {"question", Qt::Key_Question, '?', 191, kShift},
    {"period", Qt::Key_Period, '.', 190, 0},
    {"comma", Qt::Key_Comma, ',', 188, 0},
    {"minus", Qt::Key_Minus, '-', 189, 0},
    {"equal", Qt::Key_Equal, '=', 187, 0},
    {"plus", Qt::Key_Plus, '+', 187, kShift},
    {"exclam", Qt::Key_Exclam, '!', 49, kShift},
    {"quotedbl", Qt::Key_QuoteDbl, '"', 231,
     kShift}, // not the apostrophe, which is told by character
    {"apostrophe", Qt::Key_Apostrophe, '\'', 222, 0},
    {"bracketleft", Qt::Key_BracketLeft, '[', 219, 0},
    {"bracketright", Qt::Key_BracketRight, ']', 221, 0},
    {"backslash", Qt::Key_Backslash, '\\', 220, 0},
    {"at", Qt::Key_At, '@', 50, kShift},
    {"asterisk", Qt::Key_Asterisk, '*', 56, kShift},
};

class Table {
  public:
    std::vector<KeyCase> Rows;

    KeyCase &Add(const std::string &name, int qtKey, const Modifier &with, const std::string &text,
                 int keyCode, int charCode) {
        Rows.push_back({with.Chord + name, qtKey, with.Qt, text, {keyCode, with.Shift, charCode}});
        return Rows.back();
    }
};

void AddFunctionKeys(Table &table) {
    for (int f = 1; f <= 12; ++f) {
        for (const Modifier &with : {kPlain, kWithShift, kWithCtrl, kWithAlt}) {
            KeyCase &row =
                table.Add("F" + std::to_string(f), Qt::Key_F1 + f - 1, with, "", kKeyF1 + f - 1, 0);
            row.KeptByManager = row.Chord == "alt+F4"; // closes the window
        }
    }
}

void AddCommandKeys(Table &table) {
    for (const CommandKey &key : kCommandKeys) {
        for (const Modifier &with : {kPlain, kWithShift, kWithCtrl, kWithAlt}) {
            KeyCase &row = table.Add(key.Name, key.QtKey, with, key.Text, key.KeyCode, 0);
            if (key.QtKey == Qt::Key_Enter)
                row.Modifiers |= Qt::KeypadModifier;
        }
    }
    // Once to lock and once to unlock.
    for (int i = 0; i < 2; ++i)
        table.Add("Caps_Lock", Qt::Key_CapsLock, kPlain, "", kKeyCapsLock, 0);
    table.Add("Tab", Qt::Key_Tab, kPlain, "\t", kKeyTab, 0);
    table.Add("Tab", Qt::Key_Backtab, kWithShift, "", kKeyTab, 0);
}

void AddKeypad(Table &table) {
    for (const KeypadKey &key : kKeypad) {
        for (const Modifier &with : {kPlain, kWithCtrl, kWithAlt})
            table.Add(key.Chord, key.PlainKey, with, "", key.PlainCode, 0).Modifiers |=
                Qt::KeypadModifier;
        KeyCase &locked = table.Add(key.Chord, key.LockedKey, kPlain,
                                    std::string(1, key.LockedText), key.LockedCode, key.LockedText);
        locked.Modifiers |= Qt::KeypadModifier;
        locked.NumLock = true;
    }
    constexpr SignKey kSignsOfKeypad[] = {
        {"KP_Add", Qt::Key_Plus, '+', kKeyAdd, 0},
        {"KP_Subtract", Qt::Key_Minus, '-', kKeySubtract, 0},
        {"KP_Multiply", Qt::Key_Asterisk, '*', kKeyMultiply, 0},
        {"KP_Divide", Qt::Key_Slash, '/', kKeyDivide, 0},
    };
    for (const SignKey &key : kSignsOfKeypad)
        table
            .Add(key.Name, key.QtKey, kPlain, std::string(1, key.Character), key.KeyCode,
                 key.Character)
            .Modifiers |= Qt::KeypadModifier;
}

void AddLetters(Table &table) {
    for (char upper = 'A'; upper <= 'Z'; ++upper) {
        const char lower = static_cast<char>(upper - 'A' + 'a');
        const std::string name(1, lower);
        const std::string control(1, static_cast<char>(upper - 'A' + 1));
        table.Add(name, upper, kPlain, name, upper, lower);
        table.Add(name, upper, kWithShift, std::string(1, upper), upper, upper);
        table.Add(name, upper, kWithCtrl, control, upper, 0);
        table.Add(name, upper, kWithAlt, name, upper, 0);
    }
    for (const char upper : {'M', 'R', 'W', 'X', 'Z'}) {
        const std::string name(1, static_cast<char>(upper - 'A' + 'a'));
        for (const Modifier &with : {kWithCtrlShift, kWithAltShift, kWithCtrlAlt})
            table.Add(name, upper, with, "", upper, 0);
    }
}

void AddCharacters(Table &table) {
    for (char digit = '0'; digit <= '9'; ++digit) {
        const std::string name(1, digit);
        table.Add(name, digit, kPlain, name, digit, digit);
        table.Add(name, digit, kWithAlt, name, digit, 0);
    }
    for (const SignKey &key : kSigns) {
        KeyCase &row = table.Add(key.Name, key.QtKey, key.Shift == 0 ? kPlain : kWithShift,
                                 std::string(1, key.Character), key.KeyCode, key.Character);
        row.Chord = key.Name; // the name stands for the key with its Shift
    }
    table.Add("space", Qt::Key_Space, kPlain, " ", kKeySpace, ' ');
    table.Add("space", Qt::Key_Space, kWithShift, " ", kKeySpace, ' ');
    table.Add("space", Qt::Key_Space, kWithCtrl, "", kKeySpace, 0);
    // Opens the menu of the window manager.
    table.Add("space", Qt::Key_Space, kWithAlt, " ", kKeySpace, 0).KeptByManager = true;
}

} // namespace

std::vector<KeyCase> KeyCases() {
    Table table;
    AddFunctionKeys(table);
    AddCommandKeys(table);
    AddKeypad(table);
    AddLetters(table);
    AddCharacters(table);
    return table.Rows;
}

std::string StrokeText(const KeyStroke &stroke) {
    return std::to_string(stroke.KeyCode) + "/" + std::to_string(stroke.Shift) + "/" +
           std::to_string(stroke.CharCode);
}

} // namespace zrt
