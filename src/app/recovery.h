// Crash recovery: a temporary log at start means that the last session did not end cleanly.
#pragma once

namespace zrt {

// Offers the temporary log, LogFileName. Yes opens it; No keeps it as the first of three unsaved
// logs. May pump.
void OfferRecovery();

} // namespace zrt
