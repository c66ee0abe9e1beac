// The widgets that Qt does not have ready: a label whose place is fixed, an entry field that is
// told what to type, a thin line. Used by the views and by mirror.cpp.
#pragma once

#include "platform/controls.h"

#include <QLabel>
#include <QLineEdit>

class QKeyEvent;

namespace zrt {

// How a label looks. `Sample` is the widest text that it must show whole; longer ones end in dots.
struct LabelLook {
    const char *Sample = "";
    double Scale = 1.0; // of the application's font size
    bool Bold = false;
    bool FixedPitch = false;
    int Lines = 1;
    Qt::Alignment Align = Qt::AlignLeft | Qt::AlignVCenter;
    bool TrimBlanks = false;  // blanks around the text are padding of another layout
    bool Warning = false;     // a filled strip
    bool Grows = true;        // takes the width that is left over
    bool MarkColored = false; // a colour comes with a bar beneath the text
};

QFont FontOf(double scale, bool bold, bool fixedPitch);

// The width of a window whose title bar shows the title whole, as far as that can be known: the
// bar is the window manager's.
int TitleWidth(const QString &title);

// A label that keeps its size whatever its text, and its place while it is hidden.
class PlaceLabel : public QLabel {
  public:
    PlaceLabel(const LabelLook &look, QWidget *parent);
    // In place of setText, which would lay out the whole window anew for each text.
    void ShowText(const QString &text);
    const QString &ShownText() const { return Shown; }
    void SetInk(Color color);
    Color Ink() const { return InkName; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    LabelLook Look;
    QString Shown;
    Color InkName = Color::Black;
};

// A thin line across the window.
class RuleLine : public QWidget {
  public:
    explicit RuleLine(QWidget *parent);

  protected:
    void paintEvent(QPaintEvent *event) override;
};

// A one-line field of `columns` characters of the fixed-pitch font.
class EntryField : public QLineEdit {
  public:
    EntryField(int columns, double scale, QWidget *parent);
    // What the field does with a key that no handler has used up.
    void EditItself(QKeyEvent *event);
    QSize sizeHint() const override;
    QSize SizeFor(int columns) const;

  private:
    int Columns;
};

} // namespace zrt
