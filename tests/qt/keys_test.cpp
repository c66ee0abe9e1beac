#include "qt/small_window.h"

#include "platform/events.h"
#include "platform/keys.h"
#include "qt/key_codes.h"
#include "qt/mirror.h"
#include "qt/operator_filter.h"
#include "qt/widgets.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>
#include <QWindow>

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;

KeyStroke Stroke(int key, Qt::KeyboardModifiers modifiers, const char *text) {
    return StrokeOf(QKeyEvent(QEvent::KeyPress, key, modifiers, QString::fromUtf8(text)));
}

std::string Text(const KeyStroke &stroke) {
    return std::to_string(stroke.KeyCode) + "/" + std::to_string(stroke.Shift) + "/" +
           std::to_string(stroke.CharCode);
}

TEST(StrokeOf, NumbersTheKeysAsTheHandlersKnowThem) {
    EXPECT_EQ(Text(Stroke(Qt::Key_A, Qt::NoModifier, "a")), "65/0/97");
    EXPECT_EQ(Text(Stroke(Qt::Key_A, Qt::ShiftModifier, "A")), "65/1/65");
    EXPECT_EQ(Text(Stroke(Qt::Key_9, Qt::NoModifier, "9")), "57/0/57");
    EXPECT_EQ(Text(Stroke(Qt::Key_Space, Qt::NoModifier, " ")), "32/0/32");
    EXPECT_EQ(Text(Stroke(Qt::Key_Slash, Qt::NoModifier, "/")), "191/0/47");
    EXPECT_EQ(Text(Stroke(Qt::Key_Question, Qt::ShiftModifier, "?")), "191/1/63");
    EXPECT_EQ(Text(Stroke(Qt::Key_F1, Qt::ShiftModifier, "")), "112/1/0");
    EXPECT_EQ(Text(Stroke(Qt::Key_F12, Qt::NoModifier, "")), "123/0/0");
    EXPECT_EQ(Text(Stroke(Qt::Key_Return, Qt::NoModifier, "\r")), "13/0/0");
    EXPECT_EQ(Text(Stroke(Qt::Key_Escape, Qt::NoModifier, "\x1b")), "27/0/0");
    EXPECT_EQ(Text(Stroke(Qt::Key_Insert, Qt::NoModifier, "")), "45/0/0");
    EXPECT_EQ(Text(Stroke(Qt::Key_Backspace, Qt::NoModifier, "\b")), "8/0/0");
    EXPECT_EQ(Text(Stroke(Qt::Key_CapsLock, Qt::NoModifier, "")), "20/0/0");
}

TEST(StrokeOf, TypesNothingWithCtrlOrAlt) {
    EXPECT_EQ(Text(Stroke(Qt::Key_Z, Qt::ControlModifier, "\x1a")), "90/2/0");
    EXPECT_EQ(Text(Stroke(Qt::Key_W, Qt::AltModifier, "w")), "87/4/0");
    EXPECT_EQ(Text(Stroke(Qt::Key_Up, Qt::AltModifier | Qt::KeypadModifier, "")), "38/4/0");
}

TEST(StrokeOf, TakesTheApostropheByItsCharacter) {
    EXPECT_EQ(Text(Stroke(Qt::Key_Apostrophe, Qt::NoModifier, "'")), "222/0/39");
    // A layout where the apostrophe stands above another key.
    EXPECT_EQ(Text(Stroke(Qt::Key_Apostrophe, Qt::ShiftModifier, "'")), "222/0/39");
    EXPECT_NE(Stroke(Qt::Key_QuoteDbl, Qt::ShiftModifier, "\"").KeyCode, kKeyApostrophe);
}

TEST(StrokeOf, KnowsTheKeypad) {
    EXPECT_EQ(Text(Stroke(Qt::Key_Plus, Qt::KeypadModifier, "+")), "107/0/43");
    EXPECT_EQ(Text(Stroke(Qt::Key_Minus, Qt::KeypadModifier, "-")), "109/0/45");
    EXPECT_EQ(Text(Stroke(Qt::Key_Period, Qt::KeypadModifier, ".")), "110/0/46");
    EXPECT_EQ(Text(Stroke(Qt::Key_7, Qt::KeypadModifier, "7")), "103/0/55");
    EXPECT_EQ(Text(Stroke(Qt::Key_Enter, Qt::KeypadModifier, "\r")), "13/0/0");
    EXPECT_EQ(Text(Stroke(Qt::Key_Home, Qt::KeypadModifier, "")), "36/0/0");
}

