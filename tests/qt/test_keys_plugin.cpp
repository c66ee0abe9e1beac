#include "test_keys_plugin.h"

#include "qt/key_codes.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPixmap>
#include <QSocketNotifier>
#include <QWidget>
#include <QWindow>

#include <array>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

QT_BEGIN_NAMESPACE
// Hands a key to the window system's own queue, as QTest does.
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow *window, QEvent::Type t, int k,
                                    Qt::KeyboardModifiers mods, const QString &text, bool autorep,
                                    ushort count);
QT_END_NAMESPACE

namespace {

constexpr int kRetryMs = 5;
constexpr int kMostTurnsForKey = 20;

struct KeyName {
    const char *Name;
    int Key;
};

constexpr std::array kKeyNames = {
    KeyName{"Enter", Qt::Key_Return},      KeyName{"Esc", Qt::Key_Escape},
    KeyName{"Tab", Qt::Key_Tab},           KeyName{"Backspace", Qt::Key_Backspace},
    KeyName{"Delete", Qt::Key_Delete},     KeyName{"Insert", Qt::Key_Insert},
    KeyName{"Space", Qt::Key_Space},       KeyName{"Home", Qt::Key_Home},
    KeyName{"End", Qt::Key_End},           KeyName{"Left", Qt::Key_Left},
    KeyName{"Right", Qt::Key_Right},       KeyName{"Up", Qt::Key_Up},
    KeyName{"Down", Qt::Key_Down},         KeyName{"PageUp", Qt::Key_PageUp},
    KeyName{"PageDown", Qt::Key_PageDown}, KeyName{"CapsLock", Qt::Key_CapsLock},
    KeyName{"Menu", Qt::Key_Menu},         KeyName{"Alt", Qt::Key_Alt},
};

// The names of a form's controls may come again in another window: the active window comes first.
template <class Object> Object *FindNamed(const QString &name) {
    QWidgetList windows = QApplication::topLevelWidgets();
    if (QWidget *active = QApplication::activeWindow())
        windows.prepend(active);
    for (QWidget *window : std::as_const(windows)) {
        if (window->objectName() == name)
            if (auto *itself = qobject_cast<Object *>(window))
                return itself;
        if (auto *found = window->findChild<Object *>(name))
            return found;
    }
    return nullptr;
}

QString ShownText(QWidget *widget) {
    if (const auto *edit = qobject_cast<QLineEdit *>(widget))
        return edit->text();
    if (const auto *label = qobject_cast<QLabel *>(widget))
        return label->text().isEmpty() ? label->accessibleName() : label->text();
    if (const auto *button = qobject_cast<QAbstractButton *>(widget))
        return button->text();
    if (const auto *list = qobject_cast<QListWidget *>(widget))
        return list->currentItem() == nullptr ? QString() : list->currentItem()->text();
    return widget->windowTitle();
}

} // namespace

TestKeys::TestKeys(const QString &inFifo, const QString &outFifo)
    // Both ends are opened for both ways: no open blocks, and no end of file comes when a writer
    // goes.
    : In(::open(qPrintable(inFifo), O_RDWR | O_NONBLOCK | O_CLOEXEC)),
      Out(::open(qPrintable(outFifo), O_RDWR | O_CLOEXEC)) {
    if (In < 0 || Out < 0)
        qFatal("testkeys: can't open %s and %s", qPrintable(inFifo), qPrintable(outFifo));
    auto *notifier = new QSocketNotifier(In, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] { ReadLines(); });
    NextStep.setSingleShot(true);
    connect(&NextStep, &QTimer::timeout, this, [this] { Step(); });
    QCoreApplication::instance()->installEventFilter(this);
}

TestKeys::~TestKeys() {
    ::close(In);
    ::close(Out);
}

bool TestKeys::eventFilter(QObject *object, QEvent *event) {
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (key && object->isWindowType() && event->spontaneous() && KeysUnderway > 0)
        --KeysUnderway;
    if (NotesArrivals && event->type() == QEvent::KeyPress && object == QApplication::focusWidget())
        NoteArrival(*object, static_cast<const QKeyEvent &>(*event));
    return false;
}

void TestKeys::NoteArrival(const QObject &object, const QKeyEvent &event) {
    const zrt::KeyStroke stroke = zrt::StrokeOf(event);
    if (stroke.KeyCode != zrt::kKeyNone) // a modifier alone
        Arrived += QStringLiteral("%1 %2/%3/%4")
                       .arg(object.objectName())
                       .arg(stroke.KeyCode)
                       .arg(stroke.Shift)
                       .arg(stroke.CharCode);
}

void TestKeys::TellKeys() {
    if (!std::exchange(NotesArrivals, true)) {
        // The program's own filter, which was installed later, keeps keys to itself.
        QCoreApplication::instance()->removeEventFilter(this);
        QCoreApplication::instance()->installEventFilter(this);
    }
    Answer(Arrived.join(QLatin1Char(';')));
    Arrived.clear();
}

