// Every key of the entry fields, with its modifiers, pressed in the real entry window: what the
// handlers got, and what the field and the window did with it. Offscreen the keys go to the window
// system's queue as a keyboard's; on X11 xdotool presses them on the server.
#include "entry/log_form.h"
#include "qt/key_cases.h"
#include "qt/real_windows.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QProcess>
#include <QTest>
#include <QWindow>

namespace zrt {
namespace {

constexpr const char *kTypedBefore = "ABCD";
constexpr int kCaretBefore = 2;

bool OnX11() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

class KeyTable : public RealWindows {
  protected:
    KeyTable() {
        ShowEntryFields();
        ShowForm(LogForm);
        LogForm.ActiveControl = &LogForm.InData[0];
        WatchHandlers();
        Turn();
        EXPECT_TRUE(QTest::qWaitForWindowActive(ViewOf(LogForm)));
        Turn();
        // Not empty: a paste that slips through is to be seen.
        QGuiApplication::clipboard()->setText(QStringLiteral("PASTED"));
    }
    ~KeyTable() override { SetNumLock(false); }

    void WatchHandlers() {
        for (int i = 0; i < 2; ++i) {
            TextBox &field = LogForm.InData[static_cast<std::size_t>(i)];
            field.GotFocus = field.LostFocus = field.Change = nullptr;
            field.KeyDown = [this, i](int &keyCode, int shift) {
                Got = {keyCode, shift, 0};
                Downs.push_back(i);
                if (UseUp)
                    keyCode = kKeyNone;
            };
            field.KeyPress = [this](int &charCode) {
                Got.CharCode = charCode;
                ++Presses;
            };
        }
        LogForm.CancelButton.Click = [this] { ++Cancels; };
        LogForm.CloseBox = [this] { ++Closes; };
    }

    // On X11 only: the lock belongs to the server.
    void SetNumLock(bool on) {
        if (!OnX11() || on == NumLock)
            return;
        NumLock = on;
        QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("77")});
        Turn();
    }

    void Prepare() {
        LogForm.ActiveControl = &LogForm.InData[0];
        SetFieldText(LogForm.InData[0], kTypedBefore);
        LogForm.InData[0].SelStart = kCaretBefore;
        Turn();
        Got = {};
        Downs.clear();
        Presses = 0;
    }

    void Press(const KeyCase &row) {
        if (!OnX11()) {
            QWindow *window = ViewOf(LogForm)->windowHandle();
            const QString text = QString::fromStdString(row.Text);
            // QTest's own way into the queue of the window system, with a text of ours.
            for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
                qt_handleKeyEvent(window, type, row.QtKey, row.Modifiers, text, false, 1);
            Turn();
            return;
        }
        SetNumLock(row.NumLock);
        QProcess::execute(QStringLiteral("xdotool"),
                          QStringList(QStringLiteral("key")) +
                              QString::fromStdString(row.Chord).split(QLatin1Char(' ')));
        constexpr int kPatienceMs = 20000; // a machine under load is slow
        (void)QTest::qWaitFor([this] { return !Downs.empty() || Cancels > 0 || Closes > 0; },
                              kPatienceMs);
        Turn();
    }

    static bool Reaches(const KeyCase &row) { return !OnX11() || !row.KeptByManager; }
    static QLineEdit *Edit(int i) {
        return ViewOf(LogForm)->findChild<QLineEdit *>(i == 0 ? QStringLiteral("InData(0)")
                                                              : QStringLiteral("InData(1)"));
    }
    static bool MenuIsOpen() {
        const auto *bar = static_cast<QMainWindow *>(ViewOf(LogForm))->menuBar();
        return bar->activeAction() != nullptr || QApplication::activePopupWidget() != nullptr;
    }

    // The Radio menu has no entry yet, and is disabled.
    static bool OpensMenu(const KeyStroke &stroke) {
        const std::string letters = "FEVOH";
        return stroke.Shift == kAlt && stroke.CharCode == 0 &&
               letters.find(static_cast<char>(stroke.KeyCode)) != std::string::npos;
    }
    void CloseMenu() {
        for (int i = 0; i < 3 && MenuIsOpen(); ++i) {
            QTest::keyClick(QApplication::activePopupWidget() != nullptr
                                ? QApplication::activePopupWidget()
                                : ViewOf(LogForm),
                            Qt::Key_Escape);
            Turn();
        }
        EXPECT_FALSE(MenuIsOpen());
    }

    bool UseUp = true;
    bool NumLock = false;
    KeyStroke Got;
    std::vector<int> Downs;
    int Presses = 0, Cancels = 0, Closes = 0;
};

TEST_F(KeyTable, EachKeyReachesTheHandlerOnceAndIsItsAlone) {
    int rows = 0;
    for (const KeyCase &row : KeyCases()) {
        if (!Reaches(row))
            continue;
        SCOPED_TRACE(row.Chord + (row.NumLock ? " with Num Lock" : ""));
        Prepare();
        Press(row);
        EXPECT_EQ(Downs, std::vector<int>{0});
        EXPECT_EQ(Got.KeyCode, row.Expected.KeyCode);
        EXPECT_EQ(Got.Shift, row.Expected.Shift);
        EXPECT_EQ(Presses, 0); // it was used up
        // Neither the field nor a menu nor the window has seen it.
        EXPECT_EQ(Edit(0)->text(), QLatin1String(kTypedBefore));
        EXPECT_EQ(Edit(0)->cursorPosition(), kCaretBefore);
        EXPECT_FALSE(Edit(0)->hasSelectedText());
        EXPECT_TRUE(Edit(0)->hasFocus());
        EXPECT_FALSE(MenuIsOpen());
        EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("PASTED"));
        ++rows;
    }
    EXPECT_GT(rows, 250);
    EXPECT_EQ(Closes, 0);
    EXPECT_EQ(Cancels, 0);
}

