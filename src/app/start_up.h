// The life of the program: from nothing to the idle main window, and its end. main() of zrtlog and
// of zrtlog-scenario call these three, and nothing else of the logic.
#pragma once

namespace zrt {

// Every window registers itself. Once, before anything else.
void RegisterWindows();

// The start routine: splash, tables, settings, reference data, the main window, crash recovery.
// On a fatal error the program is ending (Program.Ending) when it returns. May pump.
void StartProgram();

// File, Exit, and the close box of the main window: asks, saves, writes the settings and ends the
// program, or returns to the log. May pump.
void ExitProgram();

} // namespace zrt
