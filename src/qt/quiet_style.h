// The desktop's style without its menu keys. Called by main().
#pragma once

#include <QApplication>
#include <QProxyStyle>

namespace zrt {

// The Alt key alone must not take the keyboard from the entry fields to the menu bar.
class QuietStyle : public QProxyStyle {
  public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returned) const override {
        if (hint == SH_MenuBar_AltKeyNavigation)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

// The analyzer does not see that the application takes its style over.
// NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks)
inline void InstallQuietStyle() {
    QApplication::setStyle(new QuietStyle);
}
// NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)

} // namespace zrt
