// The session reset: everything that the open log has built is cleared. At start, before a new log
// and before any open.
#pragma once

namespace zrt {

// Closes the windows of the log (not as the operator does: nothing is asked) and clears the
// tables. With RescanInPlace the macro and voice windows stay.
void ResetSession();

} // namespace zrt
