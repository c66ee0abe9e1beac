// The header of a log file that is opened. The log loader and the post-contest dialog call it.
#pragma once

namespace zrt {

// Reads the header of Log.LogFileName and takes form and contest from it. False if the file can't
// be read, is no log, or has entries of an incompatible kind, which ends the program; the operator
// has been told. May pump.
bool TakeLogHeader();

} // namespace zrt
