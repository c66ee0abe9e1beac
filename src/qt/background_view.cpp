// The progress of loading a log.
#include "app/background.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"

#include <QVBoxLayout>

namespace zrt {

namespace {

constexpr LabelLook kTaskLook = {.Sample = "Loading: 2026 contest from the mountain.ZRT",
                                 .Scale = 1.1};
constexpr LabelLook kEntryLook = {.Sample = "Log Entry Nr: 9000", .Scale = 1.1};

} // namespace

void BuildBackgroundView() {
    QWidget *window = NewDialogWindow(BkgdForm);
    auto *column = new QVBoxLayout(window);
    column->setContentsMargins(Lines(2), Lines(1.5), Lines(2), Lines(1.5));
    column->setSpacing(Lines(0.5));
    column->addWidget(NewLabel(BkgdForm, BkgdForm.lblTask, kTaskLook));
    column->addWidget(NewLabel(BkgdForm, BkgdForm.lblEntryNr, kEntryLook));
}

} // namespace zrt
