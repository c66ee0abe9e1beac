// The choice of the contest: the list at the left, what belongs to the chosen row at the right.
#include "app/contest_chooser.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zrt {

namespace {

constexpr int kContestRows = 13;
constexpr int kContinentRows = 6;

int ListHeight(const QListWidget &list, int rows) {
    return QFontMetrics(list.font()).lineSpacing() * rows + rows * 2 + 2 * list.frameWidth();
}

QWidget *BuildFirstFrame() {
    QGroupBox *frame = NewFrame(ChCoForm, ChCoForm.Frame1);
    auto *column = new QVBoxLayout;
    for (OptionButton &option : ChCoForm.optFrame1)
        column->addWidget(NewOption(ChCoForm, option));
    frame->setLayout(column);
    return frame;
}

// The third button of a contest with continents has no caption: the list beside it is what it
// stands for.
QWidget *BuildSecondFrame() {
    QGroupBox *frame = NewFrame(ChCoForm, ChCoForm.Frame2);
    auto *row = new QHBoxLayout(frame);
    auto *column = new QVBoxLayout;
    for (OptionButton &option : ChCoForm.optFrame2)
        column->addWidget(NewOption(ChCoForm, option));
    column->addStretch(1);
    row->addLayout(column, 1);
    QListWidget *continents = NewList(ChCoForm, ChCoForm.lstContinent);
    continents->setFixedSize(Lines(4), ListHeight(*continents, kContinentRows));
    row->addWidget(continents, 0, Qt::AlignBottom);
    return frame;
}

} // namespace

void BuildContestChooserView() {
    QWidget *window = NewDialogWindow(ChCoForm);
    auto *rows = new QVBoxLayout(window);
    auto *columns = new QHBoxLayout;
    QListWidget *contests = NewList(ChCoForm, ChCoForm.lstContest);
    contests->setMinimumSize(Lines(20), ListHeight(*contests, kContestRows));
    columns->addWidget(contests, 1);
    auto *frames = new QVBoxLayout;
    frames->addWidget(BuildFirstFrame());
    frames->addWidget(BuildSecondFrame());
    frames->addStretch(1);
    columns->addLayout(frames);
    rows->addLayout(columns);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(NewButton(ChCoForm, ChCoForm.cmdOK));
    buttons->addWidget(NewButton(ChCoForm, ChCoForm.cmdCancel));
    rows->addLayout(buttons);
}

} // namespace zrt