TEST(StrokeOf, GivesEachCharacterAKeyAndNoneToAModifierAlone) {
    // The rest of a stroke without a key code would be taken as used up.
    for (int c = 33; c < 127; ++c) {
        const char text[] = {static_cast<char>(c), 0};
        EXPECT_NE(Stroke(c, Qt::NoModifier, text).KeyCode, kKeyNone) << text;
    }
    EXPECT_NE(Stroke(Qt::Key_Adiaeresis, Qt::NoModifier, "\xc3\xa4").KeyCode, kKeyNone);
    EXPECT_EQ(Stroke(Qt::Key_Alt, Qt::AltModifier, "").KeyCode, kKeyNone);
    EXPECT_EQ(Stroke(Qt::Key_Shift, Qt::ShiftModifier, "").KeyCode, kKeyNone);
}

class Keys : public SmallWindowTest {
  protected:
    Keys() {
        for (TextBox &field : Window.Field) {
            field.KeyDown = [this](int &keyCode, int shift) {
                Codes.push_back(keyCode);
                Shifts.push_back(shift);
                if (keyCode == UsedUp)
                    keyCode = 0;
            };
            field.KeyPress = [](int &charCode) {
                if (charCode >= 'a' && charCode <= 'z')
                    charCode -= 32;
                if (charCode == '"')
                    charCode = 0;
            };
            field.Change = [this] { ++Changes; };
        }
    }

    static QLineEdit *Edit(int i) {
        return Find<QLineEdit>(Window, i == 0 ? "Field(0)" : "Field(1)");
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(ViewOf(Window)->windowHandle(), key, modifiers);
        Turn();
    }
    static void Type(const char *text) {
        for (const char *c = text; *c != 0; ++c)
            QTest::keyClick(ViewOf(Window)->windowHandle(), *c);
        Turn();
    }

    int UsedUp = -1;
    int Changes = 0;
    std::vector<int> Codes, Shifts;
};

TEST_F(Keys, ACharacterIsTypedAsTheHandlerLeavesIt) {
    Type("w1aw");
    EXPECT_EQ(Edit(0)->text(), QStringLiteral("W1AW"));
    EXPECT_EQ(Window.Field[0].Text, "W1AW");
    EXPECT_EQ(Window.Field[0].SelStart, 4);
    EXPECT_EQ(Changes, 4);
    EXPECT_THAT(Codes, ElementsAre('W', '1', 'A', 'W')); // each key is offered once
}

TEST_F(Keys, AKeyThatIsUsedUpTypesNothing) {
    UsedUp = 'X';
    Type("ax\"b");
    EXPECT_EQ(Edit(0)->text(), QStringLiteral("AB"));
    EXPECT_EQ(Changes, 2);
}

TEST_F(Keys, TypingReplacesTheSelection) {
    Window.Field[0].Text = "DL1ABC";
    Window.Field[0].SelStart = 2;
    Window.Field[0].SelLength = 3;
    Turn();
    EXPECT_EQ(Edit(0)->selectedText(), QStringLiteral("1AB"));
    Type("7");
    EXPECT_EQ(Window.Field[0].Text, "DL7C");
    EXPECT_EQ(Window.Field[0].SelStart, 3);
    EXPECT_EQ(Window.Field[0].SelLength, 0);
}

TEST_F(Keys, TheRecordFollowsTheCaret) {
    Type("abcd");
    Press(Qt::Key_Left);
    EXPECT_EQ(Window.Field[0].SelStart, 3);
    Press(Qt::Key_Left, Qt::ShiftModifier);
    Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Window.Field[0].SelStart, 1);
    EXPECT_EQ(Window.Field[0].SelLength, 2);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Window.Field[0].Text, "AD");
    Press(Qt::Key_Home);
    EXPECT_EQ(Window.Field[0].SelStart, 0);
    Press(Qt::Key_End);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Window.Field[0].Text, "A");
    EXPECT_EQ(Changes, 6);
}

