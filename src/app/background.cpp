#include "app/background.h"

namespace zrt {

BkgdFormWindow BkgdForm;

void RegisterBackground() {
    BkgdForm = {};
    BkgdForm.Caption = "ZRTLOG";
    BkgdForm.HasCloseBox = false;
    RegisterForm(BkgdForm, "BkgdForm", "Progress of loading a log",
                 {{"lblTask", &BkgdForm.lblTask, "What is being done"},
                  {"lblEntryNr", &BkgdForm.lblEntryNr, "Entry that is being read"}});
}

} // namespace zrt
