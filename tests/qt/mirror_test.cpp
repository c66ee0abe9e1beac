#include "qt/small_window.h"

#include "platform/events.h"
#include "platform/program.h"
#include "qt/inks.h"
#include "qt/mirror.h"
#include "qt/widgets.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Mirror = SmallWindowTest;

// Counts what the windows are made to do.
class Counter : public QObject {
  public:
    bool eventFilter(QObject *, QEvent *event) override {
        Paints += event->type() == QEvent::Paint ? 1 : 0;
        Layouts += event->type() == QEvent::LayoutRequest ? 1 : 0;
        Raises += event->type() == QEvent::ZOrderChange ? 1 : 0;
        return false;
    }
    int Paints = 0;
    int Layouts = 0;
    int Raises = 0;
};

TEST_F(Mirror, ShowsTextCaretAndSelectionAndRaisesNoEdit) {
    Window.Field[0].Change = [this] { Heard.emplace_back("change"); };
    Window.Field[0].Text = "W1AW";
    Window.Field[0].SelStart = 1;
    Window.Field[0].SelLength = 2;
    Turn();
    const auto *edit = Find<QLineEdit>(Window, "Field(0)");
    EXPECT_EQ(edit->text(), QStringLiteral("W1AW"));
    EXPECT_EQ(edit->selectedText(), QStringLiteral("1A"));
    Window.Field[0].SelLength = 0;
    Window.Field[0].SelStart = 0;
    Turn();
    EXPECT_FALSE(edit->hasSelectedText());
    EXPECT_EQ(edit->cursorPosition(), 0);
    EXPECT_EQ(Window.Field[0].Text, "W1AW");
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(Mirror, ATextOfTheSameLengthLeavesTheCaretWhereTheRecordSays) {
    Window.Field[0].Text = "W1AW";
    Window.Field[0].SelStart = 2;
    Turn();
    Window.Field[0].Text = "W2BW";
    Turn();
    EXPECT_EQ(Find<QLineEdit>(Window, "Field(0)")->cursorPosition(), 2);
    EXPECT_EQ(Window.Field[0].SelStart, 2);
}

TEST_F(Mirror, ACaretOutsideTheTextIsBroughtInside) {
    Window.Field[0].Text = "AB";
    Window.Field[0].SelStart = 9;
    Window.Field[0].SelLength = 9;
    Turn();
    EXPECT_EQ(Find<QLineEdit>(Window, "Field(0)")->cursorPosition(), 2);
}

TEST_F(Mirror, FocusGoesFromTheRecordToTheWidget) {
    SetFocus(Window.Field[1]);
    Turn();
    EXPECT_TRUE(FindWidget(Window, "Field(1)")->hasFocus());
}

TEST_F(Mirror, AFieldThatAppearsGetsTheFocusThatItsRecordHas) {
    Window.Field[1].Visible = false;
    Turn();
    SetFocus(Window.Field[1]);
    Turn();
    Window.Field[1].Visible = true;
    Turn();
    EXPECT_TRUE(FindWidget(Window, "Field(1)")->hasFocus());
}

TEST_F(Mirror, AClickFocusesTheRecordOnce) {
    Window.Field[0].LostFocus = [this] { Heard.emplace_back("lost"); };
    Window.Field[1].GotFocus = [this] { Heard.emplace_back("got"); };
    QTest::mouseClick(FindWidget(Window, "Field(1)"), Qt::LeftButton);
    Turn();
    EXPECT_EQ(Window.ActiveControl, &Window.Field[1]);
    EXPECT_THAT(Heard, ElementsAre("lost", "got"));
}

TEST_F(Mirror, AHandlerMaySendTheFocusElsewhere) {
    Window.Field[1].GotFocus = [] { SetFocus(Window.Field[0]); };
    QTest::mouseClick(FindWidget(Window, "Field(1)"), Qt::LeftButton);
    Turn();
    EXPECT_TRUE(FindWidget(Window, "Field(0)")->hasFocus());
}

TEST_F(Mirror, AFieldKeepsItsSelectionWhileTheKeyboardIsElsewhere) {
    Window.Field[0].Text = "W1AW";
    Window.Field[0].SelStart = 1;
    Window.Field[0].SelLength = 3;
    Turn();
    SetFocus(Window.Field[1]);
    Turn();
    EXPECT_EQ(Window.Field[0].SelLength, 3);
    SetFocus(Window.Field[0]);
    Turn();
    EXPECT_EQ(Find<QLineEdit>(Window, "Field(0)")->selectedText(), QStringLiteral("1AW"));
}

TEST_F(Mirror, AHiddenFocusedControlTellsNoFocusToTheRecords) {
    Window.Field[1].GotFocus = [this] { Heard.emplace_back("got"); };
    Window.Field[0].Visible = false; // Qt moves its own focus on
    Turn();
    EXPECT_EQ(Window.ActiveControl, &Window.Field[0]);
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(Mirror, ACheckBoxGoesBothWays) {
    auto *box = Find<QCheckBox>(Window, "chkBox");
    Window.chkBox.Click = [this] { Heard.emplace_back("click"); };
    Window.chkBox.Checked = true;
    Turn();
    EXPECT_TRUE(box->isChecked());
    EXPECT_THAT(Heard, IsEmpty());
    box->click();
    EXPECT_FALSE(Window.chkBox.Checked);
    EXPECT_THAT(Heard, ElementsAre("click"));
}

TEST_F(Mirror, ABoxThatItsHandlerTicksAgainIsTicked) {
    Window.chkBox.Checked = true;
    Turn();
    Window.chkBox.Click = [] { Window.chkBox.Checked = true; };
    Find<QCheckBox>(Window, "chkBox")->click();
    Turn();
    EXPECT_TRUE(Find<QCheckBox>(Window, "chkBox")->isChecked());
}

TEST_F(Mirror, OneOptionOfAGroupIsSet) {
    auto *first = Find<QRadioButton>(Window, "optMode(0)");
    auto *second = Find<QRadioButton>(Window, "optMode(1)");
    EXPECT_TRUE(first->isChecked());
    second->click();
    EXPECT_TRUE(Window.optMode[1].Value);
    EXPECT_FALSE(Window.optMode[0].Value);
    Window.optMode[1].Value = false; // a program may leave none set
    Turn();
    EXPECT_FALSE(first->isChecked());
    EXPECT_FALSE(second->isChecked());
}

TEST_F(Mirror, ArrowsChooseAnOptionAndARow) {
    SetFocus(Window.optMode[0]);
    Turn();
    QTest::keyClick(ViewOf(Window)->windowHandle(), Qt::Key_Down);
    Turn();
    EXPECT_TRUE(Window.optMode[1].Value);
    EXPECT_EQ(Window.ActiveControl, &Window.optMode[1]);
    Window.lstRows.ListIndex = 0;
    Window.lstRows.Click = [this] { Heard.emplace_back("row"); };
    SetFocus(Window.lstRows);
    Turn();
    EXPECT_THAT(Heard, IsEmpty());
    QTest::keyClick(ViewOf(Window)->windowHandle(), Qt::Key_Down);
    Turn();
    EXPECT_EQ(Window.lstRows.ListIndex, 1);
    EXPECT_THAT(Heard, ElementsAre("row"));
}

TEST_F(Mirror, NewRowsAreShownAndChosenByTheRecordAlone) {
    Window.lstRows.Click = [this] { Heard.emplace_back("row"); };
    Window.lstRows.Rows = {"a", "b"};
    Window.lstRows.ListIndex = 1;
    Turn();
    const auto *list = Find<QListWidget>(Window, "lstRows");
    EXPECT_EQ(list->count(), 2);
    EXPECT_EQ(list->currentItem()->text(), QStringLiteral("b"));
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(Mirror, AScrollBarTellsOnlyTheOperatorsMoves) {
    Window.scrSpeed.Change = [this] { Heard.emplace_back(std::to_string(Window.scrSpeed.Value)); };
    Window.scrSpeed.Value = 20;
    Turn();
    auto *bar = Find<QScrollBar>(Window, "scrSpeed");
    EXPECT_EQ(bar->value(), 20);
    EXPECT_THAT(Heard, IsEmpty());
    bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_THAT(Heard, ElementsAre("21"));
}

TEST_F(Mirror, ALabelKeepsItsPlaceWhateverItShows) {
    Window.lblLine.Caption = "short";
    Turn();
    const QRect line = FindWidget(Window, "lblLine")->geometry();
    const QRect below = FindWidget(Window, "lblBelow")->geometry();
    const QSize window = ViewOf(Window)->size();
    Window.lblLine.Visible = false;
    Turn();
    EXPECT_FALSE(FindWidget(Window, "lblLine")->isVisible());
    EXPECT_EQ(FindWidget(Window, "lblBelow")->geometry(), below);
    Window.lblLine.Visible = true;
    Window.lblLine.Caption = std::string(300, 'W');
    Turn();
    EXPECT_EQ(FindWidget(Window, "lblLine")->geometry(), line);
    EXPECT_EQ(FindWidget(Window, "lblBelow")->geometry(), below);
    EXPECT_EQ(ViewOf(Window)->size(), window);
}

TEST_F(Mirror, NothingIsPaintedWhileNothingChanges) {
    Turn();
    // A blinking caret paints by itself.
    QApplication::setCursorFlashTime(0);
    QTest::qWait(50);
    Counter counter;
    qApp->installEventFilter(&counter);
    for (int i = 0; i < 20; ++i)
        Turn();
    EXPECT_EQ(counter.Paints, 0);
    EXPECT_EQ(counter.Layouts, 0);
    Window.lblLine.Caption = "new";
    Turn();
    EXPECT_GT(counter.Paints, 0);  // the counter can count
    EXPECT_EQ(counter.Layouts, 0); // a new text lays nothing out
    qApp->removeEventFilter(&counter);
}

TEST_F(Mirror, AnAmpersandIsALetter) {
    Window.chkBox.Caption = " Q & A";
    Window.cmdOK.Caption = "R&D";
    Turn();
    EXPECT_EQ(Find<QCheckBox>(Window, "chkBox")->text(), QStringLiteral("Q && A"));
    EXPECT_EQ(Find<QPushButton>(Window, "cmdOK")->text(), QStringLiteral("R&&D"));
}

TEST_F(Mirror, AMenuShowsOnlyWithAnEntry) {
    auto *window = static_cast<QMainWindow *>(ViewOf(Window));
    const auto *file = window->findChild<QAction *>(QStringLiteral("mnuFile"));
    const auto *entry = window->findChild<QAction *>(QStringLiteral("mnuFileNew"));
    ASSERT_NE(file, nullptr);
    ASSERT_NE(entry, nullptr);
    EXPECT_TRUE(file->isVisible());
    EXPECT_FALSE(window->findChild<QAction *>(QStringLiteral("mnuEmpty"))->isVisible());
    EXPECT_TRUE(window->findChild<QAction *>(QStringLiteral("mnuFileLine"))->isSeparator());
    Window.mnuFileNew.Enabled = false;
    Window.mnuFileNew.Checked = true;
    Turn();
    EXPECT_FALSE(entry->isEnabled());
    EXPECT_TRUE(entry->isChecked());
    Window.mnuFileNew.Visible = Window.mnuFileExit.Visible = false;
    MirrorRecords(); // one copying is enough
    EXPECT_FALSE(file->isVisible());
}

TEST_F(Mirror, AMenuEntryClicksItsRecord) {
    ViewOf(Window)->findChild<QAction *>(QStringLiteral("mnuFileNew"))->trigger();
    EXPECT_THAT(Heard, ElementsAre("menu"));
}

TEST_F(Mirror, TheCloseBoxAsksTheRecord) {
    Window.CloseBox = [this] { Heard.emplace_back("close"); };
    ViewOf(Window)->close();
    Turn();
    EXPECT_TRUE(ViewOf(Window)->isVisible());
    EXPECT_THAT(Heard, ElementsAre("close"));
    Window.CloseBox = nullptr;
    ViewOf(Window)->close();
    Turn();
    EXPECT_FALSE(ViewOf(Window)->isVisible());
    EXPECT_FALSE(Window.Visible);
}

TEST_F(Mirror, TitleAndCloseBoxFollowTheRecord) {
    EXPECT_EQ(ViewOf(Window)->windowTitle(), QStringLiteral("Small window"));
    Dialog.HasCloseBox = false;
    ShowForm(Dialog);
    Turn();
    EXPECT_FALSE(ViewOf(Dialog)->windowFlags().testFlag(Qt::WindowCloseButtonHint));
}

TEST_F(Mirror, AModalFormIsAboveAndGivesTheKeyboardBack) {
    Window.cmdOK.Click = [] { ShowModal(Dialog); };
    Dialog.txtName.Change = [this] { Heard.emplace_back("typed"); };
    Dialog.cmdOK.Click = [] { HideForm(Dialog); };
    Dialog.cmdOK.Default = true;
    bool checked = false;
    Post([&] {
        Turn();
        EXPECT_EQ(QApplication::activeModalWidget(), ViewOf(Dialog));
        QTest::keyClick(ViewOf(Dialog)->windowHandle(), 'a');
        EXPECT_EQ(Dialog.txtName.Text, "a");
        checked = true;
        QTest::keyClick(ViewOf(Dialog)->windowHandle(), Qt::Key_Return);
    });
    ClickControl(Window.cmdOK); // returns when the dialog is hidden
    Turn();
    EXPECT_TRUE(checked);
    EXPECT_FALSE(ViewOf(Dialog)->isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(QApplication::activeWindow(), ViewOf(Window));
    EXPECT_TRUE(FindWidget(Window, "Field(0)")->hasFocus());
    EXPECT_THAT(Heard, ElementsAre("typed"));
}

TEST_F(Mirror, OfTwoModalFormsTheLaterOneIsActive) {
    Screen.Modal = {&Window, &Dialog};
    Dialog.Visible = true;
    Turn();
    EXPECT_EQ(QApplication::activeModalWidget(), ViewOf(Dialog));
    EXPECT_EQ(QApplication::activeWindow(), ViewOf(Dialog));
    HideForm(Dialog);
    Screen.Modal = {&Window};
    Turn();
    EXPECT_EQ(QApplication::activeModalWidget(), ViewOf(Window));
    EXPECT_EQ(QApplication::activeWindow(), ViewOf(Window));
}

TEST_F(Mirror, AFormWithoutActiveControlFocusesItsFirst) {
    Dialog.ActiveControl = nullptr;
    Dialog.txtName.Enabled = false;
    ShowForm(Dialog);
    Turn();
    EXPECT_EQ(Dialog.ActiveControl, &Dialog.cmdOK);
}

TEST_F(Mirror, PlaceAndSizeGoBothWaysInTwips) {
    Window.Left = 1500;
    Window.Top = 900;
    Window.Width = 600 * 15;
    Window.Height = 500 * 15;
    Turn();
    EXPECT_EQ(ViewOf(Window)->pos(), QPoint(100, 60));
    EXPECT_EQ(ViewOf(Window)->size(), QSize(600, 500));
    ViewOf(Window)->move(20, 30);
    ViewOf(Window)->resize(640, 520);
    Turn();
    EXPECT_EQ(Window.Left, 300);
    EXPECT_EQ(Window.Top, 450);
    EXPECT_EQ(Window.Width, 9600);
    EXPECT_EQ(Window.Height, 7800);
}

TEST_F(Mirror, ARecordWithoutASizeGivesTheWindowThatOfItsView) {
    Turn();
    const QSize own = ViewOf(Window)->size();
    Window.Width = 700 * 15;
    Window.Height = 600 * 15;
    Turn();
    ASSERT_EQ(ViewOf(Window)->size(), QSize(700, 600));
    ASSERT_NE(own, QSize(700, 600));
    Window.Width = Window.Height = 0;
    Turn();
    EXPECT_EQ(ViewOf(Window)->size(), own);
}

TEST_F(Mirror, AWindowFromALostScreenComesIntoSight) {
    Window.Left = 90000 * 15;
    Window.Width = 600 * 15;
    Window.Height = 500 * 15;
    Turn();
    EXPECT_NE(QGuiApplication::screenAt(ViewOf(Window)->pos() + QPoint(40, 10)), nullptr);
}

TEST_F(Mirror, ADupeIsRedAndBoldInBothThemes) {
    auto *edit = Find<QLineEdit>(Window, "Field(0)");
    Window.Field[0].ForeColor = Color::Red;
    Turn();
    EXPECT_TRUE(edit->font().bold());
    const QPalette before = QApplication::palette();
    const QColor light = edit->palette().color(QPalette::Text);
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(0x19, 0x19, 0x19));
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    Turn();
    EXPECT_GE(ContrastOf(edit->palette().color(QPalette::Text), QColor(0x19, 0x19, 0x19)),
              kLeastContrast);
    EXPECT_NE(edit->palette().color(QPalette::Text), light);
    QApplication::setPalette(before);
    Window.Field[0].ForeColor = Color::Black;
    Turn();
    EXPECT_FALSE(edit->font().bold());
}

TEST_F(Mirror, TheBusyPointerShowsWhileTheProgramIsBusy) {
    Screen.BusyPointer = true;
    Turn();
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    Screen.BusyPointer = false;
    Turn();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Mirror, TheBusyPointerDoesNotShowOverABox) {
    Screen.BusyPointer = true;
    Turn();
    {
        const BoxOpen open;
        Turn();
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
    Turn();
    EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Mirror, NoWindowIsBroughtOverABox) {
    ShowForm(Dialog);
    Turn();
    ShowForm(Window);
    Turn();
    Counter counter;
    ViewOf(Dialog)->installEventFilter(&counter);
    {
        const BoxOpen open;
        Screen.Front = &Dialog;
        Turn();
        EXPECT_EQ(counter.Raises, 0);
        EXPECT_EQ(QApplication::activeWindow(), ViewOf(Window));
    }
    Turn();
    EXPECT_EQ(counter.Raises, 1); // the counter can count
    EXPECT_EQ(QApplication::activeWindow(), ViewOf(Dialog));
    ViewOf(Dialog)->removeEventFilter(&counter);
}

TEST_F(Mirror, WidgetsAreNamedForScreenReaders) {
    EXPECT_EQ(FindWidget(Window, "Field(0)")->accessibleName(), QStringLiteral("First field"));
    EXPECT_EQ(FindWidget(Window, "cmdOK")->accessibleDescription(), QStringLiteral("Accepts"));
    Window.lblLine.Caption = "QSO Nr 7"; // a label's text is read
    Turn();
    EXPECT_EQ(FindWidget(Window, "lblLine")->accessibleName(), QStringLiteral("QSO Nr 7"));
    EXPECT_EQ(FindWidget(Window, "lblLine")->accessibleDescription(), QStringLiteral("A line"));
}

TEST_F(Mirror, TheEndOfTheSessionTakesTheProgramsOwnWayOut) {
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &quit);
    EXPECT_FALSE(Program.Ending); // not inside the event
    PumpUntil(Clock.Steady() + kSecond, [] { return false; });
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(Program.ExitStatus, 7);
}

} // namespace
} // namespace zrt
