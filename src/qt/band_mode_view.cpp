// The active bands: a box for each, the note beside them.
#include "app/band_mode.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace zrt {

namespace {

constexpr LabelLook kNoteLook = {.Sample = "bands are active in",
                                 .Lines = 10,
                                 .Align = Qt::AlignLeft | Qt::AlignTop,
                                 .Grows = false};

} // namespace

void BuildBandModeView() {
    QWidget *window = NewDialogWindow(BandMode);
    auto *rows = new QVBoxLayout(window);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    auto *columns = new QHBoxLayout;
    columns->setSpacing(Lines(2));
    auto *boxes = new QVBoxLayout;
    boxes->setSpacing(Lines(0.4));
    for (CheckBox &box : BandMode.chkBand) {
        QCheckBox *widget = NewCheckBox(BandMode, box);
        // The boxes that a contest lacks are the last ones; no gap stands for them.
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(false);
        widget->setSizePolicy(policy);
        boxes->addWidget(widget);
    }
    boxes->addStretch(1);
    columns->addLayout(boxes, 1);
    columns->addWidget(NewLabel(BandMode, BandMode.lblNote, kNoteLook), 0, Qt::AlignTop);
    rows->addLayout(columns);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(NewButton(BandMode, BandMode.cmdOK));
    buttons->addWidget(NewButton(BandMode, BandMode.cmdCancel));
    rows->addLayout(buttons);
}

} // namespace zrt
