#include "LoggerBench.h"

namespace zan::halyard {
namespace {

using site::LinkState;
using testing::Contains;
using testing::Not;

class Live : public LoggerBench
{
protected:
    double number(const values::Ref<fake::FakeChannel>& source) { return values::toDouble(source->Value()); }
};

TEST_F(Live, ValuesAreThereBeforeTheEventThatAnnouncesThem)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedWord);
    script->setByte(100, 1);
    script->setByte(101, 2);
    start();
    std::vector<std::string> seen;
    onEvent = [&](const std::string& event) {
        seen.push_back(event + (level->Value().isEmpty() ? " empty" : " " + std::to_string(int(number(level)))));
    };
    goLive();
    ASSERT_TRUE(waitForEvent("Records"));
    EXPECT_THAT(seen, ElementsAre("State 1 empty", "Progress Dialling empty", "State 2 empty", "Connected empty",
                                  "Data 258", "Records 258"));
}

TEST_F(Live, NothingIsPolledWithoutTheLiveAction)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedWord);
    start();
    connectLogger();
    ASSERT_TRUE(spinUntil([&] { return clock->hasTimer(); }));
    clock->advance(5000);
    settle();
    EXPECT_THAT(events, Not(Contains("Data")));
    logger->AddAction(site::LiveAction);
    ASSERT_TRUE(waitForEvent("Data"));
    logger->RemoveActions(site::LiveAction);
    settle();
    takeEvents();
    clock->advance(5000);
    settle();
    EXPECT_THAT(events, Not(Contains("Data")));
}

TEST_F(Live, ChannelsAreReadInAsFewBlocksAsTheDriverAllows)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedWord);
    channel(QStringLiteral("B"), 104, DataType::Single);
    channel(QStringLiteral("C"), 300, DataType::Double);
    channel(QStringLiteral("internal"), -5, DataType::UnsignedByte);
    start();
    goLive();
    EXPECT_THAT(script->takeCalls(), ElementsAre("open", "prepare 3", "read 100+8", "read 300+8"));
    nextPoll();
    EXPECT_THAT(script->takeCalls(), ElementsAre("read 100+8", "read 300+8"));
}

TEST_F(Live, NewAndChangedChannelsArePickedUpWithTheNextPoll)
{
    const auto first = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    goLive();
    script->setByte(200, 9);
    script->setByte(50, 4);
    const auto second = channel(QStringLiteral("B"), 200, DataType::UnsignedByte);
    nextPoll();
    EXPECT_EQ(number(second), 9);
    first->baseAddress = 50;
    first->multiplier = 0.5F;
    nextPoll();
    EXPECT_EQ(number(first), 2);
    scheme->window(QStringLiteral("OTHER"))->channel(QStringLiteral("C"))->baseAddress = 200;
    nextPoll();
    EXPECT_EQ(number(scheme->window(QStringLiteral("OTHER"))->channel(QStringLiteral("C"))), 9);
    scheme->windows->windows.clear();
    takeEvents();
    clock->advance(1000);
    settle();
    EXPECT_THAT(events, Not(Contains("Data")));
    EXPECT_EQ(logger->Link()->State(), LinkState::Connected);
}

TEST_F(Live, EveryChannelOfALargeSchemeIsCaughtUpWithSliceBySlice)
{
    const auto window = scheme->window(QStringLiteral("RTD"));
    for (int i = 0; i < 4500; ++i) {
        const auto added = make<fake::FakeChannel>();
        added->baseAddress = i;
        added->node = window->node;
        window->channels.push_back(added);
    }
    start();
    goLive();
    window->channels.back()->multiplier = 2;
    window->channels.front()->offset = 1;
    script->setByte(4499, 21);
    for (int i = 0; i < 3; ++i)
        nextPoll();
    EXPECT_EQ(number(window->channels.back()), 42);
    EXPECT_EQ(number(window->channels.front()), 1);
}

