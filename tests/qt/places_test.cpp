// Where windows stand, on screens that the tests put in place.
#include "qt/small_window.h"

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "qt/mirror.h"
#include "qt/mirror_places.h"

#include <QApplication>
#include <QTest>
#include <QWindow>

#include <gmock/gmock.h>

namespace zrt {
namespace {

constexpr int kTwips = 15;
constexpr QRect kLeftScreen(0, 0, 1366, 768);
constexpr QRect kRightScreen(1366, 0, 1280, 1024);

std::vector<QRect> There;
Microseconds Now = 0;

class Places : public SmallWindowTest {
  protected:
    Places() : Before(ScreensThere) {
        There = {kLeftScreen};
        ScreensThere = [] { return There; };
        Clock.Steady = [] { return Now; };
        Turn();
        Settle();
    }
    ~Places() override { ScreensThere = Before; }

    // Lets the time pass in which the window manager answers to the program.
    static void Settle() { Now += 5 * kSecond; }
    static void Ask(Form &form, QRect place) {
        form.Left = place.left() * kTwips;
        form.Top = place.top() * kTwips;
        form.Width = place.width() * kTwips;
        form.Height = place.height() * kTwips;
        Turn();
    }
    static QRect Asked(const Form &form) {
        return {form.Left / kTwips, form.Top / kTwips, form.Width / kTwips, form.Height / kTwips};
    }
    static QRect FrameOf(const Form &form) { return ViewOf(form)->frameGeometry(); }
    static QRect PlaceOf(const Form &form) { return {ViewOf(form)->pos(), ViewOf(form)->size()}; }
    // As the window manager moves a window, for the operator or on its own account.
    static void MoveFrame(const Form &form, QPoint corner) {
        ViewOf(form)->windowHandle()->setFramePosition(corner);
        Turn();
    }

