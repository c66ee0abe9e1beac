// What the views show beside the texts of the records: sizes of fonts, bars, the pointer.
#include "qt/real_windows.h"

#include "entry/log_form.h"
#include "qt/inks.h"
#include "qt/widgets.h"

#include <QApplication>
#include <QImage>

namespace zrt {
namespace {

using Details = RealWindows;

TEST_F(Details, TheHintOfTheEmptyWindowIsLargerThanTheOtherTexts) {
    ShowForm(LogForm);
    Turn();
    const auto *hint = ViewOf(LogForm)->findChild<QLabel *>(QStringLiteral("EmptyHint"));
    ASSERT_NE(hint, nullptr);
    EXPECT_TRUE(hint->isVisible());
    EXPECT_GT(hint->font().pointSizeF(), 1.4 * QApplication::font().pointSizeF());
}

TEST_F(Details, ClosingTheWindowsWhileTheProgramIsBusyGivesThePointerBack) {
    Screen.BusyPointer = true;
    Turn();
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    DestroyViews();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

// The rows from the bottom in which most of the first pixels have this colour.
std::vector<int> BarRows(PlaceLabel &label, const QColor &color) {
    const QImage picture = label.grab().toImage();
    std::vector<int> rows;
    for (int y = 0; y < picture.height(); ++y) {
        int fitting = 0;
        for (int x = 0; x < 10; ++x)
            fitting += picture.pixelColor(x, y) == color ? 1 : 0;
        if (fitting == 10)
            rows.push_back(picture.height() - 1 - y);
    }
    return rows;
}

TEST_F(Details, AColourThatSaysSomethingComesWithABarBeneathTheText) {
    const LabelLook look{.Sample = "MMMMMMMM", .MarkColored = true};
    PlaceLabel label(look, nullptr);
    label.resize(label.sizeHint());
    label.ShowText(QStringLiteral("MMMM"));
    EXPECT_EQ(BarRows(label, label.palette().color(QPalette::WindowText)), std::vector<int>{});
    label.SetInk(Color::Red);
    const QPalette colors = label.palette();
    const QColor ink =
        InkOn(Color::Red, colors.color(QPalette::Window), colors.color(QPalette::WindowText));
    EXPECT_EQ(BarRows(label, ink), (std::vector<int>{2, 1, 0}));
}

} // namespace
} // namespace zrt
