// The waiter of platform/events in Qt. Installed by doors.cpp.
#pragma once

#include "platform/clock.h"

#include <functional>

namespace zrt {

// As EventDoor::PumpUntil. A wait with a deadline ends within some ten microseconds of it, as long
// as no event handler runs longer than the last three milliseconds of the wait.
void PumpInQt(Microseconds deadline, const std::function<bool()> &done);

} // namespace zrt
