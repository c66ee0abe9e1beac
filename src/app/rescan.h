// The re-scan: rebuilds everything that is derived from the entries of the open log, in the order
// in which they were logged. The log loader calls it.
#pragma once

namespace zrt {

// Replays the entries 1 to NextEntry - 1. A band code outside 1 to 24 is replaced by 16 in memory,
// but not in a log of 36-byte entries.
void RescanLog();

} // namespace zrt
