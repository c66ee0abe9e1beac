#include "headless/window_probe.h"

#include "headless/script.h"

namespace zrt {

namespace {

const char *AsText(Color color) {
    switch (color) {
    case Color::Black: return "Black";
    case Color::Blue: return "Blue";
    case Color::Red: return "Red";
    case Color::Magenta: return "Magenta";
    case Color::LightBlue: return "LightBlue";
    case Color::LightRed: return "LightRed";
    case Color::White: return "White";
    }
    return "?";
}

const char *AsText(bool flag) {
    return flag ? "True" : "False";
}

std::string AsText(int number) {
    return std::to_string(number);
}

const std::string &AsText(const std::string &text) {
    return text;
}

std::string AsText(const std::vector<std::string> &rows) {
    std::string text;
    for (const std::string &row : rows)
        text += (&row == &rows.front() ? "" : "|") + row;
    return text;
}

std::string AsText(const std::vector<PaintedText> &painted) {
    std::string text;
    for (const PaintedText &part : painted)
        text += (&part == &painted.front() ? "" : "|") + part.Text;
    return text;
}

template <class Record, auto Field> std::string Get(const Control &control) {
    return AsText(static_cast<const Record &>(control).*Field);
}

template <auto Field> std::string GetOfForm(const Form &form) {
    return AsText(form.*Field);
}

struct PropertyRow {
    ControlKind Kind;
    std::string_view Name;
    std::string (*Get)(const Control &);
};

// In the order in which a control is shown.
constexpr PropertyRow kProperties[] = {
    {ControlKind::Label, "Caption", Get<Label, &Label::Caption>},
    {ControlKind::Frame, "Caption", Get<Frame, &Frame::Caption>},
    {ControlKind::TextBox, "Text", Get<TextBox, &TextBox::Text>},
    {ControlKind::TextBox, "SelStart", Get<TextBox, &TextBox::SelStart>},
    {ControlKind::TextBox, "SelLength", Get<TextBox, &TextBox::SelLength>},
    {ControlKind::CheckBox, "Caption", Get<CheckBox, &CheckBox::Caption>},
    {ControlKind::CheckBox, "Checked", Get<CheckBox, &CheckBox::Checked>},
    {ControlKind::OptionButton, "Caption", Get<OptionButton, &OptionButton::Caption>},
    {ControlKind::OptionButton, "Value", Get<OptionButton, &OptionButton::Value>},
    {ControlKind::ListBox, "ListIndex", Get<ListBox, &ListBox::ListIndex>},
    {ControlKind::ListBox, "Rows", Get<ListBox, &ListBox::Rows>},
    {ControlKind::Button, "Caption", Get<Button, &Button::Caption>},
    {ControlKind::ScrollBar, "Min", Get<ScrollBar, &ScrollBar::Min>},
    {ControlKind::ScrollBar, "Max", Get<ScrollBar, &ScrollBar::Max>},
    {ControlKind::ScrollBar, "Value", Get<ScrollBar, &ScrollBar::Value>},
    {ControlKind::MenuItem, "Caption", Get<MenuItem, &MenuItem::Caption>},
    {ControlKind::MenuItem, "Checked", Get<MenuItem, &MenuItem::Checked>},
    {ControlKind::Timer, "Interval", Get<Timer, &Timer::Interval>},
    {ControlKind::Picture, "Painted", Get<Picture, &Picture::Painted>},
};

struct CommonRow {
    std::string_view Name;
    std::string (*Get)(const Control &);
    std::string_view Usual; // not shown when it is so
};

constexpr CommonRow kCommon[] = {
    {"Visible", Get<Control, &Control::Visible>, "True"},
    {"Enabled", Get<Control, &Control::Enabled>, "True"},
    {"ForeColor", Get<Control, &Control::ForeColor>, "Black"},
};

constexpr struct {
    std::string_view Name;
    std::string (*Get)(const Form &);
} kFormProperties[] = {
    {"Caption", GetOfForm<&Form::Caption>}, {"Visible", GetOfForm<&Form::Visible>},
    {"Left", GetOfForm<&Form::Left>},       {"Top", GetOfForm<&Form::Top>},
    {"Width", GetOfForm<&Form::Width>},     {"Height", GetOfForm<&Form::Height>},
};

const char *NameOfKind(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label: return "Label";
    case ControlKind::TextBox: return "TextBox";
    case ControlKind::CheckBox: return "CheckBox";
    case ControlKind::OptionButton: return "OptionButton";
    case ControlKind::ListBox: return "ListBox";
    case ControlKind::Button: return "Button";
    case ControlKind::ScrollBar: return "ScrollBar";
    case ControlKind::MenuItem: return "MenuItem";
    case ControlKind::Timer: return "Timer";
    case ControlKind::Picture: return "Picture";
    case ControlKind::Frame: return "Frame";
    }
    return "?";
}

const NamedForm *ActiveNamedForm() {
    const Form *form = ActiveForm();
    return form != nullptr ? &RegistrationOf(*form) : nullptr;
}

// "FORM", "FORM.CONTROL" or "CONTROL".
Target FindWindow(const std::string &name) {
    if (const NamedForm *form = FindForm(name))
        return {form, nullptr, {}};
    const auto dot = name.find('.');
    const NamedForm *form =
        dot == std::string::npos ? ActiveNamedForm() : FindForm(name.substr(0, dot));
    if (form == nullptr)
        return {};
    const NamedControl *control =
        FindControl(*form, dot == std::string::npos ? name : name.substr(dot + 1));
    return control != nullptr ? Target{form, control, {}} : Target{};
}

} // namespace

