// A log of 9000 contacts, as full as a log gets, and what a call is compared with beside it.
#pragma once

#include "session/fixed_text.h"

#include <string>
#include <vector>

namespace zrt {

// Writes FULL.ZRT of the contest into the folder and makes it the first of the recent logs. False
// if the disk refuses.
bool MakeFullLog(const std::string &folder, i16 contestId);
// Starts the program in the folder with such a log open; from now on nothing is synced. False if
// that fails.
bool OpenFullLog(const std::string &folder, i16 contestId);

// Ten thousand calls of earlier logs, all calls of master.scp, and the Partial window that looks
// for what is typed in all of them. False where the machine has no master.scp.
bool OpenPartialWithAllCalls();

// What is typed into the call field: calls while they grow, calls that nobody has, single letters.
const std::vector<std::string> &TypedCalls();

} // namespace zrt
