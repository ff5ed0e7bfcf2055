#include "LoggerBench.h"

namespace zan::halyard {
namespace {

using site::LinkState;

class Link : public LoggerBench
{
protected:
    void connectUntilHeld()
    {
        script->hold("open");
        logger->Link()->Connect();
        ASSERT_TRUE(spinUntil([&] { return script->isWaiting(); }));
        ASSERT_TRUE(waitForEvent("Progress Dialling"));
    }
};

TEST_F(Link, ConnectingAnnouncesStateThenProgressThenStateThenConnected)
{
    start();
    EXPECT_EQ(logger->Link()->State(), LinkState::NotConnected);
    connectLogger();
    EXPECT_THAT(events, ElementsAre("State 1", "Progress Dialling", "State 2", "Connected"));
    EXPECT_EQ(logger->Link()->State(), LinkState::Connected);
}

TEST_F(Link, TheStateIsTheAnnouncedOneWhenAnEventArrives)
{
    start();
    std::vector<int> states;
    onEvent = [&](const std::string&) { states.push_back(int(logger->Link()->State())); };
    connectLogger();
    EXPECT_THAT(states, ElementsAre(1, 1, 2, 2));
}

TEST_F(Link, ARefusedConnectionEndsUnconnectedAndThenTellsWhy)
{
    script->setResult("open", {DriverStatus::Failed, QStringLiteral("No answer.")});
    start();
    logger->Link()->Connect();
    ASSERT_TRUE(waitForEvent("Error No answer."));
    EXPECT_THAT(events, ElementsAre("State 1", "Progress Dialling", "State 0", "Error No answer."));
}

TEST_F(Link, ALoggerThatCouldNotBeMadeAnswersEveryConnectWithTheReasonAndHasNoData)
{
    const values::Ref<site::Logger> made = createUnavailableLogger(QStringLiteral("No such kind."), scheme, clock);
    logger = values::Ref<HalyardLogger>(dynamic_cast<HalyardLogger*>(made.get()));
    listen();
    logger->AddAction(site::LiveAction);
    for (int attempt = 0; attempt < 2; ++attempt) {
        events.clear();
        logger->Link()->Connect();
        ASSERT_TRUE(waitForEvent("Error No such kind."));
        EXPECT_THAT(events, ElementsAre("State 1", "State 0", "Error No such kind."));
    }
    EXPECT_EQ(logger->Scheme(), values::Ref<site::Scheme>(scheme));
}

TEST_F(Link, ARefusalWithoutWordsStillSaysSomething)
{
    script->setResult("open", {DriverStatus::Broken, {}});
    start();
    logger->Link()->Connect();
    EXPECT_TRUE(waitForEvent("Error No connection could be made."));
}

TEST_F(Link, ConnectDoesNothingWhileAConnectionStandsOrIsBeingMade)
{
    start();
    connectUntilHeld();
    logger->Link()->Connect();
    script->release();
    ASSERT_TRUE(waitForEvent("Connected"));
    logger->Link()->Connect();
    settle();
    EXPECT_THAT(events, ElementsAre("State 1", "Progress Dialling", "State 2", "Connected"));
}

TEST_F(Link, DisconnectWhileConnectingCancelsAndNeverConnects)
{
    start();
    connectUntilHeld();
    logger->Link()->Disconnect();
    EXPECT_EQ(logger->Link()->State(), LinkState::Disconnecting);
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_THAT(events, ElementsAre("State 1", "Progress Dialling", "State 3", "State 0", "Disconnected"));
}

TEST_F(Link, ACancelThatComesTooLateForTheDriverStillEndsUnconnected)
{
    start();
    logger->Link()->Connect();
    ASSERT_TRUE(waitHearingNothing([&] { // the driver is done, and nobody has heard of it yet
        const std::lock_guard lock(script->mutex);
        return !script->calls.empty();
    }));
    logger->Link()->Disconnect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_EQ(std::count(events.begin(), events.end(), "State 2"), 0);
    EXPECT_EQ(logger->Link()->State(), LinkState::NotConnected);
}

TEST_F(Link, ADisconnectInTheHandlerOfConnectingCancels)
{
    start();
    onEvent = [&](const std::string& event) {
        if (event == "State 1")
            logger->Link()->Disconnect();
    };
    logger->Link()->Connect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_EQ(logger->Link()->State(), LinkState::NotConnected);
    EXPECT_EQ(std::count(events.begin(), events.end(), "State 2"), 0);
}

TEST_F(Link, DisconnectingAnnouncesBothStatesThenDisconnected)
{
    start();
    connectLogger();
    takeEvents();
    logger->Link()->Disconnect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_THAT(events, ElementsAre("State 3", "State 0", "Disconnected"));
    EXPECT_THAT(script->takeCalls(), testing::Contains("close"));
}

TEST_F(Link, DisconnectingSendsTheWritesThatWait)
{
    start();
    connectLogger();
    logger->Live()->WriteChannel(channel(QStringLiteral("A"), 10, DataType::UnsignedByte), Variant(7));
    logger->Live()->WriteChannel(channel(QStringLiteral("B"), 11, DataType::UnsignedByte), Variant(8));
    logger->Link()->Disconnect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_EQ(script->memory[10], 7);
    EXPECT_EQ(script->memory[11], 8);
}

TEST_F(Link, ASecondDisconnectGivesTheWaitingWritesUpAndSaysSo)
{
    start();
    connectLogger();
    script->hold("write");
    logger->Live()->WriteChannel(channel(QStringLiteral("A"), 10, DataType::UnsignedByte), Variant(7));
    ASSERT_TRUE(spinUntil([&] { return script->isWaiting(); }));
    logger->Link()->Disconnect();
    settle();
    EXPECT_EQ(logger->Link()->State(), LinkState::Disconnecting);
    logger->Link()->Disconnect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_THAT(events,
                testing::Contains("WriteFailed 10 \"7\" was not written to address 10, which takes a number from 0 "
                                  "to 255: The connection ended before the value was written. Connect, and "
                                  "write it again."));
}

TEST_F(Link, ABrokenConnectionAnnouncesStateFourThenTheReasonThenDisconnected)
{
    start();
    goLive();
    takeEvents();
    script->setResult("read", {DriverStatus::Broken, QStringLiteral("Line dead.")});
    clock->advance(1000);
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_THAT(events, ElementsAre("State 4", "Error Line dead.", "Disconnected"));
    EXPECT_EQ(logger->Link()->State(), LinkState::Broken);
}

TEST_F(Link, ABreakIsFoundWithoutPollingToo)
{
    start();
    connectLogger();
    ASSERT_TRUE(spinUntil([&] { return clock->hasTimer(); }));
    script->setResult("check", {DriverStatus::Broken, QStringLiteral("Line dead.")});
    clock->advance(1000);
    ASSERT_TRUE(waitForEvent("State 4"));
}

TEST_F(Link, ABrokenLinkConnectsAgain)
{
    start();
    goLive();
    script->setResult("read", {DriverStatus::Broken, QStringLiteral("Line dead.")});
    clock->advance(1000);
    ASSERT_TRUE(waitForState(LinkState::Broken));
    script->setResult("read", {});
    takeEvents();
    connectLogger();
    ASSERT_TRUE(waitForEvent("Data"));
    EXPECT_THAT(events, ElementsAre("State 1", "Progress Dialling", "State 2", "Connected", "Data"));
}

TEST_F(Link, DisconnectOfABrokenLinkLeadsToNotConnectedAlone)
{
    start();
    goLive();
    script->setResult("read", {DriverStatus::Broken, QStringLiteral("Line dead.")});
    clock->advance(1000);
    ASSERT_TRUE(waitForEvent("Disconnected"));
    takeEvents();
    logger->Link()->Disconnect();
    logger->Link()->Disconnect();
    settle();
    EXPECT_THAT(events, ElementsAre("State 0"));
}

TEST_F(Link, AHandlerThatConnectsAgainCutsOffTheNewsOfTheFormerConnection)
{
    start();
    goLive();
    takeEvents();
    script->setResult("read", {DriverStatus::Broken, QStringLiteral("Line dead.")});
    onEvent = [&](const std::string& event) {
        if (event != "State 4")
            return;
        script->setResult("read", {});
        logger->Link()->Connect();
        ASSERT_TRUE(waitForState(LinkState::Connected)); // a box with its own event loop
    };
    clock->advance(1000);
    ASSERT_TRUE(waitForEvent("Connected"));
    settle();
    EXPECT_EQ(std::count(events.begin(), events.end(), "Disconnected"), 0);
    EXPECT_EQ(std::count(events.begin(), events.end(), "Error Line dead."), 0);
    EXPECT_EQ(logger->Link()->State(), LinkState::Connected);
}

TEST_F(Link, ADriverThatThrowsIsAConnectionThatFails)
{
    script->throws = true;
    start();
    logger->Link()->Connect();
    EXPECT_TRUE(waitForEvent("Error the library gave up"));
    EXPECT_EQ(logger->Link()->State(), LinkState::NotConnected);
}

TEST_F(Link, IsReachedByName)
{
    start();
    EXPECT_EQ(values::toLong(logger->Link()->get(values::Name("state"))), 0);
    logger->Link()->get(values::Name("CONNECT"));
    EXPECT_TRUE(waitForEvent("Connected"));
}

class SimulatedLink : public LoggerBench
{
protected:
    /// Lets time pass, and the driver work, until something holds.
    template <class Condition>
    bool passTimeUntil(Condition condition, std::int64_t step = 100)
    {
        return spinUntil([&] {
            if (condition())
                return true;
            if (clock->hasSleeper() || clock->hasTimer())
                clock->advance(step);
            return false;
        });
    }
    bool passTimeUntilEvent(const std::string& event)
    {
        return passTimeUntil([&] { return std::count(events.begin(), events.end(), event) > 0; });
    }
};

TEST_F(SimulatedLink, ConnectsWithProgressTexts)
{
    start(QStringLiteral("sim:?connect=900"));
    logger->Link()->Connect();
    ASSERT_TRUE(passTimeUntilEvent("Connected"));
    EXPECT_THAT(events,
                ElementsAre("State 1", "Progress Dialling...", "Progress OK", "Progress Waiting for prompt...",
                            "Progress OK", "Progress Signing on...", "Progress OK", "State 2", "Connected"));
    EXPECT_GE(clock->now(), 900);
}

TEST_F(SimulatedLink, RefusesOnDemand)
{
    start(QStringLiteral("sim:?connect=0&refuse=1"));
    logger->Link()->Connect();
    ASSERT_TRUE(waitForEvent("Error The logger does not answer."));
    EXPECT_THAT(events,
                ElementsAre("State 1", "Progress Dialling...", "State 0", "Error The logger does not answer."));
}

TEST_F(SimulatedLink, CancelsAtAnyMomentOfConnecting)
{
    for (int step = 0; step < 3; ++step) {
        start(QStringLiteral("sim:?connect=900"));
        logger->Link()->Connect();
        const std::int64_t begin = clock->now();
        ASSERT_TRUE(passTimeUntil([&] { return clock->hasSleeper() && clock->now() >= begin + 300 * step; }));
        logger->Link()->Disconnect();
        ASSERT_TRUE(waitForEvent("Disconnected"));
        EXPECT_EQ(std::count(events.begin(), events.end(), "State 2"), 0);
        takeEvents();
    }
}

TEST_F(SimulatedLink, DropsTheConnectionAfterATimeAndAgainAfterReconnecting)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedWord);
    start(QStringLiteral("sim:?connect=0&drop=12"));
    logger->AddAction(site::LiveAction);
    for (int round = 0; round < 2; ++round) {
        takeEvents();
        connectLogger();
        const std::int64_t begin = clock->now();
        ASSERT_TRUE(passTimeUntilEvent("Disconnected"));
        EXPECT_EQ(logger->Link()->State(), LinkState::Broken);
        EXPECT_GE(clock->now() - begin, 12'000);
        EXPECT_GE(std::count(events.begin(), events.end(), "Data"), 10);
    }
}

TEST_F(SimulatedLink, ASlowAnswerDoesNotHoldUpADisconnect)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedWord);
    start(QStringLiteral("sim:?connect=0&slow=3000000"));
    logger->AddAction(site::LiveAction);
    connectLogger();
    ASSERT_TRUE(spinUntil([&] { return clock->hasSleeper(); }));
    logger->Link()->Disconnect();
    EXPECT_TRUE(waitForEvent("Disconnected"));
    EXPECT_LT(clock->now(), 3'000'000);
}

} // namespace
} // namespace zan::halyard
