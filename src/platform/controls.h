// The records that windows are made of. The logic writes records and nothing else; the views (qt/)
// and the scenario runner (headless/) show them, and report what the operator does by the
// procedures below and the records' callbacks.
#pragma once

#include "platform/keys.h"

#include <functional>
#include <string>
#include <vector>

namespace zrt {

// Black is the colour of ordinary text; a dark theme shows it light.
enum class Color { Black, Blue, Red, Magenta, LightBlue, LightRed, White };

enum class ControlKind {
    Label,
    TextBox,
    CheckBox,
    OptionButton,
    ListBox,
    Button,
    ScrollBar,
    MenuItem,
    Timer,
    Picture,
    Frame
};

struct Control {
    explicit Control(ControlKind kind) : Kind(kind) {}
    ControlKind Kind;
    bool Visible = true;
    bool Enabled = true;
    bool Focusable = true; // false: the mouse works it, and the keyboard stays where it is
    Color ForeColor = Color::Black;
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;
};

struct Label : Control {
    Label() : Control(ControlKind::Label) {}
    std::string Caption;
    std::function<void()> Click;
};

// A box with a caption around other controls.
struct Frame : Control {
    Frame() : Control(ControlKind::Frame) {}
    std::string Caption;
};

struct TextBox : Control {
    TextBox() : Control(ControlKind::TextBox) {}
    std::string Text; // UTF-8; positions count bytes, the fields of the program hold ASCII
    int SelStart = 0;
    int SelLength = 0;
    int Columns = 0; // characters that it is laid out for; 0 leaves it to the view
    // Whether it takes a character (Unicode; any blank is ' '); null takes all. See CharacterTaken.
    bool (*Takes)(int character) = nullptr;
    // A handler that sets the key or the character to 0 has used it up: the field does not see it.
    std::function<void(int &keyCode, int shift)> KeyDown;
    std::function<void(int &charCode)> KeyPress;
    std::function<void()> Change; // by the operator only, never by the program
};

struct CheckBox : Control {
    CheckBox() : Control(ControlKind::CheckBox) {}
    std::string Caption;
    bool Checked = false;
    std::function<void()> Click; // after the operator's change
};

// Option buttons of one Group on one form: choosing one clears the others.
struct OptionButton : Control {
    OptionButton() : Control(ControlKind::OptionButton) {}
    std::string Caption;
    bool Value = false;
    int Group = 0;
    std::function<void()> Click;
};

struct ListBox : Control {
    ListBox() : Control(ControlKind::ListBox) {}
    std::vector<std::string> Rows;
    int ListIndex = -1; // -1 for none
    std::function<void()> Click;
    std::function<void()> DoubleClick;
};

struct Button : Control {
    Button() : Control(ControlKind::Button) {}
    std::string Caption;
    bool Default = false; // Enter presses it
    bool Cancel = false;  // Esc presses it
    std::function<void()> Click;
};

struct ScrollBar : Control {
    ScrollBar() : Control(ControlKind::ScrollBar) {}
    int Min = 0;
    int Max = 0;
    int Value = 0;
    int SmallChange = 1;
    int LargeChange = 10;
    std::function<void()> Change; // by the operator only
};

// A menu is a MenuItem with no Click; its entries name it as their Parent. An empty Parent puts it
// into the menu bar.
struct MenuItem : Control {
    MenuItem() : Control(ControlKind::MenuItem) {}
    std::string Caption; // "-" is a separator
    std::string Parent;
    char AltLetter = 0; // of its caption: with Alt it opens the menu
    std::string Keys;   // do the same as the entry; only shown
    bool Checked = false;
    std::function<void()> Click;
};

// Started and stopped by StartTimer and StopTimer of platform/events.
struct Timer : Control {
    Timer() : Control(ControlKind::Timer) { Enabled = false; }
    int Interval = 0; // milliseconds
    std::function<void()> Tick;
};

struct PaintedText {
    int X = 0;
    int Y = 0;
    std::string Text;
    Color ForeColor = Color::Black;
};

struct Picture : Control {
    Picture() : Control(ControlKind::Picture) {}
    std::vector<PaintedText> Painted;
};

struct Form {
    std::string Caption;
    bool Visible = false;
    int Left = 0, Top = 0;     // twips, 15 to the pixel at 96 dpi
    bool Placed = false;       // they are a place even if both are 0
    int Width = 0, Height = 0; // 0 asks for the default size
    bool HasCloseBox = true;
    Control *ActiveControl = nullptr; // has the keyboard while the form is active
    std::function<void()> CloseBox;   // the operator closes the window; without it, it hides
};

struct NamedControl {
    std::string Name;
    Control *Record;
    std::string Purpose; // what a screen reader and the scenario runner's list say
};

struct NamedForm {
    std::string Name;
    Form *Record;
    std::string Purpose;
    std::vector<NamedControl> Controls;      // in the order of the Tab key; menus in menu order
    int DefaultWidth = 0, DefaultHeight = 0; // as it was registered; 0 is left to its view
};

struct ScreenState {
    bool BusyPointer = false;
    std::vector<Form *> Modal; // the modal forms that are open, the active one last
    Form *Front = nullptr;     // the form that is active when no modal one is open
};
extern ScreenState Screen;

// Each window registers itself once, under its name.
void RegisterForm(Form &form, std::string name, std::string purpose,
                  std::vector<NamedControl> controls);
const std::vector<NamedForm> &RegisteredForms();
const NamedForm *FindForm(const std::string &name);
const NamedForm &RegistrationOf(const Form &form);
const NamedControl *FindControl(const NamedForm &form, const std::string &name);

// Whether anybody has placed the form's window: the operator, or a row of the settings.
bool HasPlace(const Form &form);

void ShowForm(Form &form); // brings it to the front
void HideForm(Form &form);
Form *ActiveForm(); // nullptr while no window shows

// Whether the operator can go to the control: of a kind with a focus, visible and enabled, and not
// left to the mouse.
bool TakesFocus(const Control &control);
// Gives a control the focus inside its form, with LostFocus and GotFocus.
void SetFocus(Control &control);
// The control that Tab (or Shift+Tab) goes to from the form's active one; nullptr for none.
Control *NextTabStop(const Form &form, bool backwards);

// What the operator does, told by the views:
void ClickControl(Control &control); // a button, an option, a check box, a label, a menu entry
void CloseForm(Form &form);          // its close box

// The character as the field takes it: see PlainCharacter; 0 for one that the field does not take.
int CharacterTaken(const TextBox &box, int character);

// What became of a key that was offered to a form.
struct KeyOutcome {
    bool Used = false; // nothing is left for the field to do
    int CharCode = 0;  // the character that the field is to insert, 0 for none
};
// Hands a key to the form's active control: Esc and Enter to the Cancel and Default buttons, then
// KeyDown and KeyPress of a text field. What the field does by itself is left to the caller; a
// character that the field does not take is used up.
KeyOutcome OfferKey(Form &form, const KeyStroke &stroke);

} // namespace zrt
