// How each kind of control is bound and copied.
#include "qt/mirror.h"

#include "platform/field_text.h"
#include "qt/inks.h"
#include "qt/widgets.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include <algorithm>
#include <cassert>
#include <map>

namespace zrt {

namespace {

// Texts of a record count bytes of UTF-8, those of Qt count UTF-16 units.
int UnitsBefore(const std::string &text, int bytes) {
    const auto cut = static_cast<std::size_t>(std::clamp(bytes, 0, static_cast<int>(text.size())));
    return static_cast<int>(QString::fromUtf8(text.data(), static_cast<qsizetype>(cut)).size());
}

int BytesBefore(const QString &text, int units) {
    return static_cast<int>(text.left(units).toUtf8().size());
}

// An "&" of the program is a letter.
QString PlainCaption(const std::string &caption) {
    return QString::fromStdString(caption).trimmed().replace(QLatin1Char('&'),
                                                             QStringLiteral("&&"));
}

// The letter that opens a menu is underlined; the keys of an entry stand behind it. Neither makes a
// shortcut of Qt's come first: the keys of the window go to its fields.
QString MenuText(const MenuItem &item) {
    QString text = PlainCaption(item.Caption);
    const qsizetype letter = item.AltLetter == 0 ? -1 : text.indexOf(QLatin1Char(item.AltLetter));
    if (letter >= 0)
        text.insert(letter, QLatin1Char('&'));
    if (!item.Keys.empty())
        text += QLatin1Char('\t') + QString::fromStdString(item.Keys);
    return text;
}

bool NewText(Binding &binding, const std::string &text) {
    if (!binding.Fresh && binding.Text == text)
        return false;
    binding.Text = text;
    return true;
}

bool NewInk(Binding &binding) {
    if (!binding.Fresh && binding.Ink == binding.Record->ForeColor)
        return false;
    binding.Ink = binding.Record->ForeColor;
    return true;
}

void InkText(QWidget &widget, Color color, QPalette::ColorRole text, QPalette::ColorRole paper) {
    QPalette palette; // the application's
    const QColor ink = InkOn(color, palette.color(paper), palette.color(text));
    palette.setColor(QPalette::Active, text, ink);
    palette.setColor(QPalette::Inactive, text, ink);
    widget.setPalette(palette);
}

void MirrorLabel(Binding &binding) {
    const auto &record = static_cast<Label &>(*binding.Record);
    auto &label = static_cast<PlaceLabel &>(*binding.Widget);
    if (NewText(binding, record.Caption))
        label.ShowText(QString::fromStdString(record.Caption));
    if (NewInk(binding))
        label.SetInk(record.ForeColor);
}

void MirrorField(Binding &binding) {
    const auto &record = static_cast<TextBox &>(*binding.Record);
    auto &field = static_cast<EntryField &>(*binding.Widget);
    if (NewInk(binding)) {
        InkText(field, record.ForeColor, QPalette::Text, QPalette::Base);
        QFont font = field.font();
        font.setBold(record.ForeColor == Color::Red);
        field.setFont(font);
    }
    const bool newText = NewText(binding, record.Text);
    if (newText)
        field.setText(QString::fromStdString(record.Text));
    const bool stale = binding.CaretStale && field.hasFocus();
    if (!newText && !stale && binding.SelStart == record.SelStart &&
        binding.SelLength == record.SelLength)
        return;
    binding.SelStart = record.SelStart;
    binding.SelLength = record.SelLength;
    binding.CaretStale = binding.CaretStale && !stale;
    const int start = UnitsBefore(record.Text, record.SelStart);
    const int end = UnitsBefore(record.Text, record.SelStart + record.SelLength);
    if (end > start)
        field.setSelection(start, end - start);
    else
        field.setCursorPosition(start);
}

void MirrorCheckBox(Binding &binding) {
    const auto &record = static_cast<CheckBox &>(*binding.Record);
    auto &box = static_cast<QCheckBox &>(*binding.Widget);
    if (NewText(binding, record.Caption))
        box.setText(PlainCaption(record.Caption));
    if (NewInk(binding))
        InkText(box, record.ForeColor, QPalette::WindowText, QPalette::Window);
    if (box.isChecked() != record.Checked)
        box.setChecked(record.Checked);
}

void MirrorOption(Binding &binding) {
    const auto &record = static_cast<OptionButton &>(*binding.Record);
    auto &button = static_cast<QRadioButton &>(*binding.Widget);
    if (NewText(binding, record.Caption))
        button.setText(PlainCaption(record.Caption));
    if (NewInk(binding))
        InkText(button, record.ForeColor, QPalette::WindowText, QPalette::Window);
    if (button.isChecked() == record.Value)
        return;
    // A group of Qt's own never lets its last button go.
    button.setAutoExclusive(false);
    button.setChecked(record.Value);
    button.setAutoExclusive(true);
}

void MirrorList(Binding &binding) {
    const auto &record = static_cast<ListBox &>(*binding.Record);
    auto &list = static_cast<QListWidget &>(*binding.Widget);
    if (binding.Fresh || binding.Rows != record.Rows) {
        binding.Rows = record.Rows;
        list.clear();
        for (const std::string &row : record.Rows)
            list.addItem(QString::fromStdString(row));
    }
    if (list.currentRow() != record.ListIndex)
        list.setCurrentRow(record.ListIndex);
}

void MirrorButton(Binding &binding) {
    const auto &record = static_cast<Button &>(*binding.Record);
    auto &button = static_cast<QPushButton &>(*binding.Widget);
    if (NewText(binding, record.Caption))
        button.setText(PlainCaption(record.Caption));
    if (button.isDefault() != record.Default)
        button.setDefault(record.Default);
}

void MirrorScrollBar(Binding &binding) {
    const auto &record = static_cast<ScrollBar &>(*binding.Record);
    auto &bar = static_cast<QScrollBar &>(*binding.Widget);
    bar.setRange(record.Min, record.Max);
    bar.setSingleStep(record.SmallChange);
    bar.setPageStep(record.LargeChange);
    bar.setValue(record.Value);
}

void MirrorFrame(Binding &binding) {
    const auto &record = static_cast<Frame &>(*binding.Record);
    if (NewText(binding, record.Caption))
        static_cast<QGroupBox &>(*binding.Widget).setTitle(PlainCaption(record.Caption));
}

bool HasVisibleEntry(const QMenu &menu) {
    const QList<QAction *> entries = menu.actions();
    return std::any_of(entries.begin(), entries.end(), [](const QAction *entry) {
        return entry->isVisible() && !entry->isSeparator();
    });
}

void MirrorMenu(Binding &binding) {
    const auto &record = static_cast<MenuItem &>(*binding.Record);
    QAction &action = *binding.Action;
    if (NewText(binding, record.Caption + '\t' + record.Keys)) {
        const bool bar = record.Caption == "-";
        action.setSeparator(bar);
        action.setText(bar ? QString() : MenuText(record)); // some styles write it
    }
    if (record.Checked && !action.isCheckable())
        action.setCheckable(true);
    if (action.isChecked() != record.Checked)
        action.setChecked(record.Checked);
    const QMenu *menu = action.menu();
    const bool shown = record.Visible && (menu == nullptr ? record.Click || action.isSeparator()
                                                          : HasVisibleEntry(*menu));
    if (action.isVisible() != shown)
        action.setVisible(shown);
    if (action.isEnabled() != record.Enabled)
        action.setEnabled(record.Enabled);
}

void MirrorVisibility(Binding &binding) {
    const Control &record = *binding.Record;
    if (binding.Widget->isHidden() == record.Visible)
        binding.Widget->setVisible(record.Visible);
    if (binding.Fresh || binding.Enabled != record.Enabled) {
        binding.Enabled = record.Enabled;
        binding.Widget->setEnabled(record.Enabled);
    }
}

// What the operator does with a widget goes to its record. Handlers may change records and pump;
// the widgets follow.
void Clicked(Binding &binding) {
    if (Mirroring())
        return;
    FinishFocus();
    ClickControl(*binding.Record);
    MirrorRecords();
}

void OptionClicked(Binding &binding) {
    // A second click on the button that is set is no choice.
    if (static_cast<const OptionButton &>(*binding.Record).Value)
        return;
    Clicked(binding);
}

void RowChosen(Binding &binding, int row) {
    if (Mirroring())
        return;
    FinishFocus();
    auto &list = static_cast<ListBox &>(*binding.Record);
    list.ListIndex = row;
    if (const auto click = list.Click)
        click();
    MirrorRecords();
}

void RowDoubleClicked(Binding &binding) {
    FinishFocus();
    if (const auto click = static_cast<ListBox &>(*binding.Record).DoubleClick)
        click();
    MirrorRecords();
}

void Scrolled(Binding &binding, int value) {
    if (Mirroring())
        return;
    auto &bar = static_cast<ScrollBar &>(*binding.Record);
    bar.Value = value;
    if (const auto change = bar.Change)
        change();
    MirrorRecords();
}

void CaretMoved(Binding &binding) {
    if (!Mirroring() && binding.Widget->hasFocus() && !binding.CaretStale)
        ReadField(binding);
}

void Connect(Binding &binding) {
    Binding *bound = &binding;
    QWidget *widget = binding.Widget;
    switch (binding.Record->Kind) {
    case ControlKind::TextBox: {
        auto *field = static_cast<EntryField *>(widget);
        QObject::connect(field, &QLineEdit::textEdited, field, [bound] { ReadField(*bound); });
        QObject::connect(field, &QLineEdit::cursorPositionChanged, field,
                         [bound] { CaretMoved(*bound); });
        QObject::connect(field, &QLineEdit::selectionChanged, field,
                         [bound] { CaretMoved(*bound); });
        break;
    }
    case ControlKind::OptionButton:
        QObject::connect(static_cast<QRadioButton *>(widget), &QAbstractButton::clicked, widget,
                         [bound] { OptionClicked(*bound); });
        break;
    case ControlKind::CheckBox:
    case ControlKind::Button:
        QObject::connect(static_cast<QAbstractButton *>(widget), &QAbstractButton::clicked, widget,
                         [bound] { Clicked(*bound); });
        break;
    case ControlKind::ListBox: {
        auto *list = static_cast<QListWidget *>(widget);
        QObject::connect(list, &QListWidget::currentRowChanged, list,
                         [bound](int row) { RowChosen(*bound, row); });
        QObject::connect(list, &QListWidget::itemDoubleClicked, list,
                         [bound] { RowDoubleClicked(*bound); });
        break;
    }
    case ControlKind::ScrollBar:
        QObject::connect(static_cast<QScrollBar *>(widget), &QScrollBar::valueChanged, widget,
                         [bound](int value) { Scrolled(*bound, value); });
        break;
    default: break;
    }
}

const NamedControl &NameOfControl(const Form &form, const Control &control) {
    const auto &controls = RegistrationOf(form).Controls;
    const auto found = std::find_if(controls.begin(), controls.end(),
                                    [&](const NamedControl &c) { return c.Record == &control; });
    assert(found != controls.end());
    return *found;
}

// A screen reader reads the caption of what has one, and the purpose after it; a field is named by
// its purpose.
void NameForReaders(QWidget &widget, const Control &control, const std::string &purpose) {
    const QString text = QString::fromStdString(purpose);
    switch (control.Kind) {
    case ControlKind::TextBox:
    case ControlKind::ListBox:
    case ControlKind::ScrollBar: widget.setAccessibleName(text); break;
    default: widget.setAccessibleDescription(text); break;
    }
}

} // namespace

void BindWidget(Form &form, Control &control, QWidget *widget) {
    const NamedControl &named = NameOfControl(form, control);
    widget->setObjectName(QString::fromStdString(named.Name));
    NameForReaders(*widget, control, named.Purpose);
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    if (!control.Focusable)
        widget->setFocusPolicy(Qt::NoFocus);
    Connect(AddBinding(form, control, widget, nullptr));
}

void BindMenus(Form &form, QMenuBar *bar) {
    bar->setNativeMenuBar(false); // keys of the contest must not open menus
    std::map<std::string, QMenu *> menus;
    const auto &controls = RegistrationOf(form).Controls;
    for (const NamedControl &named : controls) {
        if (named.Record->Kind != ControlKind::MenuItem)
            continue;
        auto &item = static_cast<MenuItem &>(*named.Record);
        const bool isMenu =
            item.Parent.empty() ||
            std::any_of(controls.begin(), controls.end(), [&](const NamedControl &c) {
                return c.Record->Kind == ControlKind::MenuItem &&
                       static_cast<const MenuItem &>(*c.Record).Parent == named.Name;
            });
        QMenu *parent = item.Parent.empty() ? nullptr : menus[item.Parent];
        assert(item.Parent.empty() || parent != nullptr);
        QAction *action = nullptr;
        if (isMenu) {
            QMenu *menu = parent == nullptr ? bar->addMenu(QString()) : parent->addMenu(QString());
            menus[named.Name] = menu;
            action = menu->menuAction();
        } else {
            action = parent->addAction(QString());
        }
        action->setObjectName(QString::fromStdString(named.Name));
        action->setWhatsThis(QString::fromStdString(named.Purpose));
        Binding *bound = &AddBinding(form, item, nullptr, action);
        if (!isMenu)
            QObject::connect(action, &QAction::triggered, bar, [bound] { Clicked(*bound); });
    }
}

void ReadField(Binding &binding) {
    const auto &field = static_cast<const EntryField &>(*binding.Widget);
    auto &record = static_cast<TextBox &>(*binding.Record);
    const QString text = field.text();
    const int start = field.hasSelectedText() ? field.selectionStart() : field.cursorPosition();
    const int end = field.hasSelectedText() ? field.selectionEnd() : start;
    binding.Text = text.toStdString();
    binding.SelStart = BytesBefore(text, start);
    binding.SelLength = BytesBefore(text, end) - binding.SelStart;
    const bool changed = TakeEdit(record, binding.Text, binding.SelStart, binding.SelLength);
    if (changed || record.Text != binding.Text)
        MirrorRecords();
}

void MirrorControl(Binding &binding) {
    switch (binding.Record->Kind) {
    case ControlKind::Label: MirrorLabel(binding); break;
    case ControlKind::TextBox: MirrorField(binding); break;
    case ControlKind::CheckBox: MirrorCheckBox(binding); break;
    case ControlKind::OptionButton: MirrorOption(binding); break;
    case ControlKind::ListBox: MirrorList(binding); break;
    case ControlKind::Button: MirrorButton(binding); break;
    case ControlKind::ScrollBar: MirrorScrollBar(binding); break;
    case ControlKind::Frame: MirrorFrame(binding); break;
    case ControlKind::MenuItem: MirrorMenu(binding); break;
    case ControlKind::Picture:
    case ControlKind::Timer: assert(false); break; // no window of ours shows one
    }
    if (binding.Widget != nullptr)
        MirrorVisibility(binding);
    binding.Fresh = false;
}

} // namespace zrt
