// InstaMatch: the calls of earlier contests with what they sent, taken from logs and from files of
// their own (.zr2, one station a line: call, blank, exchange). The preferences dialog calls both.
#pragma once

#include "session/fixed_text.h"

#include <string>

namespace zrt {

// No call is added to a list of more than this many: a margin below the 10000 that are told.
inline constexpr std::size_t kFullOldCalls = 9997;

// Asks for a log or a .zr2 file, and adds its calls to OldCalls; what is known already keeps its
// exchange. After a failure, which is told, the list is as it was. May pump.
void SelectOldCallsFile();

// Asks for a .zr2 file and writes OldCalls to it. May pump.
void SaveOldCallsFile();

// The two steps of the above without the dialogs: true if the file was read, or written.
bool TakeOldCallsFile(const std::string &path);
bool WriteOldCallsFile(const std::string &path);

} // namespace zrt
