// Where the windows stand. A form's record keeps the place that the operator gave the window; on a
// screen that does not reach so far the window stands elsewhere, and the record does not follow:
// when the screen is there again, so is the place. Used by mirror.cpp alone.
#pragma once

#include "platform/clock.h"
#include "platform/controls.h"

#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

class QWidget;

namespace zrt {

// What the screens leave to windows, the main one first. A test puts other screens in place.
extern std::vector<QRect> (*ScreensThere)();

// What the record of a form asks for.
struct PlaceAsked {
    int Left = 0, Top = 0, Width = 0, Height = 0; // twips
    bool Placed = false;
    friend bool operator==(const PlaceAsked &, const PlaceAsked &) = default;
};

struct WindowPlace {
    PlaceAsked Asked;           // what was asked of the window last
    QSize SizeOfView;           // the one that its view has chosen, if any
    QMargins Frame;             // title bar and borders, known when the window has been shown
    std::vector<QRect> Screens; // that the window was put onto; none: look at it again
    QRect Put;                  // the frame that the window was given for all these
    QPoint Corner;              // where it stands by the program and not by the operator,
    QSize Size;                 // and how large
    Microseconds SettledAt = 0; // until then the window manager answers to what was asked
};

// The frame, moved until it lies on the screens, and cut if none of them holds it. A frame that is
// all in sight stays, and may span screens.
QRect OnScreens(const QRect &frame, const std::vector<QRect> &screens);

// Puts the window where its record asks for, if anything has changed: the record, the screens, or
// what is known of the frame.
void MirrorPlace(const Form &record, QWidget &window, WindowPlace &place);
// Before the window is shown: one that has no place of its own opens over its owner, or beside it
// if it does not take the keyboard. `owner` may be nullptr.
void PlaceByOwner(const Form &record, QWidget &window, WindowPlace &place, const QWidget *owner);
// Takes the place that the operator has given the window into its record. `bySystem`: the window
// system tells of the move, which may be no more than its answer to the program.
void ReadPlace(Form &record, const QWidget &window, WindowPlace &place, bool bySystem);

} // namespace zrt
