// A log of 9000 contacts, as full as a log gets.
#pragma once

#include "session/fixed_text.h"

#include <string>

namespace zrt {

// Writes FULL.ZRT of the contest into the folder and makes it the first of the recent logs. False
// if the disk refuses.
bool MakeFullLog(const std::string &folder, i16 contestId);

} // namespace zrt
