// BkgdForm, the background window that shows how far the loading of a log has come. A log is loaded
// within a few milliseconds: the window is seen only beside a box.
#pragma once

#include "platform/controls.h"

namespace zrt {

struct BkgdFormWindow : Form {
    Label lblTask;    // "Loading: " and the file name
    Label lblEntryNr; // "Log Entry Nr: " n
};
extern BkgdFormWindow BkgdForm;

void RegisterBackground();

} // namespace zrt
