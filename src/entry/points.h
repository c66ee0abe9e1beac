// What a contact is worth.
#pragma once

#include "session/log_entry.h"

namespace zrt {

struct PointsState {
    // WPX: contacts with the operator's own country in the USA and Canada, with the own continent
    // elsewhere. Dupes don't count.
    i32 SameContinentCount = 0;
};
extern PointsState Points;

// The points of an entry by the rules of the open log's contest, as they are stored: one digit.
// The county line of the entry window earns nothing. The caller gives a dupe its "0" and doesn't
// ask: in WPX each question counts into SameContinentCount.
char PointsFor(const OldEntry36 &entry);

// What a stored point character adds to the total. PAQP counts in tenths of a point, and its "3"
// stands for 1.5.
i32 NumericPoints(char points);

} // namespace zrt
