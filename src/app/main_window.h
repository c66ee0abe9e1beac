// The main window's own events: its menus, its buttons and the keys of its fields, each tied to the
// procedure that serves it.
#pragma once

namespace zrt {

void WireMainWindow();

} // namespace zrt
