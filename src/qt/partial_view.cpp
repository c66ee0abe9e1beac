// The calls that hold what is typed: five to a row, those of logs above, the known ones below.
#include "app/partial_window.h"
#include "qt/view_parts.h"

#include <QGridLayout>
#include <QVBoxLayout>

namespace zrt {

namespace {

constexpr int kCallsInRow = 5;

constexpr LabelLook kCallLook = {.Sample = "VP2E/K1ABC", .FixedPitch = true};
constexpr LabelLook kHeadLook = {.Sample = "Super Check Partial Results:", .Bold = true};

template <std::size_t N> QLayout *BuildCalls(std::array<Label, N> &labels) {
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(Lines(0.5));
    grid->setVerticalSpacing(Lines(0.15));
    for (int i = 0; i < static_cast<int>(N); ++i)
        grid->addWidget(NewClickLabel(Partial, labels[static_cast<std::size_t>(i)], kCallLook),
                        i / kCallsInRow, i % kCallsInRow);
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
