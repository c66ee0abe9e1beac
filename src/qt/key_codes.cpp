#include "qt/key_codes.h"

#include <QKeyEvent>

#include <algorithm>
#include <string_view>

namespace zrt {

namespace {

// A character without a number of its own arrives as a packet: the handlers see a key that they
// know nothing of, and its character.
constexpr int kKeyPacket = 231;

struct NumberedKey {
    int QtKey;
    int KeyCode;
};

constexpr NumberedKey kNamedKeys[] = {
    {Qt::Key_Backspace, kKeyBackspace},
    {Qt::Key_Tab, kKeyTab},
    {Qt::Key_Backtab, kKeyTab},
    {Qt::Key_Return, kKeyEnter},
    {Qt::Key_Enter, kKeyEnter},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, kKeyCapsLock},
    {Qt::Key_Escape, kKeyEsc},
    {Qt::Key_Space, kKeySpace},
    {Qt::Key_PageUp, kKeyPageUp},
    {Qt::Key_PageDown, kKeyPageDown},
    {Qt::Key_End, kKeyEnd},
    {Qt::Key_Home, kKeyHome},
    {Qt::Key_Left, kKeyLeft},
    {Qt::Key_Up, kKeyUp},
    {Qt::Key_Right, kKeyRight},
    {Qt::Key_Down, kKeyDown},
    {Qt::Key_Insert, kKeyInsert},
    {Qt::Key_Delete, kKeyDelete},
    {Qt::Key_Clear, 12},
};

// Where both characters of a key share its number, as they stand on a US keyboard.
struct SignKey {
    std::string_view Signs;
    int KeyCode;
};

constexpr SignKey kSignKeys[] = {
    {";:", 186}, {"=+", 187}, {",<", 188},  {"-_", 189}, {".>", 190},           {"/?", 191},
    {"`~", 192}, {"[{", 219}, {"\\|", 220}, {"]}", 221}, {"'", kKeyApostrophe},
};

constexpr std::string_view kShiftedDigits = ")!@#$%^&*(";

constexpr NumberedKey kKeypadSigns[] = {
    {Qt::Key_Asterisk, kKeyMultiply}, {Qt::Key_Plus, kKeyAdd},      {Qt::Key_Minus, kKeySubtract},
    {Qt::Key_Period, kKeyDecimal},    {Qt::Key_Comma, kKeyDecimal}, {Qt::Key_Slash, kKeyDivide},
};

template <std::size_t N> int NumberOf(const NumberedKey (&table)[N], int qtKey) {
    const auto *found = std::find_if(std::begin(table), std::end(table),
                                     [qtKey](const NumberedKey &k) { return k.QtKey == qtKey; });
    return found == std::end(table) ? kKeyNone : found->KeyCode;
}

bool IsModifier(int qtKey) {
    return (qtKey >= Qt::Key_Shift && qtKey <= Qt::Key_Alt) || qtKey == Qt::Key_AltGr ||
           qtKey == Qt::Key_NumLock || qtKey == Qt::Key_ScrollLock || qtKey == Qt::Key_Super_L ||
           qtKey == Qt::Key_Super_R || qtKey == Qt::Key_Menu;
}

int KeypadNumber(int qtKey) {
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
        return kKeyNumpad0 + qtKey - Qt::Key_0;
    return NumberOf(kKeypadSigns, qtKey);
}

int SignNumber(int character) {
    if (character <= 0 || character > 126)
        return kKeyNone;
    const char sign = static_cast<char>(character);
    for (const SignKey &key : kSignKeys)
        if (key.Signs.find(sign) != std::string_view::npos)
            return key.KeyCode;
    const auto digit = kShiftedDigits.find(sign);
    return digit == std::string_view::npos ? kKeyNone : kKey0 + static_cast<int>(digit);
}

// The character that the key types; with Ctrl, Alt or Meta it types none.
int CharacterOf(const QKeyEvent &event) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return 0;
    const auto text = event.text().toUcs4();
    if (text.size() != 1 || text.front() < 32 || text.front() == 127)
        return 0;
    return static_cast<int>(text.front());
}

int CodeOf(const QKeyEvent &event, int character) {
    const int key = event.key();
    if (const int named = NumberOf(kNamedKeys, key))
        return named;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return kKeyF1 + key - Qt::Key_F1;
    if (event.modifiers() & Qt::KeypadModifier)
        if (const int keypad = KeypadNumber(key))
            return keypad;
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
        return key;
    // Without a character (Ctrl and Alt) Qt's number is that of the sign.
    if (const int sign = SignNumber(character != 0 ? character : key))
        return sign;
    return character != 0 ? kKeyPacket : kKeyNone;
}

} // namespace

KeyStroke StrokeOf(const QKeyEvent &event) {
    if (IsModifier(event.key()))
        return {};
    KeyStroke stroke;
    stroke.CharCode = CharacterOf(event);
    stroke.KeyCode = CodeOf(event, stroke.CharCode);
    if (event.modifiers() & Qt::ShiftModifier || event.key() == Qt::Key_Backtab)
        stroke.Shift |= kShift;
    if (event.modifiers() & Qt::ControlModifier)
        stroke.Shift |= kCtrl;
    if (event.modifiers() & Qt::AltModifier)
        stroke.Shift |= kAlt;
    // Where the apostrophe needs Shift to be typed, that Shift says nothing about the message.
    if (stroke.CharCode == '\'')
        stroke.Shift &= ~kShift;
    return stroke;
}

} // namespace zrt
