#include "app/about_box.h"
#include "app/background.h"
#include "app/band_mode.h"
#include "app/contest_chooser.h"
#include "app/post_contest.h"
#include "app/user_info.h"
#include "entry/log_form.h"
#include "qt/mirror_places.h"
#include "qt/real_windows.h"
#include "qt/widgets.h"
#include "session/contests.h"

#include <QLineEdit>
#include <QListWidget>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTest>

namespace zrt {
namespace {

// The program's own windows, with records as a contest would fill them.
class Views : public RealWindows {
  protected:
    Views() : Before(ScreensThere) {
        ScreensThere = [] { return std::vector<QRect>{{0, 0, 1920, 1080}}; };
        ShowForm(LogForm);
        Turn();
    }
    ~Views() override { ScreensThere = Before; }
    static QWidget *Widget(const char *name) {
        auto *widget = ViewOf(LogForm)->findChild<QWidget *>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    static QRect Place(const char *name) {
        const QWidget *widget = Widget(name);
        return {widget->mapTo(ViewOf(LogForm), QPoint()), widget->size()};
    }
    std::vector<QRect> (*Before)();
    static void SetAll(bool visible) {
        for (const NamedControl &named : RegistrationOf(LogForm).Controls) {
            if (named.Record->Kind == ControlKind::Label ||
                named.Record->Kind == ControlKind::TextBox ||
                named.Record->Kind == ControlKind::CheckBox)
                named.Record->Visible = visible;
        }
    }
};

TEST_F(Views, EveryWindowHasOne) {
    for (const Form *form : std::initializer_list<const Form *>{
             &LogForm, &ChCoForm, &BandMode, &Aboutzrt, &BkgdForm, &UserInfo, &PostContest})
        EXPECT_NE(ViewOf(*form), nullptr);
    for (const NamedForm &form : RegisteredForms())
        EXPECT_NE(ViewOf(*form.Record), nullptr) << form.Name;
}

TEST_F(Views, TheEntryWindowFitsASmallScreen) {
    SetAll(true);
    Turn();
    EXPECT_GE(ViewOf(LogForm)->minimumWidth(), 760);
    EXPECT_LE(ViewOf(LogForm)->width(), 1366);
    EXPECT_LE(ViewOf(LogForm)->height(), 700); // a panel and a title bar take the rest of 768
}

// The next contest may have no place for it: it gets the size of the first start again.
TEST_F(Views, TheEntryWindowWithoutAPlaceHasItsOwnSize) {
    Turn();
    const int width = ViewOf(LogForm)->width();
    LogForm.Width = 1200 * 15;
    LogForm.Height = 700 * 15;
    Turn();
    ASSERT_EQ(ViewOf(LogForm)->width(), 1200);
    LogForm.Width = LogForm.Height = 0;
    Turn();
    EXPECT_EQ(ViewOf(LogForm)->width(), width);
    EXPECT_NE(width, 1200);
}

TEST_F(Views, ANewWindowSaysHowToStart) {
    SetAll(false);
    Turn();
    EXPECT_TRUE(Widget("EmptyHint")->isVisible());
    LogForm.InData[0].Visible = true;
    Turn();
    EXPECT_FALSE(Widget("EmptyHint")->isVisible());
}

TEST_F(Views, TheDupeLineStandsWhereTheCaptionsStood) {
    SetAll(true);
    Turn();
    const QRect call = Place("lblCallsign");
    const QRect exchange = Place("lblExchange");
    const QRect dupe = Place("lblDupe");
    EXPECT_EQ(dupe.left(), call.left());
    EXPECT_GE(dupe.right(), exchange.right());
    EXPECT_LE(std::abs(dupe.center().y() - call.center().y()), 4);
}

TEST_F(Views, NothingMovesWhenLabelsComeAndGo) {
    SetAll(false);
    for (TextBox &field : LogForm.InData)
        field.Visible = true;
    Turn();
    const QSize window = ViewOf(LogForm)->size();
    const char *const names[] = {"InData(0)", "InData(1)", "lblLast", "CallMatchLabel1"};
    std::vector<QRect> before;
    for (const char *name : names)
        before.push_back(Place(name));
    SetAll(true);
    for (const NamedControl &named : RegistrationOf(LogForm).Controls)
        if (named.Record->Kind == ControlKind::Label)
            static_cast<Label &>(*named.Record).Caption = std::string(200, 'W');
    Turn();
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(Place(names[i]), before[i]) << names[i];
    EXPECT_EQ(ViewOf(LogForm)->size(), window);
}

TEST_F(Views, TheCallFieldHoldsTenWideCharacters) {
    LogForm.InData[0].Visible = true;
    LogForm.InData[0].ForeColor = Color::Red; // bold
    ViewOf(LogForm)->resize(760, ViewOf(LogForm)->height());
    Turn();
    const auto *field = static_cast<QLineEdit *>(Widget("InData(0)"));
    EXPECT_GT(field->width() - 20,
              field->fontMetrics().horizontalAdvance(QStringLiteral("WWWWWWWWWW")));
    EXPECT_GT(Widget("InData(1)")->width(), field->width());
}

TEST_F(Views, ALongModeLabelStandsBelowTheFields) {
    LogForm.InData[0].Visible = true;
    LogForm.Modelabel.Visible = true;
    LogForm.Modelabel.Caption = " CW:";
    Turn();
    EXPECT_TRUE(Widget("Modelabel")->isVisible());
    EXPECT_FALSE(Widget("ModeLine")->isVisible());
    LogForm.Modelabel.Caption = " CW:\nSSB:";
    Turn();
    EXPECT_TRUE(Widget("Modelabel")->isVisible());
    LogForm.Modelabel.Caption = "NY needed on  10 [15] 20";
    Turn();
    EXPECT_FALSE(Widget("Modelabel")->isVisible());
    ASSERT_TRUE(Widget("ModeLine")->isVisible());
    EXPECT_EQ(static_cast<PlaceLabel *>(Widget("ModeLine"))->ShownText(),
              QStringLiteral("NY needed on  10 [15] 20"));
}

TEST_F(Views, TheNumberOfAContactIsReadableAtTheNarrowestWidth) {
    SetAll(true);
    ViewOf(LogForm)->resize(760, ViewOf(LogForm)->height());
    Turn();
    for (const char *name : {"QSONrLabel", "ScoreLabel", "MultsLabel", "TimeGMTLabel",
                             "TimeLocalLabel", "LabelSendingMsg", "lblDupe"})
        EXPECT_GE(Widget(name)->width(), Widget(name)->sizeHint().width()) << name;
}

TEST_F(Views, TheWarningIsShownToItsEnd) {
    LogForm.InData[0].Visible = true;
    LogForm.lblNotOnDisk.Visible = true;
    LogForm.lblNotOnDisk.Caption =
        "NOT ON DISK: 9 QSOs, Nr 1232 to 1240.  It is tried again every 10 seconds and with the "
        "next QSO.  File, Save As writes the log to another disk.";
    ViewOf(LogForm)->resize(760, ViewOf(LogForm)->height());
    Turn();
    const auto *label = static_cast<PlaceLabel *>(Widget("lblNotOnDisk"));
    const QRect needed = label->fontMetrics().boundingRect(QRect(0, 0, label->width() - 50, 1000),
                                                           Qt::TextWordWrap, label->ShownText());
    EXPECT_LE(needed.height(), label->height());
}

TEST_F(Views, TheChooserIsWorkedWithTheKeyboard) {
    Screen.Modal = {&ChCoForm};
    ChCoForm.Visible = true;
    ChCoForm.lstContest.Rows = {"AA", "ARRL 10", "ARRL DX"};
    ChCoForm.lstContest.Click = [] {};
    ChCoForm.lstContest.ListIndex = 0;
    ChCoForm.ActiveControl = &ChCoForm.lstContest;
    int cancelled = 0;
    ChCoForm.cmdCancel.Cancel = true;
    ChCoForm.cmdCancel.Click = [&cancelled] { ++cancelled; };
    Turn();
    ASSERT_TRUE(QTest::qWaitForWindowActive(ViewOf(ChCoForm)));
    QTest::keyClick(ViewOf(ChCoForm)->windowHandle(), Qt::Key_Down);
    EXPECT_EQ(ChCoForm.lstContest.ListIndex, 1);
    QTest::keyClick(ViewOf(ChCoForm)->windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(cancelled, 1);
    Screen.Modal.clear();
    HideForm(ChCoForm);
}

TEST_F(Views, AClickInTheEntryWindowLeavesTheKeyboardInTheField) {
    for (TextBox &field : LogForm.InData)
        field.Visible = true;
    LogForm.CheckCall.Visible = LogForm.AddButton.Visible = LogForm.CancelButton.Visible = true;
    LogForm.AddButton.Click = LogForm.CancelButton.Click = [] {};
    SetFocus(LogForm.InData[1]);
    Turn();
    ASSERT_TRUE(QTest::qWaitForWindowActive(ViewOf(LogForm)));
    for (const char *name : {"CheckCall", "AddButton", "CancelButton", "lblLast"}) {
        SCOPED_TRACE(name);
        QTest::mouseClick(Widget(name), Qt::LeftButton, {}, QPoint(8, 8));
        Turn();
        EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[1]);
        EXPECT_TRUE(Widget("InData(1)")->hasFocus());
    }
    EXPECT_TRUE(LogForm.CheckCall.Checked); // the click did its work
}

TEST_F(Views, TheExchangeFieldIsAsWideAsTheContestsExchangeAsks) {
    const auto widthFor = [](int columns) {
        LogForm.InData[0].Visible = LogForm.InData[1].Visible = true;
        LogForm.InData[1].Columns = columns;
        Turn();
        QWidget *window = ViewOf(LogForm);
        window->resize(1000, window->height());
        Turn();
        return window->findChild<QWidget *>(QStringLiteral("InData(1)"))->width();
    };
    const int oneWord = widthFor(8);
    const int exchange = widthFor(18);
    const int notes = widthFor(24);
    EXPECT_LT(oneWord, exchange);
    EXPECT_LT(exchange, notes);
}

TEST_F(Views, TheLongestSweepstakesExchangeShowsWholeAtTheNarrowestWidth) {
    Contest.ContestId = kSs;
    SetAll(true);
    ShowEntryFields();
    LogForm.InData[1].Text = "9999 A VP2E/K1ABC 72 SCV";
    Turn();
    ViewOf(LogForm)->resize(ViewOf(LogForm)->minimumSize());
    Turn();
    const auto *field = static_cast<QLineEdit *>(Widget("InData(1)"));
    const int needed = field->fontMetrics().horizontalAdvance(field->text()) + 1; // the caret
    QStyleOptionFrame option;
    option.initFrom(field);
    option.lineWidth = field->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, field);
    const QRect inside =
        field->style()->subElementRect(QStyle::SE_LineEditContents, &option, field);
    const QMargins margins = field->textMargins();
    EXPECT_GE(inside.width() - margins.left() - margins.right() - 2 * 2, needed);
    Contest = {};
}

TEST_F(Views, EachDialogShowsItsWholeTitle) {
    for (const NamedForm &form : RegisteredForms()) {
        if (ViewOf(*form.Record)->windowType() != Qt::Dialog)
            continue;
        form.Record->Visible = true;
        Turn();
        EXPECT_GE(ViewOf(*form.Record)->width(),
                  TitleWidth(QString::fromStdString(form.Record->Caption)))
            << form.Record->Caption;
        form.Record->Visible = false;
        Turn();
    }
}

} // namespace
} // namespace zrt
