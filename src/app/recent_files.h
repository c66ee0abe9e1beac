// The four recent logs of the File menu, and the folder in which its dialogs open. Both are kept in
// the settings. The loader and Save As tell of each log that they open or name.
#pragma once

#include <string>

namespace zrt {

// The folder of the log becomes that of the dialogs, and the log the first of the recent ones; the
// last one falls off. A log that stands further down stays there too.
void TakeRecentFile(const std::string &path);

// Puts the recent logs into the File menu; a place without a log is hidden.
void ShowRecentFiles();

} // namespace zrt