// A notifier is not called again inside its own handler; the lines are done from posted events,
// which work in any nested wait.
void TestKeys::ReadLines() {
    std::array<char, 4096> buffer{};
    for (;;) {
        const auto got = ::read(In, buffer.data(), buffer.size());
        if (got <= 0)
            break;
        Rest.append(buffer.data(), got);
    }
    for (qsizetype end = Rest.indexOf('\n'); end >= 0; end = Rest.indexOf('\n')) {
        Lines.push_back(QString::fromUtf8(Rest.left(end)));
        Rest.remove(0, end + 1);
    }
    Later(0);
}

void TestKeys::Later(int milliseconds) {
    if (!NextStep.isActive())
        NextStep.start(milliseconds);
}

void TestKeys::Step() {
    if (Lines.empty())
        return;
    const QString line = Lines.front();
    const qsizetype blank = line.indexOf(QLatin1Char(' '));
    const QString command = blank < 0 ? line : line.left(blank);
    const QString rest = blank < 0 ? QString() : line.mid(blank + 1);
    // Qt drops the release of a key whose press has opened a modal window.
    if (KeysUnderway > 0 && ++TurnsForKey < kMostTurnsForKey) {
        Later(0);
        return;
    }
    KeysUnderway = TurnsForKey = 0;
    // Keys need a window to go to: while one is about to come, they wait.
    const bool isKey = command == QLatin1String("key") || command == QLatin1String("type");
    if (isKey && QGuiApplication::focusWindow() == nullptr) {
        Later(kRetryMs);
        return;
    }
    if (command == QLatin1String("sync") && ++QuietTurns < 4) {
        Later(0);
        return;
    }
    QuietTurns = 0;
    // One key at a time: what it does may change where the next one goes.
    if (command == QLatin1String("type") && rest.size() > 1)
        Lines.front() = QStringLiteral("type ") + rest.mid(1);
    else
        Lines.pop_front();
    Later(0); // before the command, which may wait inside
    Do(command, rest);
}

void TestKeys::Do(const QString &command, const QString &rest) {
    if (command == QLatin1String("type")) {
        const QChar c = rest.isEmpty() ? QLatin1Char(' ') : rest.at(0);
        const bool upper = c.isLetter() && c.isUpper();
        SendKey(c.toUpper().unicode(), upper ? Qt::ShiftModifier : Qt::NoModifier, QString(c));
    } else if (command == QLatin1String("key")) {
        PressNamed(rest);
    } else if (command == QLatin1String("menu")) {
        Choose(rest);
    } else if (command == QLatin1String("click")) {
        Click(rest);
    } else if (command == QLatin1String("list")) {
        ChooseRow(rest);
    } else if (command == QLatin1String("text")) {
        TellText(rest);
    } else if (command == QLatin1String("visible")) {
        const auto *widget = FindNamed<QWidget>(rest);
        Answer(widget == nullptr ? QStringLiteral("error no object ") + rest
                                 : QString::fromLatin1(widget->isVisible() ? "yes" : "no"));
    } else if (command == QLatin1String("place")) {
        const auto *widget = FindNamed<QWidget>(rest);
        const QPoint place = widget == nullptr ? QPoint() : widget->mapToGlobal(QPoint(8, 8));
        Answer(widget == nullptr ? QStringLiteral("error no object ") + rest
                                 : QStringLiteral("%1 %2").arg(place.x()).arg(place.y()));
    } else if (command == QLatin1String("focus")) {
        const auto *widget = QApplication::focusWidget();
        Answer(widget == nullptr ? QStringLiteral("-") : widget->objectName());
    } else if (command == QLatin1String("keys")) {
        TellKeys();
    } else if (command == QLatin1String("window")) {
        const auto *window = QApplication::activeWindow();
        Answer(window == nullptr ? QStringLiteral("-") : window->windowTitle());
    } else if (command == QLatin1String("menus")) {
        Answer(QString::fromLatin1(QApplication::activePopupWidget() == nullptr ? "-" : "open"));
    } else if (command == QLatin1String("frame")) {
        const auto *window = QApplication::activeWindow();
        const QRect frame = window == nullptr ? QRect() : window->frameGeometry();
        Answer(QStringLiteral("%1 %2 %3 %4")
                   .arg(frame.x())
                   .arg(frame.y())
                   .arg(frame.width())
                   .arg(frame.height()));
    } else if (command == QLatin1String("grab")) {
        auto *window = QApplication::activeWindow();
        Answer(QString::fromLatin1(
            window != nullptr && window->grab().save(rest, "PNG") ? "ok" : "error no picture"));
    } else if (command == QLatin1String("sync")) {
        Answer(QStringLiteral("ok"));
    } else {
        Answer(QStringLiteral("error unknown command ") + command);
    }
}

