// The main window's own events: its menus, its buttons, the keys of its fields and its clock, each
// tied to the procedure that serves it.
#pragma once

namespace zrt {

void WireMainWindow();

// Starts the one-second clock of the window.
void StartMainClock();

} // namespace zrt
