#include "headless/keyboard.h"

#include "headless/devices.h"
#include "platform/characters.h"
#include "platform/field_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <utility>

namespace zrt {

namespace {

struct KeyRow {
    std::string_view Name;
    int KeyCode;
    int CharCode;
};

constexpr KeyRow kNamedKeys[] = {
    {"Enter", kKeyEnter, 0},         {"Esc", kKeyEsc, 0},           {"Tab", kKeyTab, 0},
    {"Space", kKeySpace, ' '},       {"Insert", kKeyInsert, 0},     {"Delete", kKeyDelete, 0},
    {"Backspace", kKeyBackspace, 0}, {"Home", kKeyHome, 0},         {"End", kKeyEnd, 0},
    {"PageUp", kKeyPageUp, 0},       {"PageDown", kKeyPageDown, 0}, {"Up", kKeyUp, 0},
    {"Down", kKeyDown, 0},           {"Left", kKeyLeft, 0},         {"Right", kKeyRight, 0},
    {"CapsLock", kKeyCapsLock, 0},   {"Num+", kKeyAdd, '+'},        {"Num-", kKeySubtract, '-'},
    {"Num*", kKeyMultiply, '*'},     {"Num/", kKeyDivide, '/'},     {"Num.", kKeyDecimal, '.'},
};

constexpr int kKeyOfOtherCharacter = 231; // a character that stands on no key of its own

// The keys of a US keyboard that are neither letters nor digits: code, character, with Shift.
constexpr struct {
    int KeyCode;
    char Plain, Shifted;
} kSignKeys[] = {
    {186, ';', ':'},
    {187, '=', '+'},
    {188, ',', '<'},
    {189, '-', '_'},
    {190, '.', '>'},
    {191, '/', '?'},
    {192, '`', '~'},
    {219, '[', '{'},
    {220, '\\', '|'},
    {221, ']', '}'},
    {kKeyApostrophe, '\'', 0},
    // With Shift the same key, but the apostrophe logs a contact, and this is none.
    {kKeyOfOtherCharacter, 0, '"'},
};
constexpr std::string_view kShiftedDigits = ")!@#$%^&*(";

KeyStroke StrokeOfCharacter(int character) {
    if (character == ' ')
        return {kKeySpace, 0, ' '};
    if (character >= 'a' && character <= 'z')
        return {character - 'a' + kKeyA, 0, character};
    if (character >= 'A' && character <= 'Z')
        return {character, kShift, character};
    if (character >= '0' && character <= '9')
        return {character, 0, character};
    if (character > 0 && character < 128) {
        const char sign = static_cast<char>(character);
        if (const auto digit = kShiftedDigits.find(sign); digit != std::string_view::npos)
            return {kKey0 + static_cast<int>(digit), kShift, character};
        for (const auto &key : kSignKeys) {
            if (key.Plain == sign)
                return {key.KeyCode, 0, character};
            if (key.Shifted == sign)
                return {key.KeyCode, kShift, character};
        }
    }
    return {kKeyOfOtherCharacter, 0, character};
}

std::optional<KeyStroke> PlainKey(std::string_view name) {
    for (const KeyRow &row : kNamedKeys)
        if (row.Name == name)
            return KeyStroke{row.KeyCode, 0, row.CharCode};
    if (name.size() == 4 && name.starts_with("Num") && std::isdigit(name[3]) != 0)
        return KeyStroke{kKeyNumpad0 + name[3] - '0', 0, name[3]};
    if (name.size() >= 2 && name.size() <= 3 && name.front() == 'F') {
        int number = 0;
        for (const char c : name.substr(1))
            number = std::isdigit(static_cast<unsigned char>(c)) != 0 ? number * 10 + c - '0' : 99;
        if (name[1] != '0' && number >= 1 && number <= 12)
            return KeyStroke{kKeyF1 + number - 1, 0, 0};
    }
    if (name.size() == 1)
        return StrokeOfCharacter(std::tolower(static_cast<unsigned char>(name.front())));
    return std::nullopt;
}

// ---- what a text field does by itself

// The end of the selection that stands still while Shift and an arrow move the other one. The
// record has no place for it; it holds for the field that was edited last.
struct SelectionAnchor {
    const TextBox *Box = nullptr;
    int At = 0;
};
SelectionAnchor Anchor;

int LengthOf(const TextBox &box) {
    return static_cast<int>(box.Text.size());
}

void ClampSelection(TextBox &box) {
    box.SelStart = std::clamp(box.SelStart, 0, LengthOf(box));
    box.SelLength = std::clamp(box.SelLength, 0, LengthOf(box) - box.SelStart);
}

void DeleteAt(TextBox &box, int from) {
    if (box.SelLength == 0 && from >= 0 && from < LengthOf(box)) {
        box.SelStart = from;
        box.SelLength = 1;
    }
    InsertText(box, "");
}

// Moves the caret by a caret key: -1, +1, or to an end.
void MoveCaret(TextBox &box, int keyCode, bool select) {
    const int selEnd = box.SelStart + box.SelLength;
    const bool known = Anchor.Box == &box && (Anchor.At == box.SelStart || Anchor.At == selEnd);
    const int anchor = known ? Anchor.At : box.SelStart;
    int caret = anchor == box.SelStart ? selEnd : box.SelStart;
    const bool collapses = !select && box.SelLength > 0;
    switch (keyCode) {
    case kKeyHome: caret = 0; break;
    case kKeyEnd: caret = LengthOf(box); break;
    case kKeyLeft: caret = collapses ? box.SelStart : std::max(caret - 1, 0); break;
    case kKeyRight: caret = collapses ? selEnd : std::min(caret + 1, LengthOf(box)); break;
    default: break;
    }
    const int other = select ? anchor : caret;
    Anchor = {&box, other};
    box.SelStart = std::min(caret, other);
    box.SelLength = std::max(caret, other) - box.SelStart;
}

void EditField(TextBox &box, const KeyStroke &stroke, int charCode) {
    if (!box.Enabled)
        return;
    ClampSelection(box);
    const bool plain = (stroke.Shift & (kCtrl | kAlt)) == 0;
    if (charCode != 0) {
        InsertText(box, Utf8(charCode));
    } else if (plain) {
        switch (stroke.KeyCode) {
        case kKeyBackspace: DeleteAt(box, box.SelStart - 1); break;
        case kKeyDelete: DeleteAt(box, box.SelStart); break;
        case kKeyHome:
        case kKeyEnd:
        case kKeyLeft:
        case kKeyRight: MoveCaret(box, stroke.KeyCode, (stroke.Shift & kShift) != 0); break;
        default: break;
        }
    }
}

// ---- what other controls do by themselves

void MoveInList(ListBox &list, int keyCode) {
    constexpr int page = 10;
    const int last = static_cast<int>(list.Rows.size()) - 1;
    int row = list.ListIndex;
    switch (keyCode) {
    case kKeyUp: --row; break;
    case kKeyDown: ++row; break;
    case kKeyPageUp: row -= page; break;
    case kKeyPageDown: row += page; break;
    case kKeyHome: row = 0; break;
    case kKeyEnd: row = last; break;
    default: return;
    }
    row = std::clamp(row, 0, std::max(last, 0));
    if (last < 0 || row == list.ListIndex)
        return;
    list.ListIndex = row;
    if (const auto click = list.Click)
        click();
}

void MoveScrollBar(ScrollBar &bar, int keyCode) {
    const int direction = bar.Min <= bar.Max ? 1 : -1;
    int value = bar.Value;
    switch (keyCode) {
    case kKeyLeft:
    case kKeyUp: value -= direction * bar.SmallChange; break;
    case kKeyRight:
    case kKeyDown: value += direction * bar.SmallChange; break;
    case kKeyPageUp: value -= direction * bar.LargeChange; break;
    case kKeyPageDown: value += direction * bar.LargeChange; break;
    case kKeyHome: value = bar.Min; break;
    case kKeyEnd: value = bar.Max; break;
    default: return;
    }
    value = std::clamp(value, std::min(bar.Min, bar.Max), std::max(bar.Min, bar.Max));
    if (std::exchange(bar.Value, value) == value)
        return;
    if (const auto change = bar.Change)
        change();
}

void LetControlAct(Control &control, const KeyStroke &stroke, int charCode) {
    switch (control.Kind) {
    case ControlKind::TextBox: EditField(static_cast<TextBox &>(control), stroke, charCode); break;
    case ControlKind::Button:
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
        if (stroke.KeyCode == kKeySpace)
            ClickControl(control);
        break;
    case ControlKind::ListBox: MoveInList(static_cast<ListBox &>(control), stroke.KeyCode); break;
    case ControlKind::ScrollBar:
        MoveScrollBar(static_cast<ScrollBar &>(control), stroke.KeyCode);
        break;
    default: break;
    }
}

// A window that opens gives its first control the focus, unless the program has chosen one.
void FocusFirst(Form &form) {
    for (const NamedControl &named : RegistrationOf(form).Controls) {
        if (TakesFocus(*named.Record)) {
            SetFocus(*named.Record);
            return;
        }
    }
}

} // namespace

std::optional<KeyStroke> KeyNamed(std::string_view name) {
    constexpr std::pair<std::string_view, int> modifiers[] = {
        {"Shift+", kShift}, {"Ctrl+", kCtrl}, {"Alt+", kAlt}};
    int shift = 0;
    for (bool again = true; again;) {
        again = false;
        for (const auto &[word, mask] : modifiers) {
            if (name.starts_with(word)) {
                name.remove_prefix(word.size());
                shift |= mask;
                again = true;
            }
        }
    }
    std::optional<KeyStroke> stroke = PlainKey(name);
    if (!stroke)
        return stroke;
    if ((shift & (kCtrl | kAlt)) != 0)
        stroke->CharCode = 0;
    else if ((shift & kShift) != 0 && stroke->CharCode >= 'a' && stroke->CharCode <= 'z')
        stroke->CharCode -= 'a' - 'A';
    stroke->Shift |= shift;
    return stroke;
}

std::vector<KeyStroke> StrokesOf(std::string_view text) {
    std::vector<KeyStroke> strokes;
    while (!text.empty())
        strokes.push_back(StrokeOfCharacter(TakeCharacter(text)));
    return strokes;
}

void PressKey(Form &form, const KeyStroke &stroke) {
    Devices.KeysHit.insert(stroke.KeyCode);
    if (form.ActiveControl == nullptr)
        FocusFirst(form);
    Control *control = form.ActiveControl;
    const KeyOutcome outcome = OfferKey(form, stroke);
    if (outcome.Used)
        return;
    const bool ctrlOrAlt = (stroke.Shift & (kCtrl | kAlt)) != 0;
    if (stroke.KeyCode == kKeyTab && !ctrlOrAlt) {
        if (Control *next = NextTabStop(form, (stroke.Shift & kShift) != 0))
            SetFocus(*next);
    } else if (control != nullptr) {
        LetControlAct(*control, stroke, outcome.CharCode);
    }
}

void EnterText(TextBox &box, const std::string &text) {
    box.SelStart = 0;
    box.SelLength = LengthOf(box);
    InsertText(box, text);
}

} // namespace zrt