  private:
    std::vector<QRect> (*Before)();
};

TEST(OnScreens, LeavesWhatIsInSightAndMovesTheWholeFrameThere) {
    const std::vector<QRect> both = {kLeftScreen, kRightScreen};
    struct Case {
        QRect Frame, Seen;
    };
    const Case cases[] = {
        {{10, 20, 760, 400}, {10, 20, 760, 400}},
        {{1000, 20, 760, 400}, {1000, 20, 760, 400}},   // on both
        {{800, 600, 500, 400}, {800, 368, 500, 400}},   // below the left one
        {{-30, -10, 500, 400}, {0, 0, 500, 400}},       // the title bar above
        {{2500, 900, 500, 400}, {2146, 624, 500, 400}}, // a corner on the right one
        {{9000, 50, 500, 400}, {866, 50, 500, 400}},    // on none: the main one
        {{10, 20, 1300, 900}, {10, 0, 1300, 768}},      // larger than its screen
    };
    for (const Case &c : cases)
        EXPECT_EQ(OnScreens(c.Frame, both), c.Seen) << c.Frame.x() << ' ' << c.Frame.y();
    EXPECT_EQ(OnScreens({1, 2, 3, 4}, {}), QRect(1, 2, 3, 4)) << "nothing is known of screens";
}

TEST_F(Places, AWindowIsOnTheScreenWithItsWholeFrame) {
    Ask(Window, {1000, 500, 600, 500});
    ASSERT_NE(FrameOf(Window).size(), ViewOf(Window)->size()) << "no frame to look at";
    EXPECT_TRUE(kLeftScreen.contains(FrameOf(Window)));
    EXPECT_EQ(ViewOf(Window)->size(), QSize(600, 500));
}

TEST_F(Places, AWindowLargerThanTheScreenIsCutToIt) {
    Ask(Window, {100, 100, 1500, 1000});
    EXPECT_EQ(FrameOf(Window), kLeftScreen);
    EXPECT_EQ(Asked(Window), QRect(100, 100, 1500, 1000));
}

TEST_F(Places, TheRecordKeepsThePlaceThatTheScreensDoNotReach) {
    Ask(Window, {1500, 500, 600, 500});
    EXPECT_TRUE(kLeftScreen.contains(FrameOf(Window)));
    EXPECT_EQ(Asked(Window), QRect(1500, 500, 600, 500));
    Settle();
    ViewOf(Window)->resize(640, 520); // the operator makes it larger, and moves nothing
    Turn();
    EXPECT_EQ(Asked(Window), QRect(1500, 500, 640, 520));
}

TEST_F(Places, AWindowGoesHomeWhenItsScreenIsThereAgain) {
    Ask(Window, {1500, 400, 600, 500});
    There = {kLeftScreen, kRightScreen};
    Turn();
    EXPECT_EQ(PlaceOf(Window), QRect(1500, 400, 600, 500));
    There = {kLeftScreen};
    Turn();
    EXPECT_TRUE(kLeftScreen.contains(FrameOf(Window)));
    EXPECT_EQ(Asked(Window), QRect(1500, 400, 600, 500));
}

TEST_F(Places, ThePlaceThatTheOperatorGivesIsTheRecords) {
    Ask(Window, {1500, 500, 600, 500});
    Settle();
    MoveFrame(Window, {200, 150});
    EXPECT_EQ(Asked(Window), QRect(200, 150, 600, 500));
    MoveFrame(Window, {1000, 600}); // partly out of sight, as he wants it
    EXPECT_EQ(Asked(Window), QRect(1000, 600, 600, 500));
    EXPECT_EQ(ViewOf(Window)->pos(), QPoint(1000, 600));
}

TEST_F(Places, TheAnswerOfTheWindowManagerIsNoPlaceOfTheOperators) {
    Ask(Window, {300, 200, 600, 500});
    MoveFrame(Window, {310, 230}); // it makes room for a bar of its own
    EXPECT_EQ(Asked(Window), QRect(300, 200, 600, 500));
    EXPECT_EQ(ViewOf(Window)->pos(), QPoint(310, 230)) << "not fought over";
    Settle();
    ViewOf(Window)->resize(620, 500);
    Turn();
    EXPECT_EQ(Asked(Window), QRect(300, 200, 620, 500));
}

TEST_F(Places, AWindowThatTheWindowManagerPutsOutOfSightComesBackOnce) {
    Ask(Window, {300, 200, 600, 500});
    MoveFrame(Window, {1200, 700});
    MoveFrame(Window, {1200, 700});
    EXPECT_EQ(Asked(Window), QRect(300, 200, 600, 500));
}

TEST_F(Places, AWindowWithoutAPlaceStaysWhereItIsAndHasNone) {
    EXPECT_FALSE(HasPlace(Window));
    const QPoint before = ViewOf(Window)->pos();
    Window.Width = 600 * kTwips;
    Window.Height = 500 * kTwips;
    Turn();
    EXPECT_EQ(ViewOf(Window)->pos(), before);
    EXPECT_FALSE(HasPlace(Window));
}

TEST_F(Places, TheCornerOfTheScreenIsAPlace) {
    MoveFrame(Window, {50, 60});
    Window.Placed = true;
    Ask(Window, {0, 0, 600, 500});
    EXPECT_EQ(ViewOf(Window)->pos(), QPoint(0, 0));
}

TEST_F(Places, AMaximisedWindowKeepsThePlaceBefore) {
    Ask(Window, {300, 200, 600, 500});
    Settle();
    ViewOf(Window)->showMaximized();
    Turn();
    ASSERT_TRUE(ViewOf(Window)->isMaximized());
    ASSERT_NE(ViewOf(Window)->size(), QSize(600, 500));
    EXPECT_EQ(Asked(Window), QRect(300, 200, 600, 500));
    ViewOf(Window)->showNormal();
    Turn();
    EXPECT_EQ(Asked(Window), QRect(300, 200, 600, 500));
}

TEST_F(Places, ADialogOpensOverTheWindowThatItBelongsTo) {
    Ask(Window, {300, 150, 700, 560});
    Screen.Modal = {&Dialog};
    Dialog.Visible = true;
    Turn();
    EXPECT_EQ(ViewOf(Dialog)->windowHandle()->transientParent(), ViewOf(Window)->windowHandle());
    const QPoint off = FrameOf(Dialog).center() - FrameOf(Window).center();
    EXPECT_LE(off.manhattanLength(), 4);
    HideForm(Dialog);
    Screen.Modal.clear();
    Ask(Window, {0, 500, 700, 250});
    Screen.Modal = {&Dialog};
    Dialog.Visible = true;
    Turn();
    EXPECT_LE(std::abs(FrameOf(Dialog).center().x() - FrameOf(Window).center().x()), 4)
        << "it goes with the window";
    EXPECT_TRUE(kLeftScreen.contains(FrameOf(Dialog)));
}

TEST_F(Places, AWindowWithoutTheKeyboardOpensBesideItsOwner) {
    ViewOf(Dialog)->setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    Ask(Window, {300, 20, 700, 500});
    Dialog.Visible = true;
    Turn();
    EXPECT_FALSE(FrameOf(Dialog).intersects(FrameOf(Window)));
    EXPECT_TRUE(kLeftScreen.contains(FrameOf(Dialog)));
    EXPECT_EQ(ViewOf(Dialog)->windowHandle()->transientParent(), ViewOf(Window)->windowHandle());
}

} // namespace
} // namespace zrt