TEST_F(KeyTable, AKeyThatIsLeftTypesItsCharacterOrNothing) {
    UseUp = false;
    int menus = 0;
    for (const KeyCase &row : KeyCases()) {
        // Editing keys of the field are its own when the handlers leave them, whatever they type.
        const bool edits = row.Expected.CharCode == 0 && (row.Expected.Shift & kAlt) == 0;
        if (edits || !Reaches(row))
            continue;
        SCOPED_TRACE(row.Chord + (row.NumLock ? " with Num Lock" : ""));
        Prepare();
        Press(row);
        EXPECT_EQ(Downs, std::vector<int>{0});
        EXPECT_EQ(StrokeText(Got), StrokeText(row.Expected));
        std::string expected = kTypedBefore;
        if (const int taken = CharacterTaken(LogForm.InData[0], row.Expected.CharCode))
            expected.insert(kCaretBefore, 1, static_cast<char>(taken));
        EXPECT_EQ(Edit(0)->text().toStdString(), expected);
        EXPECT_EQ(LogForm.InData[0].Text, expected);
        const bool opensMenu = OpensMenu(row.Expected);
        menus += opensMenu ? 1 : 0;
        EXPECT_EQ(MenuIsOpen(), opensMenu);
        CloseMenu();
        EXPECT_TRUE(Edit(0)->hasFocus());
    }
    EXPECT_EQ(menus, 5);
    EXPECT_EQ(Closes, 0);
}

TEST_F(KeyTable, TheExchangeFieldGetsItsOwnKeys) {
    for (const char *chord : {"alt+m", "ctrl+z", "F10", "ctrl+Down", "alt+Left", "apostrophe"}) {
        for (const KeyCase &row : KeyCases()) {
            if (row.Chord != chord)
                continue;
            SCOPED_TRACE(chord);
            Prepare();
            SetFocus(LogForm.InData[1]);
            Turn();
            Press(row);
            EXPECT_EQ(Downs, std::vector<int>{1});
            EXPECT_EQ(Got.KeyCode, row.Expected.KeyCode);
            EXPECT_TRUE(Edit(1)->hasFocus());
        }
    }
}

TEST_F(KeyTable, EscIsTheCancelButtons) {
    Prepare();
    Press({"Escape", Qt::Key_Escape, Qt::NoModifier, "\x1b", {kKeyEsc, 0, 0}});
    EXPECT_EQ(Cancels, 1);
    EXPECT_TRUE(Downs.empty());
    EXPECT_TRUE(Edit(0)->hasFocus());
}

// Only X11 has layouts. The apostrophe above another key, and one that is made of
// an accent and the blank.
TEST_F(KeyTable, TheApostropheIsFoundOnOtherKeyboards) {
    ASSERT_TRUE(OnX11());
    const struct {
        const char *Layout, *Variant, *Chord;
    } boards[] = {{"de", "", "shift+51"}, {"us", "intl", "48 65"}, {"us", "", "48"}};
    for (const auto &board : boards) {
        SCOPED_TRACE(board.Layout + std::string(board.Variant));
        QProcess::execute(QStringLiteral("setxkbmap"),
                          {QString::fromLatin1(board.Layout), QString::fromLatin1(board.Variant)});
        UseUp = false;
        Prepare();
        Press({board.Chord, 0, Qt::NoModifier, "", {}});
        EXPECT_EQ(StrokeText(Got), StrokeText({kKeyApostrophe, 0, '\''}));
        EXPECT_EQ(Downs, std::vector<int>{0});
    }
}

// The modifiers alone, as they come before and after every chord.
TEST_F(KeyTable, AModifierAloneChangesNothing) {
    for (const Qt::Key key : {Qt::Key_Alt, Qt::Key_Shift, Qt::Key_Control, Qt::Key_Meta}) {
        Prepare();
        if (OnX11()) {
            const char *name = key == Qt::Key_Alt     ? "Alt_L"
                               : key == Qt::Key_Shift ? "Shift_L"
                               : key == Qt::Key_Meta  ? "Super_L"
                                                      : "Control_L";
            QProcess::execute(QStringLiteral("xdotool"),
                              {QStringLiteral("key"), QString::fromLatin1(name)});
            QTest::qWait(50);
        } else {
            QWindow *window = ViewOf(LogForm)->windowHandle();
            qt_handleKeyEvent(window, QEvent::KeyPress, key, Qt::NoModifier, {}, false, 1);
            qt_handleKeyEvent(window, QEvent::KeyRelease, key, Qt::NoModifier, {}, false, 1);
        }
        Turn();
        EXPECT_TRUE(Downs.empty());
        EXPECT_TRUE(Edit(0)->hasFocus());
        EXPECT_FALSE(MenuIsOpen());
    }
}

} // namespace
} // namespace zrt
