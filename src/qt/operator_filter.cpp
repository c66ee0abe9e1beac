#include "qt/operator_filter.h"

#include "platform/events.h"
#include "qt/box_keys.h"
#include "qt/key_codes.h"
#include "qt/mirror.h"
#include "qt/widgets.h"

#include <QApplication>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QWindow>

#include <algorithm>
#include <bitset>
#include <deque>
#include <memory>
#include <utility>

namespace zrt {

namespace {

constexpr int kKeyCodes = 256;

struct HeldEvent {
    QPointer<QObject> Receiver;
    std::unique_ptr<QEvent> Event;
};

struct OperatorState {
    std::function<void()> QuitAsked;
    std::bitset<kKeyCodes> Down;
    std::bitset<kKeyCodes> Hit;     // pressed since last asked
    int Draining = 0;               // KeyPressed is looking at the queue of the window system
    std::deque<HeldEvent> Held;     // while there are some, a posted event is to serve the first
    const QEvent *Served = nullptr; // was held; its key was noted then
};
OperatorState Operator;

void NoteKey(const QKeyEvent &event) {
    const int keyCode = StrokeOf(event).KeyCode;
    if (keyCode <= kKeyNone || keyCode >= kKeyCodes)
        return;
    const auto key = static_cast<std::size_t>(keyCode);
    if (event.type() == QEvent::KeyPress) {
        Operator.Down.set(key);
        Operator.Hit.set(key);
    } else if (!event.isAutoRepeat()) {
        Operator.Down.reset(key);
    }
}

// A key arrives at the native window, then at the widget that has the keyboard, then at those that
// it travels through. It is noted once: at the window, or, when it was sent to a widget directly,
// at that widget.
bool IsFirstStation(const QObject &object, const QEvent &event, bool isTarget) {
    return object.isWindowType() || (isTarget && !event.spontaneous());
}

bool IsOperatorInput(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::Close: return true;
    default: return false;
    }
}

// One a turn: its handler may wait, and then the others are served inside that wait.
void ServeHeldEvent() {
    if (Operator.Held.empty() || Operator.Draining > 0)
        return;
    const HeldEvent held = std::move(Operator.Held.front());
    Operator.Held.pop_front();
    if (!Operator.Held.empty())
        Post(ServeHeldEvent);
    if (held.Receiver.isNull())
        return;
    Operator.Served = held.Event.get();
    QCoreApplication::sendEvent(held.Receiver, held.Event.get());
    Operator.Served = nullptr;
}

// What comes in behind held events waits with them, or it would overtake them.
bool IsToWait(const QObject &object, const QEvent &event) {
    if ((Operator.Draining == 0 && Operator.Held.empty()) || &event == Operator.Served)
        return false;
    if (event.type() == QEvent::InputMethod) // goes past the window
        return object.isWidgetType();
    return object.isWindowType() && IsOperatorInput(event.type());
}

bool IsKeyTarget(const QObject *object) {
    const QWidget *focus = QApplication::focusWidget();
    return object == (focus != nullptr ? focus : QApplication::activeWindow());
}

Form *FormUnder(QObject *object) {
    const auto *widget = qobject_cast<QWidget *>(object);
    return widget == nullptr ? nullptr : FormOfWindow(widget->window());
}

void MoveFocus(Form &form, bool backwards) {
    if (Control *next = NextTabStop(form, backwards))
        SetFocus(*next);
    MirrorRecords();
}

// The Menu key opens the menu bar, Alt and its letter a menu: the Alt key alone and F10 belong to
// the contest.
bool OpensMenu(const QKeyEvent &event, const QAction &menu) {
    if (!menu.isVisible() || !menu.isEnabled())
        return false;
    return event.key() == Qt::Key_Menu ||
           (event.modifiers() == Qt::AltModifier &&
            QKeySequence::mnemonic(menu.text()) == QKeySequence(Qt::ALT | Qt::Key(event.key())));
}

bool OpenMenu(const QKeyEvent &event, const QWidget &window) {
    const auto *frame = qobject_cast<const QMainWindow *>(&window);
    if (frame == nullptr)
        return false;
    const QList<QAction *> menus = frame->menuBar()->actions();
    const auto found = std::find_if(menus.begin(), menus.end(), [&event](const QAction *menu) {
        return OpensMenu(event, *menu);
    });
    if (found == menus.end())
        return false;
    frame->menuBar()->setActiveAction(*found);
    return true;
}

// The keys of a window go to the control that has the keyboard by its record, wherever in the
// window they arrive.
QWidget &Receiver(QWidget &target) {
    if (BindingOf(&target) != nullptr)
        return target;
    MirrorRecords();
    QWidget *focus = target.window()->focusWidget();
    return focus != nullptr && BindingOf(focus) != nullptr ? *focus : target;
}

void EditField(Binding &binding, QKeyEvent &event, const KeyStroke &stroke, int charCode) {
    auto &field = static_cast<EntryField &>(*binding.Widget);
    if (charCode != 0) {
        const auto character = static_cast<char32_t>(charCode);
        field.insert(QString::fromUcs4(&character, 1));
    } else if (stroke.CharCode == 0 && (stroke.Shift & kAlt) == 0) {
        field.EditItself(&event);
    }
    ReadField(binding);
}

// True if nothing is left for Qt to do with the key.
bool TakeKey(Form &form, QWidget &target, QKeyEvent &event) {
    FinishFocus();
    Binding *binding = BindingOf(&Receiver(target));
    const bool isField = binding != nullptr && binding->Record->Kind == ControlKind::TextBox;
    const KeyStroke stroke = StrokeOf(event);
    if (stroke.KeyCode == kKeyNone)
        return OpenMenu(event, *target.window()) || isField;
    NoteTyping();
    // The event is Qt's again only when the handlers, which may pump, have returned; the target
    // lives as long as the views.
    const KeyOutcome outcome = OfferKey(form, stroke);
    MirrorRecords();
    if (outcome.Used || OpenMenu(event, *target.window()))
        return true;
    if (stroke.KeyCode == kKeyTab && (stroke.Shift & (kCtrl | kAlt)) == 0) {
        MoveFocus(form, (stroke.Shift & kShift) != 0);
        return true;
    }
    if (!isField)
        return false;
    if (form.Visible)
        EditField(*binding, event, stroke, outcome.CharCode);
    return true;
}

// Not every platform keeps the keyboard from a window that does not want it.
bool WantsKeyboard(const QWidget &window) {
    return !window.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus);
}

