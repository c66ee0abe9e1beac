#include "platform/events.h"

#include "platform/program.h"
#include "support/program.h"

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;

class EventLoop : public ProgramTest {
  protected:
    ~EventLoop() override { ForgetEvents(); }

    static void Pass(int milliseconds) {
        PumpUntil(Clock.Steady() + milliseconds * kMillisecond, [] { return false; });
    }
    std::vector<std::string> said;
};

TEST_F(EventLoop, ServesPostedEventsInTheirOrder) {
    Post([this] { said.emplace_back("one"); });
    Post([this] {
        said.emplace_back("two");
        Post([this] { said.emplace_back("four"); });
    });
    Post([this] { said.emplace_back("three"); });
    EXPECT_EQ(NextEventDue(), 0);
    while (ServeNextEvent(Clock.Steady()))
        ;
    EXPECT_THAT(said, ElementsAre("one", "two", "three", "four"));
    EXPECT_EQ(NextEventDue(), kNoDeadline);
}

TEST_F(EventLoop, TicksATimerUntilItIsStopped) {
    Timer timer;
    int ticks = 0;
    timer.Tick = [&] {
        if (++ticks == 3)
            StopTimer(timer);
    };
    StartTimer(timer, 100);
    EXPECT_TRUE(timer.Enabled);
    EXPECT_EQ(timer.Interval, 100);
    Pass(99);
    EXPECT_EQ(ticks, 0);
    Pass(1);
    EXPECT_EQ(ticks, 1);
    Pass(1000);
    EXPECT_EQ(ticks, 3);
    EXPECT_FALSE(timer.Enabled);
}

TEST_F(EventLoop, ATimerThatIsStartedAgainBeginsAnew) {
    Timer timer;
    int ticks = 0;
    timer.Tick = [&ticks] { ++ticks; };
    StartTimer(timer, 100);
    Pass(60);
    StartTimer(timer, 100);
    Pass(60);
    EXPECT_EQ(ticks, 0);
    Pass(40);
    EXPECT_EQ(ticks, 1);
    Pass(100);
    EXPECT_EQ(ticks, 2); // it runs once, not twice
    StopTimer(timer);
}

TEST_F(EventLoop, MakesNoUpForMissedTicks) {
    Timer timer;
    int ticks = 0;
    timer.Tick = [&ticks] { ++ticks; };
    StartTimer(timer, 100);
    const Microseconds late = Clock.Steady() + 1000 * kMillisecond;
    while (ServeNextEvent(late))
        ;
    EXPECT_EQ(ticks, 1);
    StopTimer(timer);
}

TEST_F(EventLoop, ServesTheTimerThatIsDueFirst) {
    Timer slow;
    Timer fast;
    slow.Tick = [&] { said.emplace_back("slow"); };
    fast.Tick = [&] { said.emplace_back("fast"); };
    StartTimer(slow, 250);
    StartTimer(fast, 100);
    Pass(300);
    EXPECT_THAT(said, ElementsAre("fast", "fast", "slow", "fast"));
    StopTimer(slow);
    StopTimer(fast);
}

TEST_F(EventLoop, ATickMayEndItsOwnTimer) {
    auto timer = std::make_unique<Timer>();
    timer->Tick = [&] {
        StopTimer(*timer);
        timer.reset();
    };
    StartTimer(*timer, 10);
    Pass(50);
    EXPECT_EQ(timer, nullptr);
}

TEST_F(EventLoop, AWaitEndsAtItsDeadline) {
    const Microseconds began = Clock.Steady();
    Pass(123);
    EXPECT_EQ(Clock.Steady() - began, 123 * kMillisecond);
}

TEST_F(EventLoop, AWaitEndsWhenItsConditionHolds) {
    bool done = false;
    Schedule(Clock.Steady() + 50 * kMillisecond, [&done] { done = true; });
    const Microseconds began = Clock.Steady();
    PumpUntil(began + kSecond, [&done] { return done; });
    EXPECT_EQ(Clock.Steady() - began, 50 * kMillisecond);
}

TEST_F(EventLoop, AConditionThatHoldsServesNothing) {
    Post([this] { said.emplace_back("posted"); });
    PumpUntil(Clock.Steady() + kSecond, [] { return true; });
    EXPECT_TRUE(said.empty());
}

TEST_F(EventLoop, AConditionIsTestedAfterEachEvent) {
    Post([this] { said.emplace_back("one"); });
    Post([this] { said.emplace_back("two"); });
    PumpUntil(Clock.Steady() + kSecond, [this] { return !said.empty(); });
    EXPECT_THAT(said, ElementsAre("one"));
}

TEST_F(EventLoop, AWaitEndsWithTheProgram) {
    Schedule(Clock.Steady() + 10 * kMillisecond, [] { EndProgram(7); });
    const Microseconds began = Clock.Steady();
    PumpUntil(began + kSecond, [] { return false; });
    EXPECT_EQ(Clock.Steady() - began, 10 * kMillisecond);
    EXPECT_EQ(Program.ExitStatus, 7);
    PumpUntil(kNoDeadline, [] { return false; }); // returns at once
}

TEST_F(EventLoop, KnowsHowDeepItsWaitsAre) {
    std::vector<int> depths{PumpDepth()};
    Post([&depths] {
        depths.push_back(PumpDepth());
        Post([&depths] { depths.push_back(PumpDepth()); });
        Pass(1);
        depths.push_back(PumpDepth());
    });
    Pass(1);
    depths.push_back(PumpDepth());
    EXPECT_THAT(depths, ElementsAre(0, 1, 2, 1, 0));
}

TEST_F(EventLoop, ForgetsTheDepthOfAWaitThatAnErrorLeaves) {
    Post([] { throw std::runtime_error("of the test"); });
    EXPECT_THROW(Pass(1), std::runtime_error);
    EXPECT_EQ(PumpDepth(), 0);
}

TEST_F(EventLoop, AModalFormHoldsTheCallerUntilItIsHidden) {
    Form form;
    Devices.Operator = [&] {
        EXPECT_EQ(ActiveForm(), &form);
        EXPECT_TRUE(form.Visible);
        said.emplace_back("operator");
        HideForm(form);
        return true;
    };
    ShowModal(form);
    EXPECT_THAT(said, ElementsAre("operator"));
    EXPECT_TRUE(Screen.Modal.empty());
}

TEST_F(EventLoop, AModalFormClosesAtItsDeadline) {
    Form form;
    ShowModal(form, Clock.Steady() + 100 * kMillisecond);
    EXPECT_FALSE(form.Visible);
    EXPECT_TRUE(Screen.Modal.empty());
}

} // namespace
} // namespace zrt