TEST_F(Keys, AHandlerMayWriteTheFieldBeforeTheKeyIsTyped) {
    Window.Field[0].KeyDown = [](int &, int) {
        Window.Field[0].Text = "DL1AB";
        Window.Field[0].SelStart = 5;
    };
    Type("c");
    EXPECT_EQ(Window.Field[0].Text, "DL1ABC");
}

TEST_F(Keys, TabGoesThroughTheControlsInTheirOrder) {
    Window.chkBox.Visible = false;
    Turn();
    Press(Qt::Key_Tab);
    EXPECT_EQ(Window.ActiveControl, &Window.Field[1]);
    EXPECT_TRUE(Edit(1)->hasFocus());
    EXPECT_TRUE(Edit(1)->selectedText().isEmpty());
    Press(Qt::Key_Tab);
    EXPECT_EQ(Window.ActiveControl, &Window.optMode[0]);
    Press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(Window.ActiveControl, &Window.Field[1]);
    Press(Qt::Key_Backtab, Qt::ShiftModifier); // as X11 names it
    EXPECT_EQ(Window.ActiveControl, &Window.Field[0]);
}

TEST_F(Keys, EscAndEnterPressTheirButtons) {
    Window.cmdCancel.Click = [this] { Heard.emplace_back("cancel"); };
    Window.cmdOK.Click = [this] { Heard.emplace_back("ok"); };
    Press(Qt::Key_Escape);
    Press(Qt::Key_Return);
    Press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_THAT(Heard, ElementsAre("cancel", "ok", "ok"));
    EXPECT_TRUE(Codes.empty());
}

TEST_F(Keys, EnterReachesAFieldWhereNoButtonIsTheDefault) {
    Window.cmdOK.Default = false;
    Press(Qt::Key_Return);
    EXPECT_THAT(Codes, ElementsAre(kKeyEnter));
}

TEST_F(Keys, AltWithALetterIsAKeyAndNoText) {
    Press(Qt::Key_W, Qt::AltModifier);
    EXPECT_THAT(Codes, ElementsAre('W'));
    EXPECT_THAT(Shifts, ElementsAre(kAlt));
    EXPECT_EQ(Edit(0)->text(), QString());
}

TEST_F(Keys, AltAloneLeavesTheKeyboardInTheField) {
    QTest::keyPress(ViewOf(Window)->windowHandle(), Qt::Key_Alt, Qt::AltModifier);
    QTest::keyRelease(ViewOf(Window)->windowHandle(), Qt::Key_Alt);
    Turn();
    EXPECT_TRUE(Edit(0)->hasFocus());
    EXPECT_TRUE(Codes.empty());
}

TEST_F(Keys, TheMenuKeyOpensTheMenuBar) {
    Press(Qt::Key_Menu);
    const auto *bar = static_cast<QMainWindow *>(ViewOf(Window))->menuBar();
    ASSERT_NE(bar->activeAction(), nullptr);
    EXPECT_EQ(bar->activeAction()->objectName(), QStringLiteral("mnuFile"));
    Press(Qt::Key_Escape);
}

TEST_F(Keys, AltAndItsLetterOpensAMenu) {
    const auto *bar = static_cast<QMainWindow *>(ViewOf(Window))->menuBar();
    EXPECT_EQ(bar->actions().first()->text(), QStringLiteral("&File"));
    Press(Qt::Key_F, Qt::AltModifier);
    EXPECT_THAT(Codes, ElementsAre('F')); // the field is asked first
    ASSERT_NE(bar->activeAction(), nullptr);
    EXPECT_EQ(bar->activeAction()->objectName(), QStringLiteral("mnuFile"));
    Press(Qt::Key_Escape);
    EXPECT_TRUE(Edit(0)->hasFocus());
    EXPECT_EQ(Window.Field[0].Text, "");
}

