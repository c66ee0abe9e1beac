// The calls that hold what is typed: five to a row, those of logs above, the known ones below.
#include "app/partial_window.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"

#include <QGridLayout>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace zrt {

namespace {

constexpr int kCallsInRow = 5;

constexpr LabelLook kCallLook = {.Sample = "VP2E/K1ABC", .FixedPitch = true};
constexpr LabelLook kHeadLook = {.Sample = "Super Check Partial Results:", .Bold = true};

// The mouse on a label: pressed and let go over it is a click.
class LabelClicks : public QObject {
  public:
    LabelClicks(Label &record, PlaceLabel *widget)
        : QObject(widget), Record(record), Widget(*widget) {}

    bool eventFilter(QObject *object, QEvent *event) override {
        if (event->type() != QEvent::MouseButtonPress &&
            event->type() != QEvent::MouseButtonRelease)
            return QObject::eventFilter(object, event);
        const auto &mouse = static_cast<const QMouseEvent &>(*event);
        if (mouse.button() != Qt::LeftButton)
            return false;
        if (event->type() == QEvent::MouseButtonRelease &&
            Widget.rect().contains(mouse.position().toPoint())) {
            FinishFocus();
            ClickControl(Record);
            MirrorRecords();
        }
        return true;
    }

  private:
    Label &Record;
    PlaceLabel &Widget;
};

PlaceLabel *NewCall(Label &label) {
    PlaceLabel *widget = NewLabel(Partial, label, kCallLook);
    widget->installEventFilter(new LabelClicks(label, widget));
    return widget;
}

template <std::size_t N> QLayout *BuildCalls(std::array<Label, N> &labels) {
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(Lines(0.5));
    grid->setVerticalSpacing(Lines(0.15));
    for (int i = 0; i < static_cast<int>(N); ++i)
        grid->addWidget(NewCall(labels[static_cast<std::size_t>(i)]), i / kCallsInRow,
                        i % kCallsInRow);
    return grid;
}

} // namespace

void BuildPartialView() {
    QWidget *window = NewDialogWindow(Partial);
    // It comes up while a call is being typed: the keyboard must not go to it, ever.
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    auto *column = new QVBoxLayout(window);
    column->addWidget(NewLabel(Partial, Partial.lblInstaMatchResults, kHeadLook));
    column->addLayout(BuildCalls(Partial.Match));
    column->addSpacing(Lines(0.6));
    column->addWidget(NewLabel(Partial, Partial.lblSCPResults, kHeadLook));
    column->addLayout(BuildCalls(Partial.lblSCP));
    column->addStretch(1);
}

} // namespace zrt