TEST_F(Live, ASchemeThatRefusesIsASchemeWithoutChannels)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    scheme->windows->failure = values::RuntimeError(values::ErrorNumber::InvalidCall);
    start();
    logger->AddAction(site::LiveAction);
    connectLogger();
    settle();
    EXPECT_THAT(events, Not(Contains("Data")));
    scheme->windows->failure.reset();
    ASSERT_TRUE(spinUntil([&] { return clock->hasTimer(); }));
    clock->advance(1000);
    EXPECT_TRUE(waitForEvent("Data"));
}

TEST_F(Live, ALoggerWithoutASchemeConnects)
{
    logger = make<HalyardLogger>(std::make_unique<ScriptedDriver>(script), nullptr, clock, LiveSettings());
    listen();
    logger->AddAction(site::LiveAction);
    connectLogger();
    EXPECT_FALSE(logger->Scheme());
}

TEST_F(Live, ThePeriodIsKeptAndAPollThatTakesLongerIsFollowedAtOnce)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    goLive();
    settle();
    takeEvents();
    clock->advance(999);
    settle();
    EXPECT_THAT(events, Not(Contains("Data")));
    script->hold("read");
    clock->advance(1);
    ASSERT_TRUE(spinUntil([&] { return script->isWaiting(); }));
    clock->advance(2500);
    settle();
    EXPECT_THAT(events, Not(Contains("Data"))); // no polls pile up
    script->release();
    ASSERT_TRUE(waitForEvent("Data"));
    clock->advance(0);
    EXPECT_TRUE(waitForEvent("Data", 2));
}

TEST_F(Live, AWriteIsInTheImageAtOnceAndStaysOverOlderAnswers)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    script->setByte(100, 5);
    start();
    goLive();
    EXPECT_EQ(logger->Live()->ReadMemory(100, 1), 5);
    script->hold("read");
    clock->advance(1000);
    ASSERT_TRUE(spinUntil([&] { return script->isWaiting(); }));
    logger->Live()->WriteChannel(level, Variant(u"77"));
    EXPECT_EQ(logger->Live()->ReadMemory(100, 1), 77);
    EXPECT_EQ(number(level), 5); // values change before an event only
    takeEvents();
    script->release(); // the old answer arrives before the write is answered
    ASSERT_TRUE(waitForEvent("Data"));
    EXPECT_EQ(number(level), 77);
    ASSERT_TRUE(spinUntil([&] {
        const std::lock_guard lock(script->mutex);
        return script->memory[100] == 77;
    }));
}

TEST_F(Live, AWriteIsFollowedByAPoll)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedWord);
    start();
    goLive();
    takeEvents();
    logger->Live()->WriteChannel(level, Variant(513));
    ASSERT_TRUE(waitForEvent("Data")); // no time has passed
    EXPECT_EQ(number(level), 513);
}

TEST_F(Live, AWriteThatFailsIsReportedAndTheNextPollShowsTheTruth)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    script->setByte(100, 5);
    script->setResult("write", {DriverStatus::Failed, QStringLiteral("read only")});
    start();
    goLive();
    takeEvents();
    logger->Live()->WriteChannel(level, Variant(77));
    ASSERT_TRUE(waitForEvent("Data"));
    EXPECT_THAT(events,
                Contains("WriteFailed 100 \"77\" was not written to address 100, which takes a number from 0 to "
                         "255: read only. Write it again; a logger that goes on refusing it has the place "
                         "read-only."));
    EXPECT_EQ(number(level), 5);
}

TEST_F(Live, AWriteThatFindsTheConnectionBrokenBreaksTheLink)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    goLive();
    takeEvents();
    script->setResult("write", {DriverStatus::Broken, QStringLiteral("Line dead.")});
    logger->Live()->WriteChannel(level, Variant(1));
    logger->Live()->WriteChannel(level, Variant(2));
    ASSERT_TRUE(spinUntil([&] {
        return std::count_if(events.begin(), events.end(),
                             [](const std::string& event) { return event.starts_with("WriteFailed"); }) == 2;
    }));
    std::erase(events, "Data");
    EXPECT_EQ(events[0], "State 4");
    EXPECT_EQ(logger->Link()->State(), LinkState::Broken);
}

