// The one-second clock of the main window: the time labels, the statistics, and the quiet retry of
// contacts that are owed to the disk.
#pragma once

namespace zrt {

void StartMainClock();

// Writes the two time labels, as each tick does.
void WriteClocks();

} // namespace zrt