Target FindTarget(const std::string &name, bool withProperty) {
    if (!withProperty)
        return FindWindow(name);
    const auto dot = name.rfind('.');
    if (dot == std::string::npos)
        return {};
    Target target = FindWindow(name.substr(0, dot));
    target.Property = name.substr(dot + 1);
    return target;
}

std::string NameOfTarget(const Target &target) {
    std::string name = target.Form->Name;
    if (target.Control != nullptr)
        name += "." + target.Control->Name;
    if (!target.Property.empty())
        name += "." + target.Property;
    return name;
}

std::optional<std::string> PropertyText(const Target &target) {
    if (target.Control == nullptr) {
        for (const auto &row : kFormProperties)
            if (row.Name == target.Property)
                return row.Get(*target.Form->Record);
        return std::nullopt;
    }
    const Control &control = *target.Control->Record;
    for (const PropertyRow &row : kProperties)
        if (row.Kind == control.Kind && row.Name == target.Property)
            return row.Get(control);
    for (const CommonRow &row : kCommon)
        if (row.Name == target.Property)
            return row.Get(control);
    return std::nullopt;
}

std::string ShowControl(const NamedControl &control) {
    std::string line = control.Name;
    for (const PropertyRow &row : kProperties)
        if (row.Kind == control.Record->Kind)
            line += " " + std::string(row.Name) + "=" + Quoted(row.Get(*control.Record));
    for (const CommonRow &row : kCommon)
        if (const std::string text = row.Get(*control.Record); text != row.Usual)
            line += " " + std::string(row.Name) + "=" + Quoted(text);
    return line + "\n";
}

std::string ShowForm(const NamedForm &form) {
    const Form &record = *form.Record;
    std::string text = form.Name + " Caption=" + Quoted(record.Caption) + " Visible=\"" +
                       AsText(record.Visible) + "\"\n";
    for (const NamedControl &control : form.Controls) {
        const ControlKind kind = control.Record->Kind;
        if (control.Record->Visible && kind != ControlKind::MenuItem && kind != ControlKind::Timer)
            text += "  " + ShowControl(control);
    }
    return text;
}

std::string ListForms() {
    std::string text;
    for (const NamedForm &form : RegisteredForms()) {
        text += form.Name + ": " + form.Purpose + "\n";
        for (const NamedControl &control : form.Controls)
            text += "  " + control.Name + " (" + NameOfKind(control.Record->Kind) +
                    "): " + control.Purpose + "\n";
    }
    return text;
}

} // namespace zrt
