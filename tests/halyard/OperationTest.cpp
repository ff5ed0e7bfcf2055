#include "LoggerBench.h"

namespace zan::halyard {
namespace {

using site::LinkState;
using Operation = LoggerBench;

TEST_F(Operation, ProgrammingReportsProgressThenCompletion)
{
    start();
    connectLogger();
    takeEvents();
    logger->AddAction(site::ProgramAction);
    EXPECT_EQ(logger->Actions(), site::ProgramAction);
    ASSERT_TRUE(waitForEvent("ProgramComplete"));
    EXPECT_THAT(events, ElementsAre("Program 50 Half way", "ProgramComplete"));
    EXPECT_EQ(logger->Actions(), 0);
}

TEST_F(Operation, UnloadingReportsProgressThenCompletion)
{
    start();
    connectLogger();
    takeEvents();
    logger->AddAction(site::UnloadAction);
    ASSERT_TRUE(waitForEvent("UnloadComplete"));
    EXPECT_THAT(events, ElementsAre("Unload -1 Reading", "UnloadComplete"));
    EXPECT_EQ(logger->Actions(), 0);
}

TEST_F(Operation, TheFlagIsGoneWhenCompletionIsAnnounced)
{
    start();
    connectLogger();
    std::int32_t actions = -1;
    onEvent = [&](const std::string& event) {
        if (event == "ProgramComplete")
            actions = logger->Actions();
    };
    logger->AddAction(site::ProgramAction);
    ASSERT_TRUE(waitForEvent("ProgramComplete"));
    EXPECT_EQ(actions, 0);
}

TEST_F(Operation, WaitsForTheConnectionAndThenRunsOneAfterTheOther)
{
    start();
    logger->AddAction(site::ProgramAction | site::UnloadAction);
    settle();
    EXPECT_TRUE(events.empty());
    connectLogger();
    ASSERT_TRUE(waitForEvent("UnloadComplete"));
    EXPECT_THAT(events, ElementsAre("State 1", "Progress Dialling", "State 2", "Connected", "Program 50 Half way",
                                    "ProgramComplete", "Unload -1 Reading", "UnloadComplete"));
}

TEST_F(Operation, AskingTwiceWhileItRunsRunsItOnce)
{
    start();
    connectLogger();
    script->hold("program");
    logger->AddAction(site::ProgramAction);
    logger->AddAction(site::ProgramAction);
    ASSERT_TRUE(spinUntil([&] { return script->isWaiting(); }));
    script->release();
    ASSERT_TRUE(waitForEvent("ProgramComplete"));
    settle();
    EXPECT_EQ(std::count(events.begin(), events.end(), "ProgramComplete"), 1);
}

TEST_F(Operation, AFailureEndsInAConnectionErrorWithTheLinkStanding)
{
    script->setResult("program", {DriverStatus::Failed, QStringLiteral("bad checksum.")});
    start();
    connectLogger();
    logger->AddAction(site::ProgramAction);
    ASSERT_TRUE(waitForEvent("Error Programming the logger failed: bad checksum."));
    EXPECT_EQ(logger->Link()->State(), LinkState::Connected);
    EXPECT_EQ(logger->Actions(), 0);
}

TEST_F(Operation, RemovingTheFlagCancelsAndTellsWhoeverWatches)
{
    start();
    connectLogger();
    script->hold("unload");
    logger->AddAction(site::UnloadAction);
    ASSERT_TRUE(spinUntil([&] { return script->isWaiting(); }));
    logger->RemoveActions(logger->Actions());
    ASSERT_TRUE(waitForEvent("Error Unloading the logger was cancelled."));
    EXPECT_EQ(std::count(events.begin(), events.end(), "UnloadComplete"), 0);
    EXPECT_EQ(logger->Link()->State(), LinkState::Connected);
}

TEST_F(Operation, AskedForAgainAfterACancelItRunsAgain)
{
    start();
    connectLogger();
    script->hold("unload");
    logger->AddAction(site::UnloadAction);
    ASSERT_TRUE(spinUntil([&] { return script->isWaiting(); }));
    logger->RemoveActions(site::UnloadAction);
    logger->AddAction(site::UnloadAction);
    script->hold("");
    ASSERT_TRUE(waitForEvent("UnloadComplete"));
}

TEST_F(Operation, ADisconnectEndsItWithTheEventsOfTheLinkAlone)
{
    start();
    connectLogger();
    script->hold("program");
    logger->AddAction(site::ProgramAction);
    ASSERT_TRUE(spinUntil([&] { return script->isWaiting(); }));
    ASSERT_TRUE(waitForEvent("Program 50 Half way"));
    takeEvents();
    logger->RemoveActions(logger->Actions());
    logger->Link()->Disconnect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_THAT(events, ElementsAre("State 3", "State 0", "Disconnected"));
}

TEST_F(Operation, ABreakEndsItAndTheNextConnectionDoesNotStartItAgain)
{
    script->setResult("program", {DriverStatus::Broken, QStringLiteral("Line dead.")});
    start();
    connectLogger();
    takeEvents();
    logger->AddAction(site::ProgramAction);
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_THAT(events, ElementsAre("Program 50 Half way", "State 4", "Error Line dead.", "Disconnected"));
    EXPECT_EQ(logger->Actions(), 0);
    script->takeCalls();
    takeEvents();
    connectLogger();
    settle();
    EXPECT_THAT(script->takeCalls(), testing::Not(testing::Contains("program")));
}

TEST_F(Operation, ADisconnectForgetsTheFlagOfWhatItCutsOff)
{
    start();
    connectLogger();
    script->hold("program");
    logger->AddAction(site::ProgramAction);
    ASSERT_TRUE(spinUntil([&] { return script->isWaiting(); }));
    logger->Link()->Disconnect();
    EXPECT_EQ(logger->Actions(), 0);
    EXPECT_TRUE(waitForEvent("Disconnected"));
}

TEST_F(Operation, ASimulatedProgramGoesFromNoughtToHundredAndResetsWhatWasWritten)
{
    const auto level = channel(QStringLiteral("A"), 10, DataType::UnsignedByte);
    start(QStringLiteral("sim:?connect=0&programtime=0&unloadtime=0&wave.10=const:3"));
    goLive();
    logger->Live()->WriteChannel(level, Variant(200));
    ASSERT_TRUE(spinUntil([&] { return values::toDouble(level->Value()) == 200; }));
    takeEvents();
    logger->AddAction(site::ProgramAction);
    ASSERT_TRUE(waitForEvent("ProgramComplete"));
    std::erase_if(events, [](const std::string& event) { return event == "Data" || event == "Records"; });
    ASSERT_EQ(events.size(), 23U);
    EXPECT_EQ(events[0], "Program -1 Waiting for prompt...");
    EXPECT_EQ(events[1], "Program 0 Sending program...");
    EXPECT_EQ(events[2], "Program 5 Sending program...");
    EXPECT_EQ(events[21], "Program 100 Sending program...");
    EXPECT_TRUE(spinUntil([&] { return values::toDouble(level->Value()) == 3; }));
}

TEST_F(Operation, ASimulationFailsToProgramOrToUnloadOnDemand)
{
    start(QStringLiteral("sim:?connect=0&programtime=0&unloadtime=0&programerror=1&unloaderror=1"));
    connectLogger();
    logger->AddAction(site::ProgramAction | site::UnloadAction);
    ASSERT_TRUE(waitForEvent("Error Programming the logger failed: the logger reported an error."));
    ASSERT_TRUE(waitForEvent("Error Unloading the logger failed: the logger reported an error."));
    EXPECT_THAT(events, testing::Contains("Program 60 Sending program..."));
    EXPECT_THAT(events, testing::Not(testing::Contains("Program 65 Sending program...")));
}

} // namespace
} // namespace zan::halyard
