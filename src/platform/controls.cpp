#include "platform/controls.h"

#include "platform/characters.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace zrt {

ScreenState Screen;

namespace {

std::vector<NamedForm> &Registry() {
    static std::vector<NamedForm> forms;
    return forms;
}

const NamedForm *FormOf(const Control &control) {
    for (const NamedForm &form : Registry())
        for (const NamedControl &named : form.Controls)
            if (named.Record == &control)
                return &form;
    return nullptr;
}

// Callbacks are copied before the call: a handler may replace itself or reset its window.
void Call(const std::function<void()> &callback) {
    if (const auto copy = callback)
        copy();
}

Button *ButtonWith(const NamedForm &form, bool Button::*role) {
    for (const NamedControl &named : form.Controls) {
        if (named.Record->Kind != ControlKind::Button)
            continue;
        auto &button = static_cast<Button &>(*named.Record);
        if (button.*role && button.Visible && button.Enabled)
            return &button;
    }
    return nullptr;
}

void ChooseOption(OptionButton &chosen) {
    if (const NamedForm *form = FormOf(chosen)) {
        for (const NamedControl &named : form->Controls) {
            if (named.Record->Kind != ControlKind::OptionButton)
                continue;
            auto &option = static_cast<OptionButton &>(*named.Record);
            if (option.Group == chosen.Group)
                option.Value = false;
        }
    }
    chosen.Value = true;
}

} // namespace

void RegisterForm(Form &form, std::string name, std::string purpose,
                  std::vector<NamedControl> controls) {
    std::erase_if(Registry(), [&](const NamedForm &f) { return f.Record == &form; });
    Registry().push_back(
        {std::move(name), &form, std::move(purpose), std::move(controls), form.Width, form.Height});
}

const std::vector<NamedForm> &RegisteredForms() {
    return Registry();
}

const NamedForm *FindForm(const std::string &name) {
    for (const NamedForm &form : Registry())
        if (form.Name == name)
            return &form;
    return nullptr;
}

const NamedForm &RegistrationOf(const Form &form) {
    const auto found = std::find_if(Registry().begin(), Registry().end(),
                                    [&](const NamedForm &f) { return f.Record == &form; });
    assert(found != Registry().end());
    return *found;
}

const NamedControl *FindControl(const NamedForm &form, const std::string &name) {
    for (const NamedControl &control : form.Controls)
        if (control.Name == name)
            return &control;
    return nullptr;
}

bool HasPlace(const Form &form) {
    return form.Placed || form.Left != 0 || form.Top != 0;
}

void ShowForm(Form &form) {
    form.Visible = true;
    Screen.Front = &form;
}

void HideForm(Form &form) {
    form.Visible = false;
    if (Screen.Front == &form)
        Screen.Front = nullptr;
}

Form *ActiveForm() {
    if (!Screen.Modal.empty())
        return Screen.Modal.back();
    if (Screen.Front != nullptr && Screen.Front->Visible)
        return Screen.Front;
    for (const NamedForm &form : Registry())
        if (form.Record->Visible)
            return form.Record;
    return nullptr;
}

bool TakesFocus(const Control &control) {
    switch (control.Kind) {
    case ControlKind::TextBox:
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
    case ControlKind::ListBox:
    case ControlKind::Button:
    case ControlKind::ScrollBar: return control.Visible && control.Enabled && control.Focusable;
    default: return false;
    }
}

void SetFocus(Control &control) {
    const NamedForm *named = FormOf(control);
    assert(named != nullptr);
    Form &form = *named->Record;
    if (form.ActiveControl == &control)
        return;
    Control *left = std::exchange(form.ActiveControl, &control);
    if (left != nullptr)
        Call(left->LostFocus);
    if (form.ActiveControl == &control) // LostFocus may have sent the focus elsewhere
        Call(control.GotFocus);
}

Control *NextTabStop(const Form &form, bool backwards) {
    const std::vector<NamedControl> &controls = RegistrationOf(form).Controls;
    const std::size_t count = controls.size();
    std::size_t place = backwards ? 0 : count - 1; // before the first control, or behind the last
    for (std::size_t i = 0; i < count; ++i)
        if (controls[i].Record == form.ActiveControl)
            place = i;
    const std::size_t step = backwards ? count - 1 : 1;
    for (std::size_t i = 0; i < count; ++i) {
        place = (place + step) % count;
        if (TakesFocus(*controls[place].Record))
            return controls[place].Record;
    }
    return nullptr;
}

void ClickControl(Control &control) {
    if (!control.Enabled)
        return;
    switch (control.Kind) {
    case ControlKind::Button: Call(static_cast<Button &>(control).Click); break;
    case ControlKind::Label: Call(static_cast<Label &>(control).Click); break;
    case ControlKind::MenuItem: Call(static_cast<MenuItem &>(control).Click); break;
    case ControlKind::CheckBox: {
        auto &box = static_cast<CheckBox &>(control);
        box.Checked = !box.Checked;
        Call(box.Click);
        break;
    }
    case ControlKind::OptionButton: {
        auto &option = static_cast<OptionButton &>(control);
        ChooseOption(option);
        Call(option.Click);
        break;
    }
    default: break;
    }
}

void CloseForm(Form &form) {
    if (form.CloseBox)
        Call(form.CloseBox);
    else
        HideForm(form);
}

int CharacterTaken(const TextBox &box, int character) {
    const int plain = PlainCharacter(character);
    return box.Takes == nullptr || box.Takes(plain) ? plain : 0;
}

KeyOutcome OfferKey(Form &form, const KeyStroke &stroke) {
    const NamedForm &named = RegistrationOf(form);
    const KeyOutcome used{true, 0};
    if (stroke.KeyCode == kKeyEsc) {
        if (Button *button = ButtonWith(named, &Button::Cancel)) {
            Call(button->Click);
            return used;
        }
    }
    Control *control = form.ActiveControl;
    if (stroke.KeyCode == kKeyEnter && control != nullptr && control->Kind == ControlKind::Button) {
        ClickControl(*control);
        return used;
    }
    if (stroke.KeyCode == kKeyEnter) {
        if (Button *button = ButtonWith(named, &Button::Default)) {
            Call(button->Click);
            return used;
        }
    }
    if (control == nullptr || control->Kind != ControlKind::TextBox)
        return {false, stroke.CharCode};

    auto &box = static_cast<TextBox &>(*control);
    if (const auto keyDown = box.KeyDown) {
        int keyCode = stroke.KeyCode;
        keyDown(keyCode, stroke.Shift);
        if (keyCode == kKeyNone && stroke.KeyCode != kKeyNone)
            return used;
    }
    int charCode = stroke.CharCode;
    if (charCode != 0) {
        if (const auto keyPress = box.KeyPress)
            keyPress(charCode);
        if (charCode != 0)
            charCode = CharacterTaken(box, charCode);
        if (charCode == 0)
            return used;
    }
    return {false, charCode};
}

} // namespace zrt
