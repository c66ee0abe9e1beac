// The splash at the start, and Help, About.
#include "app/about_box.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace zrt {

namespace {

constexpr LabelLook kProgramLook = {
    .Sample = "ZRTLOG ZRTLOG", .Scale = 3, .Bold = true, .Align = Qt::AlignCenter};
constexpr LabelLook kLineLook = {
    .Sample = "Contest logging for amateur radio", .Scale = 1.1, .Align = Qt::AlignCenter};

} // namespace

void BuildAboutView() {
    QWidget *window = NewDialogWindow(Aboutzrt);
    auto *column = new QVBoxLayout(window);
    column->setContentsMargins(Lines(3), Lines(2), Lines(3), Lines(1.5));
    column->setSpacing(Lines(0.6));
    column->addWidget(NewLabel(Aboutzrt, Aboutzrt.lblProgram, kProgramLook));
    column->addWidget(NewLabel(Aboutzrt, Aboutzrt.lblVersion, kLineLook));
    column->addWidget(NewLabel(Aboutzrt, Aboutzrt.lblPurpose, kLineLook));
    column->addSpacing(Lines(1));
    column->addWidget(NewButton(Aboutzrt, Aboutzrt.cmdClose), 0, Qt::AlignCenter);
}

} // namespace zrt