TEST_F(Live, ARefusedWriteNamesTheChannelTheTextAndTheRange)
{
    const auto gate = channel(QStringLiteral("GATE"), 100, DataType::UnsignedByte);
    start();
    connectLogger();
    const auto refusal = [&](const Variant& value) {
        try {
            logger->Live()->WriteChannel(gate, value);
        } catch (const values::RuntimeError& error) {
            return error.description();
        }
        return QStringLiteral("written");
    };
    EXPECT_EQ(refusal(Variant(u"0,5")),
              u"Nothing was written to GATE: it takes a number from 0 to 255, not \"0,5\".");
    gate->label = QStringLiteral("Gate opening");
    EXPECT_EQ(refusal(Variant(300)),
              u"Nothing was written to Gate opening: it takes a number from 0 to 255, not \"300\".");
    EXPECT_EQ(refusal(Variant(u"255")), u"written");
}

TEST_F(Live, WritesAreRefusedWithTheErrorThatSaysWhy)
{
    const auto byte = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    const auto write = [&](const values::Ref<site::Channel>& target, const Variant& value) {
        return errorOf([&] { logger->Live()->WriteChannel(target, value); });
    };
    EXPECT_EQ(write(byte, Variant(1)), 5); // not connected
    connectLogger();
    EXPECT_EQ(write(nullptr, Variant(1)), 91);
    EXPECT_EQ(write(byte, Variant(u"abc")), 13);
    EXPECT_EQ(write(byte, Variant(u"")), 13);
    EXPECT_EQ(write(byte, Variant(256)), 6);
    byte->baseAddress = -1;
    EXPECT_EQ(write(byte, Variant(1)), 5);
    byte->baseAddress = std::numeric_limits<std::int32_t>::max();
    byte->dataType = std::int32_t(DataType::UnsignedWord);
    EXPECT_EQ(write(byte, Variant(1)), 5);
    byte->baseAddress = 100;
    byte->dataType = 77;
    EXPECT_EQ(write(byte, Variant(1)), 5);
    EXPECT_THAT(script->takeCalls(), Not(Contains(testing::StartsWith("write"))));
}

TEST_F(Live, AFloodOfWritesIsRefusedAtLast)
{
    const auto byte = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    connectLogger();
    script->hold("write");
    std::size_t taken = 0;
    while (taken <= HalyardLive::MostWaitingWrites &&
           errorOf([&] { logger->Live()->WriteChannel(byte, Variant(1)); }) == 0)
        ++taken;
    EXPECT_EQ(taken, HalyardLive::MostWaitingWrites);
}

TEST_F(Live, ASingleChannelWritesToItsAddress)
{
    start();
    connectLogger();
    const auto single = logger->createChannel();
    single->setBaseAddress(40);
    single->setDataType(std::int32_t(DataType::SignedWord));
    logger->Live()->WriteChannel(single, Variant(u"-2"));
    single->setDataType(std::int32_t(DataType::String)); // without a length: the text's own
    logger->Live()->WriteChannel(single, Variant(u"GO"));
    logger->Live()->WriteChannel(single, Variant(u""));
    logger->Link()->Disconnect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    const auto calls = script->takeCalls();
    EXPECT_THAT(calls, Contains("write 40=fffe"));
    EXPECT_THAT(calls, Contains("write 40=474f"));
    EXPECT_THAT(calls, Contains("write 40=00"));
}

TEST_F(Live, ReadMemoryRefusesWhatALoggerCannotHave)
{
    start();
    connectLogger();
    const std::pair<std::int32_t, int> rows[] = {
        {-1, 1}, {0, 0}, {0, 9}, {0, -1}, {std::numeric_limits<std::int32_t>::max(), 2}};
    for (const auto& [address, bytes] : rows)
        EXPECT_EQ(errorOf([&] { logger->Live()->ReadMemory(address, std::int16_t(bytes)); }), 5) << address;
}

TEST_F(Live, ReadMemoryAnswersAnUnsignedWordInTheLoggersByteOrder)
{
    channel(QStringLiteral("A"), 100, DataType::Double);
    for (int i = 0; i < 8; ++i)
        script->setByte(100 + i, 0xff);
    script->setByte(100, 0x80);
    start();
    goLive();
    EXPECT_EQ(logger->Live()->ReadMemory(100, 1), 0x80);
    EXPECT_EQ(logger->Live()->ReadMemory(100, 2), 0x80ff);
    EXPECT_EQ(logger->Live()->ReadMemory(100, 4), 0x80ffffffU);
}