TEST_F(Keys, ALetterThatAFieldUsesOpensNoMenu) {
    const auto *bar = static_cast<QMainWindow *>(ViewOf(Window))->menuBar();
    UsedUp = 'F';
    Press(Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(bar->activeAction(), nullptr);
    UsedUp = -1;
    Window.mnuFile.Enabled = false;
    Turn();
    Press(Qt::Key_F, Qt::AltModifier);
    Press(Qt::Key_F, Qt::AltModifier | Qt::ControlModifier);
    Press(Qt::Key_G, Qt::AltModifier);
    EXPECT_EQ(bar->activeAction(), nullptr);
    EXPECT_EQ(Window.Field[0].Text, "");
}

TEST_F(Keys, AMenuEntryShowsTheKeysThatDoTheSame) {
    auto *entry = ViewOf(Window)->findChild<QAction *>(QStringLiteral("mnuFileNew"));
    EXPECT_EQ(entry->text(), QStringLiteral("New"));
    Window.mnuFileNew.Keys = "Ctrl+Left";
    Turn();
    EXPECT_EQ(entry->text(), QStringLiteral("New\tCtrl+Left"));
    EXPECT_TRUE(entry->shortcut().isEmpty()); // it is a text
    Press(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_THAT(Codes, ElementsAre(kKeyLeft));
    EXPECT_TRUE(Heard.empty());
}

TEST_F(Keys, AKeyThatArrivesBesideTheFieldsGoesToTheLastOfThem) {
    SetFocus(Window.Field[1]);
    Turn();
    Edit(1)->clearFocus(); // as after something in the window that took the keyboard and is gone
    ASSERT_EQ(QApplication::focusWidget(), nullptr);
    QTest::keyClick(ViewOf(Window)->windowHandle(), 'a');
    Turn();
    EXPECT_EQ(Window.Field[1].Text, "A");
    Type("b");
    EXPECT_EQ(Window.Field[1].Text, "AB");
}

TEST_F(Keys, NoShortcutComesBeforeTheField) {
    QAction shortcut;
    // A field of Qt's own would keep Ctrl+Z, and let Alt+W go.
    shortcut.setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Z), QKeySequence(Qt::ALT | Qt::Key_W)});
    int taken = 0;
    QObject::connect(&shortcut, &QAction::triggered, &shortcut, [&taken] { ++taken; });
    ViewOf(Window)->addAction(&shortcut);
    Press(Qt::Key_Z, Qt::ControlModifier);
    Press(Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(taken, 0);
    EXPECT_THAT(Codes, ElementsAre('Z', 'W'));
    EXPECT_THAT(Shifts, ElementsAre(kCtrl, kAlt));
}

TEST_F(Keys, F10AndAnUnusedKeyAreOfferedOnce) {
    Press(Qt::Key_F10);
    Press(Qt::Key_Down);
    EXPECT_THAT(Codes, ElementsAre(kKeyF1 + 9, kKeyDown));
    EXPECT_TRUE(Edit(0)->hasFocus());
}

TEST_F(Keys, APasteIsAChangeToo) {
    Edit(0)->insert(QStringLiteral("DL1ABC"));
    EXPECT_EQ(Window.Field[0].Text, "DL1ABC");
    EXPECT_EQ(Window.Field[0].SelStart, 6);
    EXPECT_EQ(Changes, 1);
}

TEST_F(Keys, APastedTextComesWithoutLineEnds) {
    QApplication::clipboard()->setText(QStringLiteral("\n\u00a0DL1\tABC\r\n"));
    Edit(0)->paste();
    EXPECT_EQ(Window.Field[0].Text, "DL1 ABC");
    EXPECT_EQ(Edit(0)->text(), QStringLiteral("DL1 ABC"));
    EXPECT_EQ(Window.Field[0].SelStart, 7);
    EXPECT_EQ(Edit(0)->cursorPosition(), 7);
    EXPECT_EQ(Changes, 1);
    Edit(0)->home(false);
    QApplication::clipboard()->setText(QStringLiteral("\n"));
    Press(Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(Edit(0)->text(), QStringLiteral("DL1 ABC"));
    EXPECT_EQ(Changes, 1);
}

TEST_F(Keys, ADroppedTextComesWithoutLineEnds) {
    Edit(0)->insert(QStringLiteral("K1"));
    QMimeData text;
    text.setText(QStringLiteral("ZZ\n"));
    const QPoint middle = Edit(0)->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Edit(0), &enter);
    QDropEvent drop(middle, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Edit(0), &drop);
    EXPECT_EQ(Window.Field[0].Text, "K1ZZ");
    EXPECT_EQ(Edit(0)->text(), QStringLiteral("K1ZZ"));
}

