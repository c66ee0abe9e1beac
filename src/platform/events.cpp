#include "platform/events.h"

#include <algorithm>
#include <cassert>
#include <deque>
#include <utility>
#include <vector>

namespace zrt {

EventDoor Events;

namespace {

struct RunningTimer {
    Timer *Record;
    Microseconds Due;
};

struct EventQueue {
    std::deque<std::function<void()>> Posted;
    std::vector<RunningTimer> Timers;
    int PumpDepth = 0;
};
EventQueue Queue;

struct PumpGuard {
    PumpGuard() { ++Queue.PumpDepth; }
    ~PumpGuard() { --Queue.PumpDepth; }
    PumpGuard(const PumpGuard &) = delete;
    PumpGuard &operator=(const PumpGuard &) = delete;
};

Microseconds PeriodOf(const Timer &timer) {
    return std::max(timer.Interval, 0) * kMillisecond;
}

std::vector<RunningTimer>::iterator FirstDueTimer() {
    return std::min_element(
        Queue.Timers.begin(), Queue.Timers.end(),
        [](const RunningTimer &a, const RunningTimer &b) { return a.Due < b.Due; });
}

} // namespace

void PumpUntil(Microseconds deadline, const std::function<bool()> &done) {
    assert(Events.PumpUntil != nullptr);
    PumpGuard guard;
    Events.PumpUntil(deadline, done);
}

void ShowModal(Form &form, Microseconds deadline) {
    form.Visible = true;
    Screen.Modal.push_back(&form);
    PumpUntil(deadline, [&form] { return !form.Visible; });
    form.Visible = false;
    std::erase(Screen.Modal, &form);
}

int PumpDepth() {
    return Queue.PumpDepth;
}

void Post(std::function<void()> event) {
    Queue.Posted.push_back(std::move(event));
}

void StartTimer(Timer &timer, int milliseconds) {
    StopTimer(timer);
    timer.Interval = milliseconds;
    timer.Enabled = true;
    Queue.Timers.push_back({&timer, Clock.Steady() + PeriodOf(timer)});
}

void StopTimer(Timer &timer) {
    timer.Enabled = false;
    std::erase_if(Queue.Timers, [&](const RunningTimer &t) { return t.Record == &timer; });
}

Microseconds NextEventDue() {
    if (!Queue.Posted.empty())
        return 0;
    const auto first = FirstDueTimer();
    return first == Queue.Timers.end() ? kNoDeadline : first->Due;
}

bool ServeNextEvent(Microseconds now) {
    if (!Queue.Posted.empty()) {
        const auto event = std::move(Queue.Posted.front());
        Queue.Posted.pop_front();
        event();
        return true;
    }
    const auto first = FirstDueTimer();
    if (first == Queue.Timers.end() || first->Due > now)
        return false;
    Timer &timer = *first->Record;
    // Ticks that were missed in a long wait are not made up for.
    const Microseconds period = PeriodOf(timer);
    first->Due = std::max(first->Due + period, now + 1);
    if (timer.Tick) {
        const auto tick = timer.Tick; // the tick may stop or replace its own timer
        tick();
    }
    return true;
}

void ForgetEvents() {
    Queue = {};
}

} // namespace zrt
