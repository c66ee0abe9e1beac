// The post-contest dialog in its window: what moves, what a click does, who has the keyboard.
#include "app/post_contest.h"
#include "qt/real_windows.h"
#include "qt/widgets.h"

#include <QCheckBox>
#include <QListWidget>
#include <QTest>

#include <map>

namespace zrt {
namespace {

class PostContestView : public RealWindows {
  protected:
    PostContestView() {
        PostContest.lstOverlay.Rows = {"[NONE]"};
        PostContest.lblFields.Caption = "Prec    Call        Ck      Section";
        PostContest.lblNormal.Caption = "Normal Summary, Log and Dupe Files";
        Edit(false);
        ShowForm(PostContest);
        Turn();
    }
    static void Edit(bool editing) {
        PostContest.lblExchangeSent.Visible = PostContest.cmdEdit.Visible = !editing;
        PostContest.lblFields.Visible = editing;
        for (TextBox &field : PostContest.TextExch)
            field.Visible = editing;
        PostContest.cmdExchOK.Visible = PostContest.cmdExchCancel.Visible = editing;
    }
    template <class T> static T *Widget(const char *name) {
        auto *widget = ViewOf(PostContest)->findChild<T *>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    static std::map<std::string, QRect> Places() {
        std::map<std::string, QRect> places;
        for (const NamedControl &named : RegistrationOf(PostContest).Controls) {
            const auto *widget = Widget<QWidget>(named.Name.c_str());
            if (widget->isVisible())
                places[named.Name] = {widget->mapTo(ViewOf(PostContest), QPoint()), widget->size()};
        }
        return places;
    }
    // What shows in both states stands where it stood.
    static void ExpectNothingMoved(const std::map<std::string, QRect> &before) {
        for (const auto &[name, place] : Places()) {
            if (const auto found = before.find(name); found != before.end()) {
                EXPECT_EQ(found->second, place) << name;
            }
        }
    }
};

TEST_F(PostContestView, NothingMovesWhileTheExchangeIsEdited) {
    const auto before = Places();
    const QSize size = ViewOf(PostContest)->size();
    ASSERT_GT(before.size(), 15U);
    Edit(true);
    Turn();
    EXPECT_TRUE(Widget<QWidget>("TextExch(3)")->isVisible());
    EXPECT_FALSE(Widget<QWidget>("cmdEdit")->isVisible());
    EXPECT_EQ(size, ViewOf(PostContest)->size());
    ExpectNothingMoved(before);
}

TEST_F(PostContestView, NothingMovesWhenTheOptionsOfTheExportAppear) {
    PostContest.chkOmitJas.Visible = PostContest.chkOmitUs.Visible = false;
    Turn();
    const auto before = Places();
    PostContest.chkOmitJas.Visible = PostContest.chkOmitUs.Visible = true;
    Turn();
    EXPECT_TRUE(Widget<QWidget>("chkOmitUs")->isVisible());
    EXPECT_EQ(before.size() + 2, Places().size());
    ExpectNothingMoved(before);
}

TEST_F(PostContestView, WithAllShownItFitsASmallScreen) {
    PostContest.lstOverlay.Rows = {"[NONE]", "ROOKIE", "TB-WIRES", "OVER-50"};
    Turn();
    EXPECT_LE(ViewOf(PostContest)->width(), 1024);
    EXPECT_LE(ViewOf(PostContest)->height(), 700); // a panel and a title bar take the rest of 768
}

TEST_F(PostContestView, ALongPathDoesNotWidenIt) {
    const QSize size = ViewOf(PostContest)->size();
    PostContest.lblLogFile.Caption = " Log File: /" + std::string(59, 'W');
    Turn();
    EXPECT_EQ(size, ViewOf(PostContest)->size());
}

TEST_F(PostContestView, AListWithoutUseLeavesNoGap) {
    for (Control *control : std::initializer_list<Control *>{
             &PostContest.lstOverlay, &PostContest.lblOverlay, &PostContest.lstBand,
             &PostContest.lblBand, &PostContest.lstMode, &PostContest.lblMode})
        control->Visible = true;
    Turn();
    const auto all = Places();
    const int gap = all.at("lstOverlay").left() - all.at("lstClass").right();
    for (Control *control : std::initializer_list<Control *>{
             &PostContest.lstOverlay, &PostContest.lblOverlay, &PostContest.lstBand,
             &PostContest.lblBand, &PostContest.lstMode, &PostContest.lblMode})
        control->Visible = false;
    Turn();
    const auto few = Places();
    EXPECT_EQ(few.at("lstClass"), all.at("lstClass"));
    EXPECT_EQ(gap, few.at("lstPower").left() - few.at("lstClass").right());
}

TEST_F(PostContestView, AClickOnTheLabelTicksItsBoxWhileItIsEnabled) {
    auto *label = Widget<QWidget>("lblNormal");
    PostContest.chkNormal.Enabled = PostContest.lblNormal.Enabled = true;
    PostContest.chkNormal.Checked = false;
    Turn();
    QTest::mouseClick(label, Qt::LeftButton);
    Turn();
    EXPECT_TRUE(PostContest.chkNormal.Checked);
    EXPECT_TRUE(Widget<QCheckBox>("chkNormal")->isChecked());
    QTest::mouseClick(label, Qt::LeftButton);
    EXPECT_FALSE(PostContest.chkNormal.Checked);
    PostContest.chkNormal.Enabled = PostContest.lblNormal.Enabled = false;
    Turn();
    QTest::mouseClick(label, Qt::LeftButton);
    EXPECT_FALSE(PostContest.chkNormal.Checked);
    EXPECT_EQ("Normal Summary, Log and Dupe Files",
              Widget<QCheckBox>("chkNormal")->accessibleName().toStdString());
}

TEST_F(PostContestView, ListsAreAsHighAsTheirRows) {
    for (const char *name : {"lstClass", "lstBand", "lstMode", "lstPower", "lstStation"}) {
        const auto *list = Widget<QListWidget>(name);
        ASSERT_GT(list->count(), 0) << name;
        EXPECT_EQ(list->count() * list->sizeHintForRow(0), list->viewport()->height()) << name;
        EXPECT_GE(list->viewport()->width(), list->sizeHintForColumn(0)) << name;
    }
}

TEST_F(PostContestView, TextBoxesStandUnderTheirWords) {
    Edit(true);
    Turn();
    const auto places = Places();
    const QFontMetrics metrics(Widget<QWidget>("lblFields")->font());
    const int label = places.at("lblFields").left();
    const int advance = metrics.horizontalAdvance(QLatin1Char('W'));
    EXPECT_NEAR(label, places.at("TextExch(0)").left(), 2);
    EXPECT_NEAR(label + 8 * advance, places.at("TextExch(1)").left(), 4);
    EXPECT_NEAR(label + 20 * advance, places.at("TextExch(2)").left(), 4);
    EXPECT_NEAR(label + 28 * advance, places.at("TextExch(3)").left(), 4);
}

TEST_F(PostContestView, TextBoxesHoldTheWidestTextsOfTheirContests) {
    struct Row {
        const char *Label;
        std::vector<int> Characters;
    };
    for (const Row &row :
         {Row{"Prec    Call        Ck      Section", {1, 10, 2, 3}},
          Row{"Name          Mult", {10, 3}}, Row{"Multiplier", {10}}, Row{"Exchange", {15}}}) {
        PostContest.lblFields.Caption = row.Label;
        Edit(true);
        for (std::size_t i = row.Characters.size(); i < PostContest.TextExch.size(); ++i)
            PostContest.TextExch[i].Visible = false;
        Turn();
        for (std::size_t i = 0; i < row.Characters.size(); ++i) {
            const auto *field = Widget<QWidget>(("TextExch(" + std::to_string(i) + ")").c_str());
            const QString text(row.Characters[i], QLatin1Char('W'));
            EXPECT_GE(field->width() - 8, field->fontMetrics().horizontalAdvance(text))
                << row.Label << " " << i;
        }
    }
}

TEST_F(PostContestView, TheListWithTheKeyboardStandsOut) {
    SetFocus(PostContest.lstPower);
    Turn();
    const QColor strong = QPalette().color(QPalette::Highlight);
    const auto highlight = [](const char *name) {
        return Widget<QListWidget>(name)->palette().color(QPalette::Highlight);
    };
    EXPECT_EQ(strong, highlight("lstPower"));
    EXPECT_NE(strong, highlight("lstClass"));
    SetFocus(PostContest.lstClass);
    Turn();
    EXPECT_EQ(strong, highlight("lstClass"));
    EXPECT_NE(strong, highlight("lstPower"));
}

} // namespace
} // namespace zrt
