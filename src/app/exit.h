// The end of the session.
#pragma once

namespace zrt {

// Installed by the Winkeyer.
extern void (*CloseWinkeyer)();

// File, Exit, and the close box of the main window: asks, saves, writes the settings and ends the
// program, or returns to the log. May pump.
void ExitProgram();

// The desktop may end the session: writes unwritten contacts and the settings. Asks
// nothing and does not pump; the program goes on.
void KeepSession();

// The end from outside, by a signal or with the screen: as ExitProgram, but asks nothing. An
// unnamed log keeps its temporary name and is offered at the next start. Does not pump; a second
// call does nothing.
void LeaveProgram();

} // namespace zrt
