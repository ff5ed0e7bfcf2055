#include "display/FlashClock.h"
#include "display/FlashTimer.h"

#include "DisplayFixture.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

using namespace zan;
using display::FlashClock;
using display::FlashTimer;
using test::FakeTime;

namespace {

struct Flasher final : FlashTimer::Listener
{
    int ticks = 0;
    std::function<void()> onTick;
    FlashTimer timer{*this};
    void flashTick() override
    {
        ++ticks;
        timer.settle();
        if (onTick)
            onTick();
    }
};

} // namespace

TEST(FlashTimer, PhaseChangesOncePerIntervalHoweverLateSomebodyAsks)
{
    FakeTime time;
    Flasher flasher;
    flasher.timer.start();
    for (int second = 1; second <= 7; ++second) {
        time.pass(1000);
        if (second % 3 == 0)
            continue; // nobody asks
        EXPECT_TRUE(flasher.timer.settle());
        EXPECT_EQ(flasher.timer.phase(), second % 2 == 1) << second;
        EXPECT_FALSE(flasher.timer.settle());
    }
}

TEST(FlashTimer, LateQuestionsDoNotShiftTheSeconds)
{
    FakeTime time;
    Flasher flasher;
    flasher.timer.start();
    time.pass(1900);
    flasher.timer.settle();
    time.pass(100);
    EXPECT_TRUE(flasher.timer.settle());
}

TEST(FlashTimer, StartWhileRunningChangesNothing)
{
    FakeTime time;
    Flasher flasher;
    flasher.timer.start();
    time.pass(700);
    flasher.timer.start();
    time.pass(300);
    EXPECT_TRUE(flasher.timer.settle());
}

TEST(FlashTimer, TickComesOnceForEachTimeItIsAwaited)
{
    FakeTime time;
    Flasher flasher;
    flasher.timer.awaitTick(); // not running
    time.pass(1000);
    flasher.timer.start();
    flasher.timer.awaitTick();
    flasher.timer.awaitTick();
    time.pass(999);
    EXPECT_EQ(flasher.ticks, 0);
    time.pass(1);
    EXPECT_EQ(flasher.ticks, 1);
    time.pass(5000);
    EXPECT_EQ(flasher.ticks, 1);
}

TEST(FlashTimer, StoppedTimerIsNotCalled)
{
    FakeTime time;
    Flasher flasher;
    flasher.timer.start();
    flasher.timer.awaitTick();
    flasher.timer.stop();
    time.pass(3000);
    EXPECT_EQ(flasher.ticks, 0);
    EXPECT_FALSE(flasher.timer.phase());
}

TEST(FlashTimer, TickMayDeleteOtherTimers)
{
    FakeTime time;
    std::vector<std::unique_ptr<Flasher>> flashers;
    for (int count = 0; count < 10; ++count) {
        flashers.push_back(std::make_unique<Flasher>());
        flashers.back()->timer.start();
        flashers.back()->timer.awaitTick();
    }
    int ticks = 0;
    for (auto& flasher : flashers) {
        flasher->onTick = [&flashers, &ticks, self = flasher.get()] {
            ++ticks;
            std::erase_if(flashers, [self](const auto& other) { return other.get() != self; });
        };
    }
    time.pass(1000);
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(flashers.size(), 1U);
}

TEST(FlashClock, WakesByItselfWhileTheEventLoopRuns)
{
    Flasher flasher;
    std::int64_t now = 0;
    FlashClock::shared().setTimeSource([&] { return now; });
    flasher.timer.start();
    now = 999;
    flasher.timer.awaitTick();
    now = 1010; // the clock has been set to wake up in some milliseconds
    const QDeadlineTimer deadline(20'000);
    while (flasher.ticks == 0 && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    EXPECT_EQ(flasher.ticks, 1);
    FlashClock::shared().setTimeSource();
}
