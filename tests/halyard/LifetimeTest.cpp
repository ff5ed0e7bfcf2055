#include "LoggerBench.h"

namespace zan::halyard {
namespace {

using site::LinkState;

class Lifetime : public LoggerBench
{
protected:
    /// Lets go of the logger and checks that nothing comes after it.
    void destroy()
    {
        const values::Ref<site::Link> link = logger->Link();
        const values::Ref<site::Live> live = logger->Live();
        takeEvents();
        logger = nullptr;
        EXPECT_FALSE(script->isAlive);
        clock->advance(10'000);
        settle();
        EXPECT_THAT(events, ElementsAre());
        EXPECT_EQ(link->State(), LinkState::NotConnected);
        link->Connect();
        link->Disconnect();
        const auto target = make<fake::FakeChannel>();
        EXPECT_EQ(errorOf([&] { live->WriteChannel(target, Variant(1)); }), 5);
        EXPECT_EQ(live->Buffers()->Count(), 1);
        settle();
        EXPECT_THAT(events, ElementsAre());
    }
    void hold(const std::string& call) { script->hold(call); }
    bool waitUntilHeld()
    {
        return spinUntil([&] { return script->isWaiting(); });
    }
};

TEST_F(Lifetime, EndsUnconnected)
{
    start();
    destroy();
}

TEST_F(Lifetime, EndsWhileConnecting)
{
    start();
    hold("open");
    logger->Link()->Connect();
    ASSERT_TRUE(waitUntilHeld());
    destroy();
}

TEST_F(Lifetime, EndsWhileConnected)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    goLive();
    destroy();
}

TEST_F(Lifetime, EndsWhileReading)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    hold("read");
    logger->AddAction(site::LiveAction);
    logger->Link()->Connect();
    ASSERT_TRUE(waitUntilHeld());
    destroy();
}

TEST_F(Lifetime, EndsWithAnAnswerOnItsWay)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    goLive();
    ASSERT_TRUE(spinUntil([&] { return clock->hasTimer(); }));
    script->takeCalls();
    clock->advance(1000);
    EXPECT_TRUE(waitHearingNothing([&] { return !script->takeCalls().empty(); }));
    destroy();
}

TEST_F(Lifetime, EndsWhileWriting)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    connectLogger();
    hold("write");
    logger->Live()->WriteChannel(level, Variant(1));
    logger->Live()->WriteChannel(level, Variant(2));
    ASSERT_TRUE(waitUntilHeld());
    destroy();
}

TEST_F(Lifetime, EndsWhileProgramming)
{
    start();
    connectLogger();
    hold("program");
    logger->AddAction(site::ProgramAction | site::UnloadAction);
    ASSERT_TRUE(waitUntilHeld());
    destroy();
}

TEST_F(Lifetime, EndsWhileDisconnecting)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    connectLogger();
    hold("write");
    logger->Live()->WriteChannel(level, Variant(1));
    ASSERT_TRUE(waitUntilHeld());
    logger->Link()->Disconnect();
    destroy();
}

TEST_F(Lifetime, EndsBroken)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    goLive();
    script->setResult("read", {DriverStatus::Broken, QStringLiteral("Line dead.")});
    clock->advance(1000);
    ASSERT_TRUE(waitForState(LinkState::Broken));
    ASSERT_TRUE(waitForEvent("Disconnected"));
    destroy();
}

TEST_F(Lifetime, EndsInAnyOfItsOwnEvents)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    for (const char* last : {"State 1", "Progress Dialling", "State 2", "Connected", "Program 50 Half way",
                             "ProgramComplete", "Data", "Records"}) {
        script = std::make_shared<DriverScript>();
        takeEvents();
        onEvent = [&](const std::string& event) {
            if (event == last)
                logger = nullptr;
        };
        start();
        {
            const values::Ref<site::Link> link = logger->Link();
            logger->AddAction(site::LiveAction | site::ProgramAction);
            link->Connect();
        }
        ASSERT_TRUE(spinUntil([&] { return !script->isAlive; })) << last;
        settle();
        EXPECT_EQ(events.back(), last);
    }
}

TEST_F(Lifetime, EndsInTheEventsOfItsEnd)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    for (const char* last : {"State 4", "Error Line dead.", "Disconnected"}) {
        script = std::make_shared<DriverScript>();
        onEvent = nullptr;
        start();
        goLive();
        takeEvents();
        onEvent = [&](const std::string& event) {
            if (event == last)
                logger = nullptr;
        };
        script->setResult("read", {DriverStatus::Broken, QStringLiteral("Line dead.")});
        clock->advance(1000);
        ASSERT_TRUE(spinUntil([&] { return !script->isAlive; })) << last;
        settle();
        EXPECT_EQ(events.back(), last);
        takeEvents();
    }
}

TEST_F(Lifetime, ADriverBlockedElsewhereIsInterrupted)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    script->isStubborn = true;
    start();
    hold("read");
    logger->AddAction(site::LiveAction);
    logger->Link()->Connect();
    ASSERT_TRUE(waitUntilHeld());
    logger->Link()->Disconnect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_EQ(script->interrupts, 1);
    destroy();
}

TEST_F(Lifetime, ADriverThatNothingStopsIsLeftBehindAndHoldsNobodyUp)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    script->isStubborn = true;
    script->isDeaf = true;
    start();
    hold("read");
    logger->AddAction(site::LiveAction);
    logger->Link()->Connect();
    ASSERT_TRUE(waitUntilHeld());
    takeEvents();
    logger = nullptr; // waits a moment, then goes on without it
    EXPECT_TRUE(script->isAlive);
    script->interrupted.release();
    EXPECT_TRUE(spinUntil([&] { return !script->isAlive; }));
    EXPECT_THAT(events, ElementsAre());
}

TEST_F(Lifetime, ManyLoggersComeAndGoAtEveryMoment)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedWord);
    for (int round = 0; round < 200; ++round) {
        LoggerResult result = createLogger(QStringLiteral("sim:?connect=0&period=10"), scheme);
        ASSERT_TRUE(result.logger);
        result.logger->AddAction(site::LiveAction | site::ProgramAction);
        result.logger->Link()->Connect();
        for (int turn = 0; turn < round % 20; ++turn)
            QCoreApplication::processEvents();
    }
}

TEST_F(Lifetime, TheMachinesClockDrivesALoggerToo)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedWord);
    LoggerResult result = createLogger(QStringLiteral("sim:?connect=3&period=10&slow=1"), scheme);
    ASSERT_TRUE(result.logger);
    logger = values::Ref<HalyardLogger>(dynamic_cast<HalyardLogger*>(result.logger.get()));
    result.logger = nullptr;
    listen();
    goLive();
    EXPECT_TRUE(waitForEvent("Data", 5));
    EXPECT_FALSE(level->Value().isEmpty());
}

} // namespace
} // namespace zan::halyard