TEST_F(Keys, ABlankOfAnotherKindIsTypedAsABlank) {
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("1\u00a02"));
    QApplication::sendEvent(Edit(0), &composed);
    EXPECT_EQ(Edit(0)->text(), QStringLiteral("1 2"));
}

TEST_F(Keys, AFieldTakesTheCharactersOfItsRecord) {
    Window.Field[0].Takes = [](int c) { return c >= 'A' && c <= 'Z'; };
    Type("ab");
    Type("1");
    Type(" ");
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("c\u201d"));
    QApplication::sendEvent(Edit(0), &composed);
    EXPECT_EQ(Edit(0)->text(), QStringLiteral("ABC"));
    Edit(0)->selectAll();
    Type("1"); // is no reason to lose what is selected
    EXPECT_EQ(Edit(0)->text(), QStringLiteral("ABC"));
    QApplication::clipboard()->setText(QStringLiteral("12\n"));
    Edit(0)->paste();
    EXPECT_EQ(Edit(0)->text(), QStringLiteral("ABC"));
    EXPECT_EQ(Edit(0)->selectedText(), QStringLiteral("ABC"));
    EXPECT_EQ(Window.Field[0].SelLength, 3);
}

TEST_F(Keys, PositionsCountBytes) {
    Window.Field[0].Text = "\xc3\xa4X"; // an a umlaut has two
    Window.Field[0].SelStart = 2;
    Turn();
    EXPECT_EQ(Edit(0)->cursorPosition(), 1);
    Press(Qt::Key_End);
    EXPECT_EQ(Window.Field[0].SelStart, 3);
}

TEST_F(Keys, AHandlerThatHidesTheWindowEndsTheKey) {
    Window.Field[0].KeyDown = [](int &, int) { HideForm(Window); };
    Type("a");
    EXPECT_EQ(Window.Field[0].Text, "");
    EXPECT_FALSE(ViewOf(Window)->isVisible());
}

TEST_F(Keys, AKeyIsPressedWhileItIsDownAndOnceAfterwards) {
    auto *window = ViewOf(Window)->windowHandle();
    EXPECT_FALSE(KeyPressed(kKeyEsc));
    QTest::keyPress(window, Qt::Key_Escape);
    EXPECT_TRUE(KeyPressed(kKeyEsc));
    EXPECT_TRUE(KeyPressed(kKeyEsc));
    QTest::keyRelease(window, Qt::Key_Escape);
    EXPECT_FALSE(KeyPressed(kKeyEsc));
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(KeyPressed(kKeyEsc));
    EXPECT_FALSE(KeyPressed(kKeyEsc));
    EXPECT_FALSE(KeyPressed(-1));
    EXPECT_FALSE(KeyPressed(5000));
}

