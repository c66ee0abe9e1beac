#include "qt/small_window.h"

#include "platform/events.h"
#include "platform/program.h"
#include "qt/mirror.h"

#include <QLineEdit>
#include <QMetaObject>
#include <QTest>

#include <ctime>

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;

bool Never() {
    return false;
}

using Pump = SmallWindowTest;

TEST_F(Pump, EndsAtItsDeadlineAndNotBefore) {
    for (const Microseconds length : {500, 2000, 5000, 24000, 60000}) {
        const Microseconds deadline = Clock.Steady() + length;
        PumpUntil(deadline, Never);
        const Microseconds late = Clock.Steady() - deadline;
        EXPECT_GE(late, 0);
        EXPECT_LT(late, 50 * kMillisecond); // a loaded machine may take us off the processor
    }
}

TEST_F(Pump, TestsItsConditionBeforeTheFirstEvent) {
    Post([this] { Heard.emplace_back("event"); });
    PumpUntil(kNoDeadline, [] { return true; });
    EXPECT_TRUE(Heard.empty());
}

TEST_F(Pump, TestsItsConditionAfterEachEvent) {
    Post([this] { Heard.emplace_back("one"); });
    Post([this] { Heard.emplace_back("two"); });
    PumpUntil(kNoDeadline, [this] { return !Heard.empty(); });
    EXPECT_THAT(Heard, ElementsAre("one"));
}

TEST_F(Pump, TicksTimersInTheirOrder) {
    Timer fast, slow;
    fast.Tick = [&] { Heard.emplace_back("fast"); };
    slow.Tick = [&] {
        Heard.emplace_back("slow");
        StopTimer(fast);
        StopTimer(slow);
    };
    StartTimer(fast, 10);
    StartTimer(slow, 25);
    PumpUntil(Clock.Steady() + 100 * kMillisecond, Never);
    EXPECT_THAT(Heard, ElementsAre("fast", "fast", "slow"));
}

TEST_F(Pump, WaitsForTheOperatorOnATimer) {
    Timer timer;
    timer.Tick = [&] {
        Heard.emplace_back("tick");
        StopTimer(timer);
    };
    StartTimer(timer, 30);
    const Microseconds start = Clock.Steady();
    PumpUntil(kNoDeadline, [this] { return !Heard.empty(); });
    EXPECT_GE(Clock.Steady() - start, 30 * kMillisecond);
}

TEST_F(Pump, ATimerWithoutIntervalKeepsNeitherKeysNorQtOut) {
    Timer busy;
    busy.Tick = [] {};
    StartTimer(busy, 0);
    bool served = false;
    const Later later(5, [&served] { served = true; });
    PumpUntil(Clock.Steady() + 2 * kSecond, [&served] { return served; });
    StopTimer(busy);
    EXPECT_TRUE(served);
}

TEST_F(Pump, ReturnsAtOnceWhenTheProgramEnds) {
    Post([] { EndProgram(3); });
    PumpUntil(kNoDeadline, Never);
    EXPECT_EQ(Program.ExitStatus, 3);
    PumpUntil(kNoDeadline, Never); // and so does every later wait
}

TEST_F(Pump, ANestedWaitEndsWithTheProgram) {
    Post([this] {
        Post([] { EndProgram(0); });
        PumpUntil(kNoDeadline, Never);
        Heard.emplace_back("unwound");
    });
    PumpUntil(kNoDeadline, Never);
    EXPECT_THAT(Heard, ElementsAre("unwound"));
    EXPECT_EQ(PumpDepth(), 0);
}

TEST_F(Pump, ServesKeysInsideAWait) {
    const Later later(5, [] { QTest::keyClick(ViewOf(Window)->windowHandle(), Qt::Key_7); });
    PumpUntil(Clock.Steady() + 40 * kMillisecond, Never);
    EXPECT_EQ(Window.Field[0].Text, "7");
}

TEST_F(Pump, ShowsWhatAnEventHasWritten) {
    Post([] { Window.Field[0].Text = "NEW"; });
    PumpUntil(Clock.Steady() + 10 * kMillisecond, Never);
    EXPECT_EQ(Find<QLineEdit>(Window, "Field(0)")->text(), QStringLiteral("NEW"));
}

TEST_F(Pump, DeletesWhatQtDeletesLater) {
    auto *object = new QObject;
    bool gone = false;
    QObject::connect(object, &QObject::destroyed, qApp, [&gone] { gone = true; });
    object->deleteLater();
    PumpUntil(Clock.Steady() + 10 * kMillisecond, Never);
    EXPECT_TRUE(gone);
}

// The object may be one that a procedure below, which waits here, still works with.
TEST_F(Pump, LeavesWhatQtDeletesLaterToTheOutermostWait) {
    auto *object = new QObject;
    bool gone = false, goneInside = false;
    QObject::connect(object, &QObject::destroyed, qApp, [&gone] { gone = true; });
    Post([&] {
        object->deleteLater();
        PumpUntil(Clock.Steady() + 30 * kMillisecond, Never);
        goneInside = gone;
    });
    PumpUntil(Clock.Steady() + 60 * kMillisecond, Never);
    EXPECT_FALSE(goneInside);
    EXPECT_TRUE(gone);
}

// In the last three milliseconds what is due is served, but nothing is painted and no key handled.
TEST_F(Pump, PaintsNothingShortlyBeforeADeadline) {
    static Microseconds now;
    now = 100 * kSecond;
    Clock.Steady = [] { return now += 10; };
    const auto shown = [] { return Find<QLineEdit>(Window, "Field(0)")->text().toStdString(); };
    std::string shownNear, shownFar;
    bool keyNear = false;
    const auto write = [](const char *text) { Window.Field[0].Text = text; };
    Post([&] { write("NEAR"); });
    Post([&] { shownNear = shown(); });
    QMetaObject::invokeMethod(
        qApp, [&keyNear] { keyNear = true; }, Qt::QueuedConnection);
    bool servedQt = true;
    Post([&] { servedQt = keyNear; });
    PumpUntil(now + 2 * kMillisecond, Never);
    EXPECT_EQ(shownNear, "");
    EXPECT_FALSE(servedQt);
    EXPECT_EQ(shown(), ""); // the next wait shows it
    EXPECT_EQ(now / kMillisecond, 100002);
    Post([&] { write("FAR"); });
    Post([&] { shownFar = shown(); });
    PumpUntil(now + 10 * kMillisecond, [&] { return !shownFar.empty(); });
    EXPECT_EQ(shownFar, "FAR");
    EXPECT_TRUE(keyNear);
}

TEST_F(Pump, AWaitForTheOperatorLeavesTheProcessorAlone) {
    const Later later(300, [] { Window.Field[0].Text = "done"; });
    const std::clock_t before = std::clock();
    PumpUntil(kNoDeadline, [] { return Window.Field[0].Text == "done"; });
    const double used = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    EXPECT_LT(used, 0.1); // of 0.3 seconds
}

} // namespace
} // namespace zrt
