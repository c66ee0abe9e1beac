// The colours of the records on the background of the desktop's theme. Called by widgets.cpp and
// mirror.cpp.
#pragma once

#include "platform/controls.h"

#include <QColor>

namespace zrt {

// Every ink but the ordinary one stands out at least this much (the ratio of WCAG 2).
inline constexpr double kLeastContrast = 4.5;

double ContrastOf(const QColor &a, const QColor &b);

// Black is the theme's own text colour, `ordinary`; so is White, which no paper could show.
QColor InkOn(Color color, const QColor &paper, const QColor &ordinary);

// A strip of warning: its paper and the ink on it, for a theme with this background.
struct WarningColors {
    QColor Paper;
    QColor Ink;
};
WarningColors WarningOn(const QColor &background);

} // namespace zrt
