#include "qt/quiet_style.h"

#include "qt/inks.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

namespace zrt {

namespace {

constexpr int kMarkWidth = 2;

void DrawMark(QPainter &painter, const QRect &place, const QColor &paper, const QColor &ordinary) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(InkOn(Color::Blue, paper, ordinary), kMarkWidth));
    // The line lies inside its place.
    painter.drawRoundedRect(QRectF(place).adjusted(1, 1, -1, -1), 3, 3);
    painter.restore();
}

} // namespace

int QuietStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *returned) const {
    if (hint == SH_MenuBar_AltKeyNavigation)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

void QuietStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                               QPainter *painter, const QWidget *widget) const {
    const auto *focus = qstyleoption_cast<const QStyleOptionFocusRect *>(option);
    if (element != PE_FrameFocusRect || focus == nullptr) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const QColor paper = focus->backgroundColor.isValid() ? focus->backgroundColor
                                                          : option->palette.color(QPalette::Window);
    DrawMark(*painter, option->rect, paper, option->palette.color(QPalette::WindowText));
}

void QuietStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                             const QWidget *widget) const {
    QProxyStyle::drawControl(element, option, painter, widget);
    // A list may have no row to be marked.
    const bool framed = element == CE_PushButton || element == CE_ShapedFrame;
    if (framed && option->state.testFlag(State_HasFocus))
        DrawMark(*painter, option->rect, option->palette.color(QPalette::Window),
                 option->palette.color(QPalette::WindowText));
}

// The analyzer does not see that the application takes its style over.
// NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks)
void InstallQuietStyle() {
    QApplication::setStyle(new QuietStyle);
}
// NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)

} // namespace zrt
