// The desktop's style without its menu keys, and with a mark on the control that has the keyboard.
// Called by main().
#pragma once

#include <QProxyStyle>

namespace zrt {

class QuietStyle : public QProxyStyle {
  public:
    // The Alt key alone must not take the keyboard from the entry fields to the menu bar.
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returned) const override;
    // Many styles mark a control only behind a key of Qt's own, and some hardly at all.
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
};

void InstallQuietStyle();

} // namespace zrt
