// The operations of the Edit menu on the log as a whole.
#pragma once

namespace zrt {

// Marks all contacts of the log as of the years 2020 to 2029, after a question: for logs from
// programs that leave the decade out. May pump.
void MarkDecade();

} // namespace zrt
