// Binds the records of the windows to widgets and copies between them. The views bind, views.h
// copies records to widgets, operator_filter.cpp brings what the operator does.
#pragma once

#include "platform/controls.h"

#include <QSize>

#include <functional>
#include <string>
#include <vector>

class QAction;
class QMenuBar;
class QWidget;

namespace zrt {

class EntryField;

// One record and its widget (or menu entry), and what the widget shows now where reading it back
// would be slow or not exact.
struct Binding {
    Form *Owner = nullptr;
    Control *Record = nullptr;
    QWidget *Widget = nullptr;
    QAction *Action = nullptr;
    bool Fresh = true; // nothing has been shown yet
    bool Visible = true;
    bool Enabled = true;
    Color Ink = Color::Black;
    std::string Text;
    std::vector<std::string> Rows;
    int SelStart = 0;
    int SelLength = 0;
    bool CaretStale = false; // Qt drops the selection of a field that loses the keyboard
};

// Each record is bound once, in any order; the window of a form comes first.
void BindWindow(Form &form, QWidget *window);
// The size of the window while its record has none; without it the window takes what its layout
// needs.
void SizeWindow(const Form &form, QSize size);
void BindWidget(Form &form, Control &control, QWidget *widget);
// Makes the menus of all MenuItem records of the form.
void BindMenus(Form &form, QMenuBar *bar);
// Runs after the records of the form were copied: for what depends on several records.
void WhenMirrored(Form &form, std::function<void()> adjust);
// Sets the order of the Tab key; asserts that every control of the form is bound.
void FinishBinding(Form &form);
void ForgetBindings();

Form *FormOfWindow(const QWidget *window); // nullptr for a window that is not of a record
Binding *BindingOf(const QWidget *widget);
// True while records are copied to widgets: what the widgets report then is not the operator's.
bool Mirroring();

// The next copying brings the focus window to the front again, as after a message box.
void ActivateAgain();
// The next copying looks at all colours again.
void ColorsChanged();
// While one of these lives, a message box or a file dialog is open.
struct BoxOpen {
    BoxOpen();
    ~BoxOpen();
    BoxOpen(const BoxOpen &) = delete;
    BoxOpen &operator=(const BoxOpen &) = delete;
};

// Copies a field's text and caret to its record, with Change if the text is another.
void ReadField(Binding &binding);
// The operator gave a control the keyboard, by mouse. Its handlers run on the next turn, since
// they may pump; before any other action of the operator at the latest.
void FocusByOperator(Binding &binding);
void FinishFocus();
// Copies to the widgets what has changed in the records. The pump calls it before it waits; it is
// cheap when nothing changed, and never raises an edit event.
void MirrorRecords();

// The window of a form.
QWidget *ViewOf(const Form &form);

// Makes a binding's place in its form; the procedures that bind a kind of control call it.
Binding &AddBinding(Form &form, Control &control, QWidget *widget, QAction *action);
// Copies what has changed in the record to its widget or menu entry (mirror_kinds.cpp).
void MirrorControl(Binding &binding);
// Place and size of a window, as the operator has set them. `bySystem`: the window system tells of
// them, which may be no more than its answer to the program.
void ReadPlacement(Form &form, const QWidget &window, bool bySystem);

} // namespace zrt
