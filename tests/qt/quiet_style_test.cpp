#include "qt/small_window.h"

#include "qt/inks.h"
#include "qt/mirror.h"

#include <QApplication>
#include <QPixmap>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace zrt {
namespace {

QPalette Theme(QColor window, QColor text) {
    QPalette palette(window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, window);
    return palette;
}

class QuietStyleTest : public SmallWindowTest {
  protected:
    ~QuietStyleTest() override { QApplication::setPalette(Before); }

    static QImage Picture(const char *name) {
        QWidget *widget = FindWidget(Window, name);
        widget->repaint();
        return widget->grab().toImage();
    }

    const QPalette Before = QApplication::palette();
};

// Pixels that the keyboard has changed so much that an eye sees it at once.
int Changed(const QImage &before, const QImage &after) {
    constexpr double kSeen = 3.0;
    EXPECT_EQ(before.size(), after.size());
    int changed = 0;
    for (int y = 0; y < before.height(); ++y)
        for (int x = 0; x < before.width(); ++x)
            if (ContrastOf(before.pixelColor(x, y), after.pixelColor(x, y)) >= kSeen)
                ++changed;
    return changed;
}

TEST_F(QuietStyleTest, MarksTheControlThatHasTheKeyboardOnLightAndOnDark) {
    for (const QPalette &theme : {Theme(QColor(0xef, 0xef, 0xef), Qt::black),
                                  Theme(QColor(0x2b, 0x2b, 0x2b), QColor(0xee, 0xee, 0xee))}) {
        QApplication::setPalette(theme);
        Turn();
        for (Control *control : std::initializer_list<Control *>{
                 &Window.cmdOK, &Window.chkBox, &Window.optMode[0], &Window.lstRows}) {
            const NamedControl &named = *std::find_if(
                RegistrationOf(Window).Controls.begin(), RegistrationOf(Window).Controls.end(),
                [control](const NamedControl &c) { return c.Record == control; });
            SCOPED_TRACE(named.Name);
            SetFocus(Window.Field[0]);
            Turn();
            const QImage before = Picture(named.Name.c_str());
            SetFocus(*control); // as the Tab key does
            Turn();
            ASSERT_TRUE(FindWidget(Window, named.Name.c_str())->hasFocus());
            // A line around at least the text.
            EXPECT_GE(Changed(before, Picture(named.Name.c_str())), 30);
        }
    }
}

TEST_F(QuietStyleTest, LeavesTheKeyboardInTheWindowWhenAltIsPressed) {
    EXPECT_EQ(QApplication::style()->styleHint(QStyle::SH_MenuBar_AltKeyNavigation), 0);
}

} // namespace
} // namespace zrt
