// Installs the doors of platform/ that Qt and the machine provide. Called by main().
#pragma once

#include <functional>

namespace zrt {

// Needs the application object. `quitAsked` runs as a posted event when the desktop asks the
// program to quit, as at the end of the session; it is the program's own way out.
void InstallQtDoors(std::function<void()> quitAsked);

} // namespace zrt
