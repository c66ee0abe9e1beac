#include "qt/widgets.h"

#include "qt/inks.h"

#include <QApplication>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

#include <algorithm>

namespace zrt {

namespace {

constexpr int kStripMargin = 8;
constexpr int kBarHeight = 3;

int WidestLine(const QFontMetrics &metrics, const QString &text) {
    int widest = 0;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines)
        widest = std::max(widest, metrics.horizontalAdvance(line));
    return widest;
}

} // namespace

QFont FontOf(double scale, bool bold, bool fixedPitch) {
    const QFont base = QApplication::font();
    QFont font = fixedPitch ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : base;
    if (base.pointSizeF() > 0)
        font.setPointSizeF(base.pointSizeF() * scale);
    else
        font.setPixelSize(static_cast<int>(base.pixelSize() * scale));
    font.setBold(bold);
    return font;
}

int TitleWidth(const QString &title) {
    constexpr int kIconAndButtons = 7; // heights of a line
    const QFontMetrics metrics(FontOf(1, true, false));
    return metrics.horizontalAdvance(title) + kIconAndButtons * metrics.height();
}

PlaceLabel::PlaceLabel(const LabelLook &look, QWidget *parent) : QLabel(parent), Look(look) {
    setFont(FontOf(look.Scale, look.Bold, look.FixedPitch));
    setTextFormat(Qt::PlainText);
    setAlignment(look.Align);
    QSizePolicy policy(look.Grows ? QSizePolicy::MinimumExpanding : QSizePolicy::Fixed,
                       QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
}

void PlaceLabel::ShowText(const QString &text) {
    if (Shown == text)
        return;
    Shown = text;
    setAccessibleName(text); // what a screen reader reads
    update();
}

void PlaceLabel::SetInk(Color color) {
    if (InkName == color)
        return;
    InkName = color;
    update();
}

QSize PlaceLabel::sizeHint() const {
    const QFontMetrics metrics(font());
    int width = WidestLine(metrics, QString::fromUtf8(Look.Sample));
    int height = metrics.lineSpacing() * Look.Lines;
    if (Look.Warning) {
        width += 2 * kStripMargin + metrics.height() + kStripMargin;
        height += kStripMargin;
    }
    if (Look.MarkColored)
        height += kBarHeight + 1;
    return {width + 2, height};
}

QSize PlaceLabel::minimumSizeHint() const {
    return sizeHint();
}

void PlaceLabel::paintEvent(QPaintEvent *) {
    if (Shown.trimmed().isEmpty())
        return;
    QPainter painter(this);
    const QFontMetrics metrics(font());
    QRect place = rect();
    QColor paper = palette().color(QPalette::Window);
    QColor ink = InkOn(InkName, paper, palette().color(QPalette::WindowText));
    if (Look.Warning) {
        const WarningColors warning = WarningOn(paper);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(warning.Paper);
        painter.drawRoundedRect(place, 4, 4);
        ink = warning.Ink;
        place.adjust(kStripMargin, 0, -kStripMargin, 0);
        const QRect sign(place.left(), place.center().y() - metrics.height() / 2, metrics.height(),
                         metrics.height());
        style()->standardIcon(QStyle::SP_MessageBoxWarning).paint(&painter, sign);
        place.setLeft(sign.right() + kStripMargin);
    }
    if (!isEnabled())
        ink = palette().color(QPalette::Disabled, QPalette::WindowText);
    painter.setPen(ink);
    if (Look.Warning) { // is read to its end
        painter.drawText(place, static_cast<int>(Look.Align) | Qt::TextWordWrap, Shown);
        return;
    }
    QStringList lines = Shown.split(QLatin1Char('\n'));
    int widest = 0;
    for (QString &line : lines) {
        if (Look.TrimBlanks)
            line = line.trimmed();
        line = metrics.elidedText(line, Qt::ElideRight, place.width());
        widest = std::max(widest, metrics.horizontalAdvance(line));
    }
    if (Look.MarkColored) {
        place.setBottom(place.bottom() - kBarHeight - 1);
        if (InkName != Color::Black)
            painter.fillRect(place.left(), place.bottom() + 2, widest, kBarHeight, ink);
    }
    painter.drawText(place, static_cast<int>(Look.Align), lines.join(QLatin1Char('\n')));
}

RuleLine::RuleLine(QWidget *parent) : QWidget(parent) {
    setFixedHeight(1);
}

void RuleLine::paintEvent(QPaintEvent *) {
    QColor ink = palette().color(QPalette::WindowText);
    ink.setAlphaF(0.25F);
    QPainter(this).fillRect(rect(), ink);
}

EntryField::EntryField(int columns, double scale, QWidget *parent)
    : QLineEdit(parent), Columns(columns) {
    setFont(FontOf(scale, false, true));
    setTextMargins(6, 2, 6, 2);
    // Calls and exchanges are plain letters: no input method stands between the key and the field.
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setContextMenuPolicy(Qt::NoContextMenu);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
}

void EntryField::EditItself(QKeyEvent *event) {
    QLineEdit::keyPressEvent(event);
}

QSize EntryField::sizeHint() const {
    return SizeFor(Columns);
}

QSize EntryField::SizeFor(int columns) const {
    const QFontMetrics metrics(font());
    const QMargins margins = textMargins();
    // QLineEdit keeps 2 pixels before and behind its text, the caret takes one more.
    const QSize inside(metrics.horizontalAdvance(QString(columns, QLatin1Char('W'))) + 2 * 2 + 1 +
                           margins.left() + margins.right(),
                       metrics.height() + 2 + margins.top() + margins.bottom());
    QStyleOptionFrame option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_LineEdit, &option, inside, this);
}

} // namespace zrt
