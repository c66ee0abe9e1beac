// The end of the session.
#pragma once

namespace zrt {

// Installed by the Winkeyer.
extern void (*CloseWinkeyer)();

// File, Exit, and the close box of the main window: asks, saves, writes the settings and ends the
// program, or returns to the log. May pump.
void ExitProgram();

} // namespace zrt
