// Crash recovery: a temporary log at start means that the last session did not end cleanly.
#pragma once

namespace zrt {

// Offers the temporary log, LogFileName. Yes opens it; No keeps it as the first of three unsaved
// logs. May pump.
void OfferRecovery();

// Before a new log takes the temporary name: a log that still stands under it, for it could not be
// read, moved or deleted, becomes the first of the unsaved ones. Returns 0 or the system's error.
[[nodiscard]] int KeepStrayLog();

} // namespace zrt