TEST_F(Keys, AKeyStaysDownThroughItsRepeats) {
    auto *window = ViewOf(Window)->windowHandle();
    QTest::keyPress(window, Qt::Key_Escape);
    EXPECT_TRUE(KeyPressed(kKeyEsc)); // the press itself is told once
    QKeyEvent repeat(QEvent::KeyRelease, Qt::Key_Escape, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(window, &repeat);
    EXPECT_TRUE(KeyPressed(kKeyEsc));
    QTest::keyRelease(window, Qt::Key_Escape);
    EXPECT_FALSE(KeyPressed(kKeyEsc));
}

// Its release goes to the program that is in front then.
TEST_F(Keys, NoKeyIsDownAfterTheProgramHasLostTheFront) {
    auto *window = ViewOf(Window)->windowHandle();
    QTest::keyPress(window, Qt::Key_Escape);
    EXPECT_TRUE(KeyPressed(kKeyEsc));
    QApplicationStateChangeEvent activated(Qt::ApplicationActive);
    QCoreApplication::sendEvent(qApp, &activated);
    EXPECT_TRUE(KeyPressed(kKeyEsc));
    QApplicationStateChangeEvent left(Qt::ApplicationInactive);
    QCoreApplication::sendEvent(qApp, &left);
    EXPECT_FALSE(KeyPressed(kKeyEsc));
}

TEST_F(Keys, WhatComesInWhileAKeyIsAskedAboutIsServedLaterInItsOrder) {
    auto *window = ViewOf(Window)->windowHandle();
    Window.cmdCancel.Click = [this] { Heard.emplace_back("cancel"); };
    bool pressed = false;
    std::string during;
    // The keys arrive inside the question, as from a keyboard.
    const Later later(0, [window] {
        QTest::keyClick(window, 'a');
        QTest::keyClick(window, Qt::Key_Escape);
        QTest::keyClick(window, 'b');
    });
    pressed = KeyPressed(kKeyEsc);
    during = Window.Field[0].Text;
    EXPECT_TRUE(pressed);
    EXPECT_EQ(during, "");
    Turn();
    EXPECT_EQ(Window.Field[0].Text, "AB");
    EXPECT_THAT(Heard, ElementsAre("cancel"));
    EXPECT_FALSE(KeyPressed(kKeyEsc)); // it was pressed once
}

TEST_F(Keys, WhatComesBehindAHeldKeyDoesNotOvertakeIt) {
    auto *window = ViewOf(Window)->windowHandle();
    const Later later(0, [window] {
        QTest::keyClick(window, 'a');
        QInputMethodEvent composed;
        composed.setCommitString(QStringLiteral("b"));
        QCoreApplication::sendEvent(Edit(0), &composed);
    });
    (void)KeyPressed(kKeyEsc);
    EXPECT_EQ(Window.Field[0].Text, "");
    QTest::keyClick(window, 'c'); // before those two were served
    Turn();
    EXPECT_EQ(Window.Field[0].Text, "ABC");
}

TEST_F(Keys, HeldKeysAreServedInTheWaitOfTheFirstOfThem) {
    auto *window = ViewOf(Window)->windowHandle();
    std::size_t heardInWait = 0;
    Window.Field[0].KeyDown = [&](int &keyCode, int) {
        Codes.push_back(keyCode);
        if (keyCode != kKeyF1)
            return;
        PumpUntil(Clock.Steady() + kSecond, [this] { return Codes.size() == 3; });
        heardInWait = Codes.size();
    };
    const Later later(0, [window] {
        QTest::keyClick(window, Qt::Key_F1);
        QTest::keyClick(window, 'a');
    });
    (void)KeyPressed(kKeyEsc);
    const Later behind(20, [window] { QTest::keyClick(window, 'b'); });
    Turn();
    EXPECT_EQ(heardInWait, 3U);
    EXPECT_THAT(Codes, ElementsAre(kKeyF1, 'A', 'B'));
    EXPECT_EQ(Window.Field[0].Text, "AB");
}

TEST_F(Keys, AComposedCharacterIsAStrokeForTheHandlers) {
    UsedUp = kKeyApostrophe;
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("w'\u00e9"));
    QCoreApplication::sendEvent(Edit(0), &composed);
    Turn();
    EXPECT_THAT(Codes, ElementsAre('W', kKeyApostrophe, 231));
    EXPECT_THAT(Shifts, ElementsAre(0, 0, 0));
    EXPECT_EQ(Window.Field[0].Text, "W\xc3\xa9");
    EXPECT_EQ(Changes, 2);
}

TEST_F(Keys, AWindowThatWantsNoKeyboardGivesItBack) {
    ViewOf(Dialog)->setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    Dialog.Visible = true; // but not in front
    MirrorRecords();
    QCoreApplication::processEvents();
    ASSERT_EQ(QApplication::activeWindow(), ViewOf(Dialog)); // this platform asks nobody
    QTest::keyClick(ViewOf(Dialog)->windowHandle(), 'a');
    Turn();
    EXPECT_EQ(QApplication::activeWindow(), ViewOf(Window));
    EXPECT_EQ(ActiveForm(), &Window);
    QTest::keyClick(QGuiApplication::focusWindow(), 'b');
    Turn();
    EXPECT_EQ(Window.Field[0].Text, "AB");
    Dialog.Visible = false;
    Turn();
}

} // namespace
} // namespace zrt
