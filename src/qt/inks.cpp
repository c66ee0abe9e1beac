#include "qt/inks.h"

#include <algorithm>
#include <cmath>

namespace zrt {

namespace {

struct Ink {
    Color Name;
    QRgb OnLight;
    QRgb OnDark;
};

constexpr Ink kInks[] = {
    {Color::Blue, 0xff1c3fb8, 0xff8fb0ff},     {Color::Red, 0xffb3001b, 0xffff8a8a},
    {Color::Magenta, 0xff8e0f86, 0xfff08cf0},  {Color::LightBlue, 0xff00639e, 0xff6cc4ff},
    {Color::LightRed, 0xffb23a00, 0xffffa873},
};

double Linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double LuminanceOf(const QColor &color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) +
           0.0722 * Linear(color.blueF());
}

bool IsDark(const QColor &paper) {
    return ContrastOf(paper, QColor(Qt::white)) > ContrastOf(paper, QColor(Qt::black));
}

QColor Mixed(const QColor &from, const QColor &to, double share) {
    const auto mix = [share](int a, int b) {
        return static_cast<int>(std::lround(a + (b - a) * share));
    };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

} // namespace

double ContrastOf(const QColor &a, const QColor &b) {
    const auto [low, high] = std::minmax({LuminanceOf(a), LuminanceOf(b)});
    return (high + 0.05) / (low + 0.05);
}

QColor InkOn(Color color, const QColor &paper, const QColor &ordinary) {
    const auto *found = std::find_if(std::begin(kInks), std::end(kInks),
                                     [color](const Ink &ink) { return ink.Name == color; });
    if (found == std::end(kInks))
        return ordinary;
    // A theme in between the light and the dark ones takes the ink nearer to white or black. One
    // of the two is at 4.58 or better on any paper.
    const bool dark = IsDark(paper);
    const QColor pole(dark ? Qt::white : Qt::black);
    const QColor wanted = QColor::fromRgb(dark ? found->OnDark : found->OnLight);
    QColor ink = wanted;
    for (int step = 1; step <= 10 && ContrastOf(ink, paper) < kLeastContrast; ++step)
        ink = Mixed(wanted, pole, step / 10.0);
    return ink;
}

WarningColors WarningOn(const QColor &background) {
    if (IsDark(background))
        return {QColor(0x5c, 0x45, 0x08), QColor(0xff, 0xef, 0xc4)};
    return {QColor(0xff, 0xe3, 0x9a), QColor(0x33, 0x22, 0x00)};
}

} // namespace zrt
