#include "qt/mirror_places.h"

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace zrt {

namespace {

constexpr int kTwips = 15; // to the pixel
// The window manager has answered to a window that was shown or moved when this time is over.
constexpr Microseconds kSettling = kSecond;

std::vector<QRect> ScreensOfDesktop() {
    std::vector<QRect> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens.push_back(screen->availableGeometry());
    return screens;
}

std::int64_t AreaOf(const QRect &rect) {
    return rect.isEmpty() ? 0 : std::int64_t{rect.width()} * rect.height();
}

bool IsInSight(const QRect &frame, const std::vector<QRect> &screens) {
    QRegion hidden(frame);
    for (const QRect &screen : screens)
        hidden -= screen;
    return hidden.isEmpty();
}

// A window that fills a screen, or is an icon, is placed when it is a window again.
bool HasFreePlace(const QWidget &window) {
    return !window.isMaximized() && !window.isMinimized() && !window.isFullScreen();
}

QMargins FrameOf(const QWidget &window, const WindowPlace &place) {
    if (!window.isVisible())
        return place.Frame;
    const QRect outer = window.frameGeometry();
    const QRect inner = window.geometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

PlaceAsked AskedBy(const Form &record) {
    return {record.Left, record.Top, record.Width, record.Height, record.Placed};
}

// A record without a size leaves it to the view: what that had chosen, or what its layout needs.
QSize SizeAsked(const Form &record, QWidget &window, const WindowPlace &place, bool anew) {
    QSize size = place.SizeOfView;
    if (record.Width > 0 && record.Height > 0)
        size = {record.Width / kTwips, record.Height / kTwips};
    if (!size.isValid()) {
        if (anew)
            window.adjustSize();
        return window.size();
    }
    return size.expandedTo(window.minimumSizeHint()).expandedTo(window.minimumSize());
}

// Gives the window the frame, or what the screens have room for. Not again what it was given
// before: then the window manager would not have it so.
void Put(QWidget &window, WindowPlace &place, const QRect &frame) {
    const QRect seen = OnScreens(frame, place.Screens);
    if (seen == std::exchange(place.Put, seen))
        return;
    if (const QSize inside = seen.size().shrunkBy(place.Frame); inside != window.size())
        window.resize(inside);
    if (!window.isVisible() || seen.topLeft() != window.pos())
        window.move(seen.topLeft());
    place.Corner = window.pos();
    place.Size = window.size();
    place.SettledAt = Clock.Steady() + kSettling;
}

QRect Beside(const QRect &owner, QSize size, const std::vector<QRect> &screens) {
    const std::array<QPoint, 4> corners = {QPoint(owner.left(), owner.bottom() + 1),
                                           QPoint(owner.right() + 1, owner.top()),
                                           QPoint(owner.left(), owner.top() - size.height()),
                                           QPoint(owner.left() - size.width(), owner.top())};
    const auto *corner = std::find_if(corners.begin(), corners.end(), [&](QPoint point) {
        return IsInSight(QRect(point, size), screens);
    });
    return {corner == corners.end() ? corners.front() : *corner, size};
}

} // namespace

std::vector<QRect> (*ScreensThere)() = ScreensOfDesktop;

QRect OnScreens(const QRect &frame, const std::vector<QRect> &screens) {
    if (screens.empty() || IsInSight(frame, screens))
        return frame;
    const QRect &screen =
        *std::max_element(screens.begin(), screens.end(), [&](const QRect &a, const QRect &b) {
            return AreaOf(a & frame) < AreaOf(b & frame);
        });
    QRect seen(frame.topLeft(), frame.size().boundedTo(screen.size()));
    seen.moveLeft(std::clamp(seen.left(), screen.left(), screen.right() + 1 - seen.width()));
    seen.moveTop(std::clamp(seen.top(), screen.top(), screen.bottom() + 1 - seen.height()));
    return seen;
}

void MirrorPlace(const Form &record, QWidget &window, WindowPlace &place) {
    if (!HasFreePlace(window))
        return;
    const PlaceAsked asked = AskedBy(record);
    const QMargins frame = FrameOf(window, place);
    std::vector<QRect> screens = ScreensThere();
    if (asked == place.Asked && frame == place.Frame && screens == place.Screens)
        return;
    const bool anew = asked != place.Asked;
    if (anew)
        place.Put = {};
    place.Asked = asked;
    place.Frame = frame;
    place.Screens = std::move(screens);
    const QSize size = SizeAsked(record, window, place, anew);
    const QPoint corner =
        HasPlace(record) ? QPoint(record.Left / kTwips, record.Top / kTwips) : window.pos();
    if (HasPlace(record) || window.isVisible())
        Put(window, place, QRect(corner, size.grownBy(frame)));
    else if (size != window.size())
        window.resize(size); // where it comes up is not known yet
}

void PlaceByOwner(const Form &record, QWidget &window, WindowPlace &place, const QWidget *owner) {
    place.SettledAt = Clock.Steady() + kSettling;
    if (owner != nullptr && !HasPlace(record)) {
        if (!window.testAttribute(Qt::WA_Resized))
            window.adjustSize();
        const QRect below = owner->frameGeometry();
        if (place.Frame.isNull())
            place.Frame = FrameOf(*owner, place); // the best guess
        QRect frame(QPoint(), window.size().grownBy(place.Frame));
        frame.moveCenter(below.center());
        const bool takesKeyboard = !window.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus);
        place.Screens = ScreensThere();
        place.Put = {};
        Put(window, place, takesKeyboard ? frame : Beside(below, frame.size(), place.Screens));
    }
    place.Screens.clear();
}

void ReadPlace(Form &record, const QWidget &window, WindowPlace &place, bool bySystem) {
    if (!window.isVisible() || !HasFreePlace(window))
        return;
    const bool moved = window.pos() != std::exchange(place.Corner, window.pos());
    const bool sized = window.size() != std::exchange(place.Size, window.size());
    if (bySystem && Clock.Steady() < place.SettledAt) {
        place.Screens.clear();
        return;
    }
    // A place is stored with a size, and a size with a place: one that the record has stays.
    if (moved || (sized && !HasPlace(record))) {
        record.Left = place.Corner.x() * kTwips;
        record.Top = place.Corner.y() * kTwips;
        record.Placed = true;
    }
    if (sized || (moved && record.Width == 0)) {
        record.Width = place.Size.width() * kTwips;
        record.Height = place.Size.height() * kTwips;
    }
    place.Asked = AskedBy(record);
}

} // namespace zrt
