#include "qt/pump.h"

#include "platform/events.h"
#include "platform/program.h"
#include "qt/mirror.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <thread>

namespace zrt {

namespace {

// The last stretch before a deadline is spun on the clock: nothing is served and nothing painted,
// since a sleep or a repaint there would make a keyed element late.
constexpr Microseconds kSpin = 3 * kMillisecond;
// Above this a wait sleeps in the system until an event or its alarm wakes it.
constexpr Microseconds kLongWait = 12 * kMillisecond;
// The alarm of such a sleep is set this much early, for timers of the system come late.
constexpr Microseconds kAlarmLead = 6 * kMillisecond;
constexpr Microseconds kLongestAlarm = 3600 * kSecond;

void ServeQt(QEventLoop::ProcessEventsFlags flags) {
    QCoreApplication::processEvents(flags);
    // No event loop of Qt's own runs below the outermost wait, so nobody else deletes these.
    if (PumpDepth() == 1)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void SleepUntilEvent(Microseconds left) {
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.setTimerType(Qt::PreciseTimer);
    if (left < kNoDeadline) {
        const Microseconds milliseconds = (left + kMillisecond - 1) / kMillisecond;
        alarm.start(std::chrono::milliseconds(milliseconds));
    }
    ServeQt(QEventLoop::WaitForMoreEvents);
}

void SpinUntil(Microseconds moment) {
    while (Clock.Steady() < moment) {}
}

// Waits for the operator: nothing needs better than the system's own timers.
void WaitAtLeisure(Microseconds next, Microseconds now) {
    SleepUntilEvent(next == kNoDeadline ? kNoDeadline : std::min(next - now, kLongestAlarm));
}

void WaitExactly(Microseconds next, Microseconds now) {
    const Microseconds left = next - now;
    if (left <= kSpin) {
        SpinUntil(next);
    } else if (left > kLongWait) {
        SleepUntilEvent(std::min(left - kAlarmLead, kLongestAlarm));
    } else {
        ServeQt(QEventLoop::AllEvents);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace

void PumpInQt(Microseconds deadline, const std::function<bool()> &done) {
    while (!Program.Ending && !done()) {
        const Microseconds now = Clock.Steady();
        if (now >= deadline)
            return;
        const bool leisure = deadline == kNoDeadline;
        const bool near = !leisure && deadline - now <= kSpin;
        const bool served = ServeNextEvent(now);
        if (!near)
            MirrorRecords();
        if (served) {
            // One turn of the keyboard for each event, so that a timer without interval can't
            // keep the operator out.
            if (!near && !Program.Ending && !done())
                ServeQt(QEventLoop::AllEvents);
            continue;
        }
        const Microseconds next = std::min(deadline, NextEventDue());
        if (leisure)
            WaitAtLeisure(next, now);
        else
            WaitExactly(next, now);
    }
    if (!Program.Ending)
        MirrorRecords();
}

} // namespace zrt