TEST_F(Live, MemoryAskedForWithoutAChannelIsReadFromThenOnAndForgottenWhenUnused)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    script->setByte(500, 3);
    start();
    goLive();
    EXPECT_EQ(errorOf([&] { logger->Live()->ReadMemory(500, 2); }), 5);
    nextPoll();
    EXPECT_EQ(logger->Live()->ReadMemory(500, 2), 0x300);
    for (int i = 0; i < 62; ++i)
        nextPoll();
    script->takeCalls();
    nextPoll();
    EXPECT_THAT(script->takeCalls(), ElementsAre("read 100+1"));
}

TEST_F(Live, MemoryThatALoggerDoesNotHaveEmptiesItsChannelsAndNoOthers)
{
    const auto good = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    const auto bad = channel(QStringLiteral("B"), 104, DataType::UnsignedByte);
    const auto far = channel(QStringLiteral("C"), 300, DataType::UnsignedByte);
    start();
    goLive();
    EXPECT_FALSE(bad->Value().isEmpty());
    {
        const std::lock_guard lock(script->mutex);
        script->blockStatus[104] = DriverStatus::Unavailable;
    }
    nextPoll();
    ASSERT_TRUE(spinUntil([&] { return !good->Value().isEmpty() && bad->Value().isEmpty(); }));
    EXPECT_FALSE(far->Value().isEmpty());
    EXPECT_EQ(logger->Link()->State(), LinkState::Connected);
}

TEST_F(Live, ARequestThatFailsKeepsTheOldValuesForAWhileOnly)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    channel(QStringLiteral("B"), 300, DataType::UnsignedByte);
    script->setByte(100, 5);
    start();
    goLive();
    {
        const std::lock_guard lock(script->mutex);
        script->blockStatus[100] = DriverStatus::Failed;
    }
    nextPoll();
    nextPoll();
    EXPECT_EQ(number(level), 5);
    nextPoll();
    EXPECT_TRUE(level->Value().isEmpty());
    {
        const std::lock_guard lock(script->mutex);
        script->blockStatus.clear();
    }
    nextPoll();
    EXPECT_EQ(number(level), 5);
}

TEST_F(Live, ValuesStayWhenTheConnectionEndsAndMemoryIsUnknownInTheNextOne)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    script->setByte(100, 5);
    start();
    goLive();
    logger->Link()->Disconnect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    EXPECT_EQ(number(level), 5);
    EXPECT_EQ(logger->Live()->ReadMemory(100, 1), 5);
    logger->RemoveActions(site::LiveAction);
    takeEvents();
    connectLogger();
    EXPECT_EQ(errorOf([&] { logger->Live()->ReadMemory(100, 1); }), 5);
    EXPECT_EQ(number(level), 5);
}

TEST_F(Live, AHandlerMayDoAnything)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    start();
    int round = 0;
    onEvent = [&](const std::string& event) {
        if (event != "Data" || ++round > 3)
            return;
        if (round == 1)
            logger->Live()->WriteChannel(level, Variant(1)); // write in a scan
        else if (round == 2)
            scheme->windows->windows.clear(); // and lose every channel
        else
            logger->Link()->Disconnect();
        settle(); // a box with its own event loop
    };
    goLive();
    ASSERT_TRUE(waitForEvent("Data", 2));
    channel(QStringLiteral("B"), 100, DataType::UnsignedByte);
    clock->advance(1000);
    EXPECT_TRUE(waitForEvent("Disconnected"));
}

