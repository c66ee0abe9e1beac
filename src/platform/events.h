// The one waiter, the timers and the posted events. Everything runs on one thread: a procedure
// that has to wait calls PumpUntil, and events are served inside it.
#pragma once

#include "platform/clock.h"
#include "platform/controls.h"

#include <functional>
#include <limits>

namespace zrt {

// A wait without a deadline is a wait for the operator.
inline constexpr Microseconds kNoDeadline = std::numeric_limits<Microseconds>::max();

struct EventDoor {
    // Serves events until done() holds, the deadline (steady clock) has passed or the program ends.
    void (*PumpUntil)(Microseconds deadline, const std::function<bool()> &done) = nullptr;
};
extern EventDoor Events;

// The only procedure that waits. Events are served inside, so across a call hold no reference or
// iterator into the state of a module. `done` is tested before the first event and after each one.
void PumpUntil(Microseconds deadline, const std::function<bool()> &done);

// Shows the form and waits until it is hidden or the deadline has passed; may pump.
void ShowModal(Form &form, Microseconds deadline = kNoDeadline);

// How many PumpUntil calls are under way, that of the program's main loop among them.
int PumpDepth();

// Runs `event` on the next turn of the event loop.
void Post(std::function<void()> event);

// Starts the timer anew; it ticks every `milliseconds` until stopped. Zero or less ticks on the
// next turn of the event loop, once a turn.
void StartTimer(Timer &timer, int milliseconds);
void StopTimer(Timer &timer);

// For the event loops of qt/ and headless/.
// When the next posted event or timer is due: 0 for a posted one, kNoDeadline for none.
Microseconds NextEventDue();
// Runs what is due at `now`: one posted event, or else the timer that is due first. False if
// nothing was due.
bool ServeNextEvent(Microseconds now);

// Drops all timers and posted events, as the end of a process does.
void ForgetEvents();

} // namespace zrt