void TestKeys::Answer(const QString &text) {
    QByteArray line = QString(text).replace(QLatin1Char('\n'), QLatin1String("\\n")).toUtf8();
    line += '\n';
    if (::write(Out, line.constData(), static_cast<std::size_t>(line.size())) != line.size())
        qWarning("testkeys: an answer was lost");
}

void TestKeys::SendKey(int key, Qt::KeyboardModifiers modifiers, const QString &text) {
    QWindow *window = QGuiApplication::focusWindow();
    KeysUnderway += 2;
    qt_handleKeyEvent(window, QEvent::KeyPress, key, modifiers, text, false, 1);
    qt_handleKeyEvent(window, QEvent::KeyRelease, key, modifiers, text, false, 1);
}

void TestKeys::PressNamed(const QString &name) {
    QString key = name;
    Qt::KeyboardModifiers modifiers;
    const std::array<std::pair<const char *, Qt::KeyboardModifier>, 4> prefixes = {
        {{"Shift+", Qt::ShiftModifier},
         {"Ctrl+", Qt::ControlModifier},
         {"Alt+", Qt::AltModifier},
         {"Num", Qt::KeypadModifier}}};
    for (const auto &[prefix, modifier] : prefixes) {
        if (key.startsWith(QLatin1String(prefix)) &&
            key.size() > static_cast<qsizetype>(qstrlen(prefix))) {
            key.remove(0, static_cast<qsizetype>(qstrlen(prefix)));
            modifiers |= modifier;
        }
    }
    for (const KeyName &row : kKeyNames) {
        if (key == QLatin1String(row.Name)) {
            const bool keypadEnter = row.Key == Qt::Key_Return && (modifiers & Qt::KeypadModifier);
            SendKey(keypadEnter ? Qt::Key_Enter : row.Key, modifiers,
                    row.Key == Qt::Key_Space ? QStringLiteral(" ") : QString());
            return;
        }
    }
    bool isNumber = false;
    const int number = key.mid(1).toInt(&isNumber);
    if (key.startsWith(QLatin1Char('F')) && isNumber && number >= 1 && number <= 12)
        SendKey(Qt::Key_F1 + number - 1, modifiers, QString());
    else if (key.size() == 1)
        SendKey(key.at(0).toUpper().unicode(), modifiers,
                modifiers & Qt::ShiftModifier ? key.toUpper() : key.toLower());
    else
        Answer(QStringLiteral("error no key ") + name);
}

void TestKeys::Choose(const QString &name) {
    auto *action = FindNamed<QAction>(name);
    if (action == nullptr || !action->isVisible() || !action->isEnabled())
        Answer(QStringLiteral("error no menu entry ") + name);
    else
        action->trigger();
}

void TestKeys::Click(const QString &name) {
    auto *widget = FindNamed<QWidget>(name);
    if (widget == nullptr || !widget->isVisible() || !widget->isEnabled()) {
        Answer(QStringLiteral("error no widget to click ") + name);
        return;
    }
    if (auto *button = qobject_cast<QAbstractButton *>(widget)) {
        button->setFocus(Qt::MouseFocusReason);
        button->click();
        return;
    }
    const QPointF place(widget->rect().center());
    QCoreApplication::postEvent(widget, new QMouseEvent(QEvent::MouseButtonPress, place,
                                                        widget->mapToGlobal(place), Qt::LeftButton,
                                                        Qt::LeftButton, Qt::NoModifier));
    QCoreApplication::postEvent(widget, new QMouseEvent(QEvent::MouseButtonRelease, place,
                                                        widget->mapToGlobal(place), Qt::LeftButton,
                                                        Qt::NoButton, Qt::NoModifier));
}

void TestKeys::ChooseRow(const QString &rest) {
    const qsizetype blank = rest.lastIndexOf(QLatin1Char(' '));
    auto *list = FindNamed<QListWidget>(rest.left(blank));
    bool isNumber = false;
    const int row = rest.mid(blank + 1).toInt(&isNumber);
    if (list == nullptr || !list->isEnabled() || !isNumber || row < 0 || row >= list->count())
        Answer(QStringLiteral("error no row ") + rest);
    else
        list->setCurrentRow(row);
}

void TestKeys::TellText(const QString &name) {
    auto *widget = FindNamed<QWidget>(name);
    Answer(widget == nullptr ? QStringLiteral("error no object ") + name : ShownText(widget));
}

QObject *TestKeysPlugin::create(const QString &key, const QString &specification) {
    const QStringList paths = specification.split(QLatin1Char(':'));
    if (key != QLatin1String("testkeys") || paths.size() != 2)
        return nullptr;
    return new TestKeys(paths[0], paths[1]);
}
