// The re-scan: rebuilds everything that is derived from the entries of the open log, in the order
// in which they were logged. The log loader calls it.
#pragma once

#include "session/log_entry.h"

namespace zrt {

// What later modules rebuild from an entry. Each does nothing until it is installed.
struct RescanHooks {
    void (*RecordCwOpenCall)(const OldEntry36 &entry) = [](const OldEntry36 &) {};
    // Marks the tables; true for a new multiplier.
    bool (*ReplayMultiplier)(const OldEntry36 &entry) = [](const OldEntry36 &) { return false; };
};
extern RescanHooks Replay;

// Replays the entries 1 to NextEntry - 1. A band code outside 1 to 24 is replaced by 16 in memory,
// but not in a log of 36-byte entries.
void RescanLog();

} // namespace zrt
