// BkgdForm, the background window that shows the progress of loading a log.
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