// For a key that came to such a window on its way to the one in front.
bool TakeKeyInFront(QKeyEvent &event) {
    Form *front = ActiveForm();
    QWidget *target = front == nullptr ? nullptr : ViewOf(*front)->focusWidget();
    if (target != nullptr)
        (void)TakeKey(*front, *target, event);
    return true;
}

// What a key is pressed in, if that is a message box.
bool IsInBox(const QObject &object) {
    const auto *widget = qobject_cast<const QWidget *>(&object);
    return widget != nullptr && qobject_cast<const QMessageBox *>(widget->window()) != nullptr;
}

// A focus that comes with the window or goes to a menu is no choice of the operator's.
bool IsChoice(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

class OperatorFilter : public QObject {
  public:
    using QObject::QObject;

    bool eventFilter(QObject *object, QEvent *event) override {
        if (IsToWait(*object, *event))
            return Hold(*object, *event);
        switch (event->type()) {
        case QEvent::ShortcutOverride: return TakeOverride(*object, *event);
        case QEvent::KeyPress: return Key(*object, static_cast<QKeyEvent &>(*event));
        case QEvent::KeyRelease: Note(*object, static_cast<QKeyEvent &>(*event)); return false;
        case QEvent::InputMethod: return Compose(*object, static_cast<QInputMethodEvent &>(*event));
        case QEvent::FocusIn: FocusIn(*object, static_cast<QFocusEvent &>(*event)); return false;
        case QEvent::FocusOut: FocusOut(*object); return false;
        case QEvent::WindowActivate: Activated(*object); return false;
        case QEvent::Move:
        case QEvent::Resize: Placed(*object, *event); return false;
        case QEvent::Close: return Closed(*object, *event);
        case QEvent::Quit: return Quit(*object, *event);
        case QEvent::ApplicationPaletteChange: ColorsChanged(); return false;
        case QEvent::ApplicationStateChange:
            if (static_cast<QApplicationStateChangeEvent &>(*event).applicationState() !=
                Qt::ApplicationActive)
                Operator.Down.reset(); // their releases go to another program
            return false;
        default: return false;
        }
    }

  private:
    static void Note(const QObject &object, const QKeyEvent &event) {
        if (&event != Operator.Served && IsFirstStation(object, event, IsKeyTarget(&object)))
            NoteKey(event);
    }

    static bool Hold(QObject &object, const QEvent &event) {
        if (event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease)
            NoteKey(static_cast<const QKeyEvent &>(event));
        Operator.Held.push_back({&object, std::unique_ptr<QEvent>(event.clone())});
        return true;
    }

    static bool TakeOverride(QObject &object, QEvent &event) {
        // No shortcut comes before the handlers of a field, and none answers a box while the
        // operator types.
        const bool taken =
            IsInBox(object) ? IsTyping() : IsKeyTarget(&object) && FormUnder(&object) != nullptr;
        if (taken)
            event.accept();
        return taken;
    }

    static bool Key(QObject &object, QKeyEvent &event) {
        Note(object, event);
        if (IsInBox(object))
            return !BoxTakesKey(event);
        if (!IsKeyTarget(&object))
            return false;
        Form *form = FormUnder(&object);
        if (form == nullptr)
            return false;
        auto &widget = static_cast<QWidget &>(object);
        const bool used =
            WantsKeyboard(*widget.window()) ? TakeKey(*form, widget, event) : TakeKeyInFront(event);
        if (used)
            event.accept();
        return used;
    }

    // A character of several strokes, such as a dead key and the blank for an apostrophe, comes as
    // a text, to every field that can edit. The handlers get it as the stroke of a key.
    static bool Compose(QObject &object, QInputMethodEvent &event) {
        Form *form = FormUnder(&object);
        if (form == nullptr || BindingOf(static_cast<QWidget *>(&object)) == nullptr)
            return false;
        event.accept();
        for (const char32_t character : event.commitString().toStdU32String()) {
            QKeyEvent stroke(QEvent::KeyPress, static_cast<int>(QChar::toUpper(character)),
                             Qt::NoModifier, QString::fromUcs4(&character, 1));
            (void)TakeKey(*form, static_cast<QWidget &>(object), stroke);
        }
        return true;
    }

    static void FocusIn(QObject &object, const QFocusEvent &event) {
        auto *widget = qobject_cast<QWidget *>(&object);
        Binding *binding = widget == nullptr ? nullptr : BindingOf(widget);
        if (binding != nullptr && !Mirroring() && IsChoice(event.reason()))
            FocusByOperator(*binding);
    }

    static void FocusOut(QObject &object) {
        auto *widget = qobject_cast<QWidget *>(&object);
        if (Binding *binding = widget == nullptr ? nullptr : BindingOf(widget))
            binding->CaretStale = true;
    }

    static void Activated(const QObject &object) {
        const auto *window = qobject_cast<const QWidget *>(&object);
        Form *form = FormOfWindow(window);
        if (form != nullptr && !WantsKeyboard(*window)) {
            ActivateAgain();
            return;
        }
        if (form != nullptr && !Mirroring() && Screen.Modal.empty())
            Screen.Front = form;
    }

    static void Placed(const QObject &object, const QEvent &event) {
        const auto *window = qobject_cast<const QWidget *>(&object);
        Form *form = window == nullptr ? nullptr : FormOfWindow(window);
        if (form != nullptr && !Mirroring())
            ReadPlacement(*form, *window, event.spontaneous());
    }

    static bool Closed(const QObject &object, QEvent &event) {
        Form *form = FormOfWindow(qobject_cast<const QWidget *>(&object));
        if (form == nullptr || Mirroring())
            return false;
        event.ignore(); // the record decides whether the window goes
        FinishFocus();
        CloseForm(*form);
        MirrorRecords();
        return true;
    }

    static bool Quit(const QObject &object, QEvent &event) {
        if (&object != qApp)
            return false;
        event.ignore();
        if (Operator.QuitAsked)
            Post(Operator.QuitAsked);
        return true;
    }
};

} // namespace

void InstallOperatorFilter(std::function<void()> quitAsked) {
    Operator = {};
    ForgetTyping();
    Operator.QuitAsked = std::move(quitAsked);
    static QPointer<OperatorFilter> filter;
    delete filter;
    filter = new OperatorFilter(qApp);
    qApp->installEventFilter(filter);
}

bool KeyPressed(int keyCode) {
    if (keyCode <= kKeyNone || keyCode >= kKeyCodes)
        return false;
    ++Operator.Draining;
    QCoreApplication::processEvents();
    --Operator.Draining;
    if (!Operator.Held.empty())
        Post(ServeHeldEvent);
    const auto key = static_cast<std::size_t>(keyCode);
    const bool pressed = Operator.Down.test(key) || Operator.Hit.test(key);
    Operator.Hit.reset(key);
    return pressed;
}

} // namespace zrt
