// What was sent and received in one contact, in the columns of its contest. Cabrillo and the
// printable log take their lines from here.
#pragma once

#include "session/log_entry.h"

#include <string>
#include <string_view>

namespace zrt {

// "599 " or "59  ", empty where the contest's files have no report. The log stores none: it is the
// same for all contacts of a mode.
std::string_view ReportColumns(bool qsoIsCw);
// Without the report; Latin-1. The multiplier tables are filled.
std::string SentColumns(const OldEntry36 &entry);
std::string RcvdColumns(const OldEntry36 &entry);

// Cuts the multiplier that the station sends to the columns it has, or pads it, in Settings for
// good: the operator sees and sends from then on what the sponsor gets.
void FitSentExchange();

} // namespace zrt
