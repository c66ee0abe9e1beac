// A keyboard for tests: a plugin that the real program loads, and that does what lines from a pipe
// tell it. Loaded with QT_QPA_GENERIC_PLUGINS=testkeys:IN:OUT, the paths of two FIFOs, and
// QT_PLUGIN_PATH=<build>/test_plugins.
//
//   type TEXT            the keys that type the text
//   key NAME             Enter, Esc, Tab, F1, Alt+W, Ctrl+Up, Num+, ...
//   menu OBJECT          chooses a menu entry
//   click OBJECT         clicks a button, a box, a label
//   list OBJECT ROW      chooses a row, from 0
//   text OBJECT          answers the text that the widget shows
//   visible OBJECT       answers yes or no
//   place OBJECT         answers the point of the screen 8 pixels inside its upper left corner
//   focus                answers the object that has the keyboard, or -
//   keys                 answers the keys that came to a widget with the keyboard since it was last
//                        asked, as "WIDGET CODE/SHIFT/CHARACTER;..." in the program's own numbers;
//                        the first question only starts the noting
//   window               answers the title of the active window, or -
//   menus                answers open while a menu is, or -
//   frame                answers left, top, width and height of the active window's frame
//   grab FILE            saves the active window as a PNG; answers ok or error
//   sync                 answers ok when all input before it was handled
//
// An answer is one line, "\n" in a text is written as \n. A line that can't be done (no such
// object, a disabled one) answers "error ..." at once. Everything works inside nested waits and
// modal boxes.
#pragma once

#include <QByteArray>
#include <QGenericPlugin>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <deque>

class QKeyEvent;
class QSocketNotifier;

class TestKeys : public QObject {
    Q_OBJECT

  public:
    TestKeys(const QString &inFifo, const QString &outFifo);
    ~TestKeys() override;
    TestKeys(const TestKeys &) = delete;
    TestKeys &operator=(const TestKeys &) = delete;

    bool eventFilter(QObject *object, QEvent *event) override;

  private:
    void ReadLines();
    void Step();
    void Later(int milliseconds);
    void Do(const QString &command, const QString &rest);
    void Answer(const QString &text);
    void SendKey(int key, Qt::KeyboardModifiers modifiers, const QString &text);
    void Choose(const QString &name);
    void Click(const QString &name);
    void ChooseRow(const QString &rest);
    void TellText(const QString &name);
    void TellKeys();
    void NoteArrival(const QObject &object, const QKeyEvent &event);
    void PressNamed(const QString &name);

    int In = -1;
    int Out = -1;
    QByteArray Rest;
    std::deque<QString> Lines;
    int KeysUnderway = 0; // sent to the window system, not yet seen by a window
    int TurnsForKey = 0;  // that were waited for them
    int QuietTurns = 0;   // turns of the event loop since a sync was read
    QTimer NextStep;
    bool NotesArrivals = false;
    QStringList Arrived;
};

class TestKeysPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "test_keys_plugin.json")

  public:
    QObject *create(const QString &key, const QString &specification) override;
};
