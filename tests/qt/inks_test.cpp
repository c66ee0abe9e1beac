#include "qt/inks.h"

#include <gtest/gtest.h>

namespace zrt {
namespace {

constexpr Color kInked[] = {Color::Blue, Color::Red, Color::Magenta, Color::LightBlue,
                            Color::LightRed};

TEST(Contrast, IsThatOfTheStandard) {
    EXPECT_NEAR(ContrastOf(Qt::black, Qt::white), 21.0, 0.001);
    EXPECT_NEAR(ContrastOf(Qt::white, Qt::black), 21.0, 0.001);
    EXPECT_NEAR(ContrastOf(Qt::white, Qt::white), 1.0, 0.001);
    EXPECT_NEAR(ContrastOf(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
}

TEST(Inks, AreLegibleOnLightDarkAndGreyPaper) {
    for (const QRgb paper : {0xffffffffU, 0xffefefefU, 0xffd4d0c8U, 0xff808080U, 0xff777777U,
                             0xff353535U, 0xff2d2f33U, 0xff191919U, 0xff000000U})
        for (const Color color : kInked)
            EXPECT_GE(ContrastOf(InkOn(color, QColor(paper), Qt::gray), QColor(paper)),
                      kLeastContrast)
                << std::hex << paper << " ink " << static_cast<int>(color);
}

TEST(Inks, DifferFromEachOtherAndFromTheText) {
    for (const QColor &paper : {QColor(Qt::white), QColor(0x2d, 0x2f, 0x33)}) {
        const QColor text = paper == QColor(Qt::white) ? Qt::black : Qt::white;
        for (const Color a : kInked) {
            EXPECT_NE(InkOn(a, paper, text), text);
            for (const Color b : kInked) {
                if (a != b) {
                    EXPECT_NE(InkOn(a, paper, text), InkOn(b, paper, text));
                }
            }
        }
    }
}

TEST(Inks, BlackAndWhiteAreTheTextOfTheTheme) {
    EXPECT_EQ(InkOn(Color::Black, Qt::black, Qt::green), QColor(Qt::green));
    EXPECT_EQ(InkOn(Color::White, Qt::white, Qt::green), QColor(Qt::green));
}

TEST(Inks, AWarningIsLegibleInBothThemes) {
    for (const QColor &background : {QColor(0xef, 0xef, 0xef), QColor(0x2d, 0x2f, 0x33)}) {
        const WarningColors warning = WarningOn(background);
        EXPECT_GE(ContrastOf(warning.Ink, warning.Paper), kLeastContrast);
    }
}

} // namespace
} // namespace zrt
