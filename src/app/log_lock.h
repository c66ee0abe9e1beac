// One log is open in one copy of the program at a time.
#pragma once

#include <string>

namespace zrt {

// Locks LogFileName for the log that is to be opened. False if another copy has it, which is
// reported, or if the lock is impossible and the operator does not want to go on. May pump.
bool MayOpenLog();

// Whether a file may be replaced: a log that another copy has open may not, which is
// reported. May pump.
bool MayReplaceLog(const std::string &path);

} // namespace zrt
