// What a contact is worth.
#pragma once

#include "session/log_entry.h"

namespace zrt {

// The points of an entry by the rules of the open log's contest, as they are stored: one digit.
// The county line of the entry window earns nothing.
char PointsFor(const OldEntry36 &entry);

// CQ WW, WPX and AA go by the country of the call: a hook for the callsign analysis.
extern char (*PointsByCountry)(const OldEntry36 &entry);

// What a stored point character adds to the total. PAQP counts in tenths of a point, and its "3"
// stands for 1.5.
i32 NumericPoints(char points);

} // namespace zrt
