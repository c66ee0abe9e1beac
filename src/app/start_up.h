// The start of the program: from nothing to the idle main window. main() of zrtlog and of
// zrtlog-scenario call these two, and then wait for the operator.
#pragma once

#include "app/exit.h"

namespace zrt {

// Every window registers itself. Once, before anything else.
void RegisterWindows();

// The start routine: splash, tables, settings, reference data, the main window, crash recovery.
// On a fatal error the program is ending (Program.Ending) when it returns. May pump.
void StartProgram();

} // namespace zrt