TEST_F(Live, RecordsAreLoggedAtTheirPeriodAndTheOldestGoes)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    level->label = QStringLiteral("Stage");
    level->units = QStringLiteral("mm");
    LiveSettings settings;
    settings.logPeriod = 2000;
    settings.records = 3;
    start(settings);
    const auto buffers = logger->Live()->Buffers();
    EXPECT_EQ(buffers->Count(), 1);
    EXPECT_EQ(errorOf([&] { buffers->Item(0); }), 9);
    EXPECT_EQ(errorOf([&] { buffers->Item(2); }), 9);
    const auto buffer = buffers->Item(1);
    EXPECT_EQ(buffer->RecordCount(), 0);
    EXPECT_EQ(buffer->Records()->rowCount(), 0);
    goLive();
    takeEvents();
    for (int second = 1; second <= 8; ++second) {
        script->setByte(100, std::uint8_t(second));
        nextPoll();
    }
    EXPECT_EQ(std::count(events.begin(), events.end(), "Records"), 4);
    EXPECT_EQ(buffer->RecordCount(), 3);
    const auto records = buffer->Records();
    EXPECT_EQ(records->columnCount(), 2);
    EXPECT_EQ(records->columnLabel(0), QStringLiteral("Time"));
    EXPECT_EQ(records->columnLabel(1), QStringLiteral("Stage"));
    EXPECT_EQ(records->columnUnits(1), QStringLiteral("mm"));
    EXPECT_EQ(values::toText(records->cell(2, 0)), QStringLiteral("1/31/2026 12:00:08 PM"));
    EXPECT_EQ(values::toDouble(records->cell(0, 1)), 4);
    EXPECT_EQ(values::toDouble(records->cell(2, 1)), 8);
    EXPECT_TRUE(records->cell(3, 1).isEmpty());
    EXPECT_TRUE(records->cell(-1, 0).isEmpty());
    EXPECT_TRUE(records->cell(0, 2).isEmpty());
}

TEST_F(Live, OlderRecordsKeepTheirColumnsWhenChannelsComeAndGo)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    const auto stays = channel(QStringLiteral("B"), 101, DataType::UnsignedByte);
    script->setByte(101, 7);
    LiveSettings settings;
    settings.logPeriod = 1000;
    start(settings);
    goLive();
    const auto snapshot = logger->Live()->Buffers()->Item(1)->Records();
    auto& channels = scheme->window(QStringLiteral("RTD"))->channels;
    channels.erase(channels.begin());
    channel(QStringLiteral("C"), 102, DataType::UnsignedByte);
    nextPoll();
    ASSERT_TRUE(waitForEvent("Records", 2));
    const auto records = logger->Live()->Buffers()->Item(1)->Records();
    EXPECT_EQ(records->rowCount(), 2);
    EXPECT_EQ(values::toDouble(records->cell(0, 1)), 7);
    EXPECT_TRUE(records->cell(0, 2).isEmpty());
    EXPECT_EQ(values::toDouble(records->cell(1, 2)), 0);
    EXPECT_EQ(snapshot->rowCount(), 1); // what was handed out does not change
}

TEST_F(Live, ASimulationShowsTheSameValuesForTheSameSeedAndTime)
{
    const auto all = [&] {
        std::vector<std::string> texts;
        for (const auto& source : scheme->window(QStringLiteral("RTD"))->channels)
            texts.push_back(values::toText(source->Value()).toStdString());
        return texts;
    };
    for (std::int32_t type = 0; type < site::DataTypeCount; ++type)
        channel(QStringLiteral("T%1").arg(type), 100 + 20 * type, DataType(type))->bytes = 10;
    std::vector<std::vector<std::string>> runs;
    for (const int seed : {7, 7, 8}) {
        clock = std::make_shared<ManualClock>();
        start(QStringLiteral("sim:?connect=0&seed=%1").arg(seed));
        goLive();
        nextPoll();
        runs.push_back(all());
        logger = nullptr;
        takeEvents();
    }
    EXPECT_EQ(runs[0], runs[1]);
    EXPECT_NE(runs[0], runs[2]);
}

TEST_F(Live, ASimulatedWriteSticksOverAReconnect)
{
    const auto level = channel(QStringLiteral("A"), 100, DataType::Single);
    start(QStringLiteral("sim:?connect=0&slow=0"));
    goLive();
    logger->Live()->WriteChannel(level, Variant(u"12.5"));
    logger->Link()->Disconnect();
    ASSERT_TRUE(waitForEvent("Disconnected"));
    takeEvents();
    connectLogger();
    ASSERT_TRUE(waitForEvent("Data"));
    EXPECT_EQ(number(level), 12.5);
}

} // namespace
} // namespace zan::halyard
