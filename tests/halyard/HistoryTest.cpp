#include "LoggerBench.h"

#include "site/HistoryKeeper.h"
#include "values/Convert.h"

namespace zan::halyard {
namespace {

using site::HistoryTime;

/// Remembers what it is given.
class NotingKeeper final : public site::HistoryKeeper
{
public:
    struct Record
    {
        HistoryTime time;
        std::vector<double> values; // -1 for Empty
    };
    std::vector<Record> records;
    site::HistoryColumns columns;
    std::function<void()> onKeep;

    void keep(HistoryTime time, const std::shared_ptr<const site::HistoryColumns>& theColumns,
              const std::vector<Variant>& given) override
    {
        columns = *theColumns;
        Record record{time, {}};
        for (const Variant& value : given) {
            double number = -1;
            if (!value.isEmpty()) {
                EXPECT_EQ(values::tryToDouble(value, number), values::ErrorNumber::None);
            }
            record.values.push_back(number);
        }
        records.push_back(record);
        if (onKeep)
            onKeep();
    }
    QString State() const override { return {}; }
    std::vector<site::HistorySeries> series() const override { return {}; }
    site::HistorySpan span() const override { return {}; }
    std::vector<site::HistoryPoint> points(std::int64_t, HistoryTime, HistoryTime, std::int32_t) const override
    {
        return {};
    }
    std::vector<Past> valuesAt(HistoryTime) const override { return {}; }
    std::int64_t rowCount() const override { return 0; }
    std::vector<site::HistoryRow> rows(std::int64_t, std::int32_t, const std::vector<std::int64_t>&) const override
    {
        return {};
    }
    std::int64_t placeOf(HistoryTime) const override { return 0; }
};

class HistoryFeedTest : public LoggerBench
{
protected:
    void startScripted(const LiveSettings& settings = {})
    {
        logger = make<HalyardLogger>(std::make_unique<ScriptedDriver>(script), scheme, clock, settings, keeper);
        listen();
    }
    void startSimulated(const QString& uri)
    {
        LoggerResult result = createLogger(uri, scheme, clock, keeper);
        ASSERT_EQ(result.error.toStdString(), "");
        logger = values::Ref<HalyardLogger>(dynamic_cast<HalyardLogger*>(result.logger.get()));
        listen();
    }
    /// Goes on until an event has come, time passing as the logger needs it.
    void passUntil(const std::string& event)
    {
        ASSERT_TRUE(spinUntil([&] {
            if (clock->hasSleeper())
                clock->advance(1);
            return std::count(events.begin(), events.end(), event) > 0;
        }));
        takeEvents();
    }
    void unload()
    {
        logger->AddAction(site::UnloadAction);
        passUntil("UnloadComplete");
    }
    /// What a poll has logged meanwhile: how many of them come is a matter of how threads take turns.
    void forgetRecordsAfter(std::int64_t moment)
    {
        std::erase_if(keeper->records, [&](const auto& record) { return record.time > timeOf(moment); });
    }
    HistoryTime timeOf(std::int64_t moment) const
    {
        return clock->dateTime().toMSecsSinceEpoch() - clock->now() + moment;
    }

    values::Ref<NotingKeeper> keeper = make<NotingKeeper>();
};

TEST_F(HistoryFeedTest, EveryRecordLoggedGoesToTheHistoryWithItsColumns)
{
    LiveSettings settings;
    settings.logPeriod = 2000;
    const auto level = channel(QStringLiteral("LEVEL"), 100, DataType::UnsignedByte);
    level->label = QStringLiteral("Level");
    level->units = QStringLiteral("m");
    level->format = QStringLiteral("0.0");
    script->memory[100] = 7;
    startScripted(settings);
    EXPECT_EQ(logger->Live()->History().get(), keeper.get());
    goLive();
    for (int i = 0; i < 4; ++i)
        nextPoll();
    ASSERT_EQ(keeper->records.size(), 3U) << "one at once and one for each log period";
    EXPECT_EQ(keeper->records[0].time, timeOf(0));
    EXPECT_EQ(keeper->records[2].time, timeOf(4000));
    EXPECT_EQ(keeper->records[2].values, std::vector<double>{7});
    ASSERT_EQ(keeper->columns.size(), 1U);
    EXPECT_EQ(keeper->columns[0].window, QStringLiteral("RTD"));
    EXPECT_EQ(keeper->columns[0].key, QStringLiteral("LEVEL"));
    EXPECT_EQ(keeper->columns[0].label, QStringLiteral("Level"));
    EXPECT_EQ(keeper->columns[0].units, QStringLiteral("m"));
    EXPECT_EQ(keeper->columns[0].format, QStringLiteral("0.0"));
    EXPECT_EQ(keeper->columns[0].period, 2000);
}

TEST_F(HistoryFeedTest, ALoggerWithoutAHistoryHasNone)
{
    start();
    EXPECT_FALSE(logger->Live()->History());
}

TEST_F(HistoryFeedTest, WhatADriverUnloadsGoesToTheHistoryDecodedAsItsChannelsAre)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedWord);
    channel(QStringLiteral("B"), 200, DataType::UnsignedByte);
    script->kept = {{-5000, {{100, QByteArray::fromHex("0102")}, {200, QByteArray::fromHex("09")}}},
                    {-4000, {{100, QByteArray::fromHex("0103")}}}};
    startScripted();
    connectLogger();
    takeEvents();
    logger->AddAction(site::UnloadAction);
    ASSERT_TRUE(waitForEvent("UnloadComplete"));
    EXPECT_THAT(events, ElementsAre("Unload -1 Reading", "Records", "UnloadComplete"));
    ASSERT_EQ(keeper->records.size(), 2U);
    EXPECT_EQ(keeper->records[0].time, timeOf(-5000));
    EXPECT_EQ(keeper->records[0].values, (std::vector<double>{258, 9}));
    EXPECT_EQ(keeper->records[1].values, (std::vector<double>{259, -1})) << "what was not kept is no value";
}

TEST_F(HistoryFeedTest, WhatWasUnloadedBeforeAFailureCounts)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    script->kept = {{-5000, {{100, QByteArray::fromHex("09")}}}};
    script->setResult("unload", {DriverStatus::Failed, QStringLiteral("noise.")});
    startScripted();
    connectLogger();
    takeEvents();
    logger->AddAction(site::UnloadAction);
    ASSERT_TRUE(waitForEvent("Error Unloading the logger failed: noise."));
    EXPECT_EQ(keeper->records.size(), 1U);
}

TEST_F(HistoryFeedTest, AHistoryThatThrowsDisturbsNeitherLiveDataNorUnloading)
{
    keeper->onKeep = [] { throw std::runtime_error("disk"); };
    script->kept = {{-5000, {{100, QByteArray::fromHex("09")}}}, {-4000, {{100, QByteArray::fromHex("08")}}}};
    startScripted();
    goLive();
    nextPoll();
    logger->AddAction(site::UnloadAction);
    ASSERT_TRUE(waitForEvent("UnloadComplete"));
    EXPECT_EQ(keeper->records.size(), 3U);
}

TEST_F(HistoryFeedTest, AHistoryMayLetGoOfTheLogger)
{
    keeper->onKeep = [this] { logger = nullptr; };
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    startScripted();
    logger->AddAction(site::LiveAction);
    logger->Link()->Connect();
    EXPECT_TRUE(spinUntil([&] { return !logger; }));
    settle();
}

TEST_F(HistoryFeedTest, TheSimulatedLoggerKeepsRecordsWhileNobodyIsConnectedAndUnloadingFillsTheGap)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    startSimulated(QStringLiteral("sim:?connect=0&unloadtime=20&log=1000&wave.100=ramp:0:100:100"));
    logger->AddAction(site::LiveAction);
    logger->Link()->Connect();
    passUntil("Data");
    logger->Link()->Disconnect();
    passUntil("Disconnected");
    keeper->records.clear();
    const std::int64_t from = clock->now();
    clock->advance(10'500);
    logger->Link()->Connect();
    passUntil("Data");
    const std::int64_t reconnected = from + 10'500;
    keeper->records.clear();
    unload();
    forgetRecordsAfter(reconnected);
    ASSERT_EQ(keeper->records.size(), 10U);
    for (std::size_t i = 0; i < keeper->records.size(); ++i) {
        const std::int64_t moment = from + 1000 * (std::int64_t(i) + 1);
        EXPECT_EQ(keeper->records[i].time, timeOf(moment));
        EXPECT_NEAR(keeper->records[i].values[0], double(moment) / 1000, 1) << "as its memory was at that moment";
    }
    const auto first = keeper->records;
    keeper->records.clear();
    clock->advance(777);
    unload();
    forgetRecordsAfter(reconnected);
    ASSERT_EQ(keeper->records.size(), first.size());
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_EQ(keeper->records[i].time, first[i].time) << "a record has one time, however often it is unloaded";
}

TEST_F(HistoryFeedTest, WhatWasWrittenSinceIsNotInTheRecordsOfBefore)
{
    const auto a = channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    startSimulated(QStringLiteral("sim:?connect=0&unloadtime=20&log=1000&wave.100=const:5"));
    clock->advance(3500); // before the first connection, too
    logger->AddAction(site::LiveAction);
    logger->Link()->Connect();
    passUntil("Data");
    logger->Live()->WriteChannel(a, Variant(std::int16_t(77)));
    ASSERT_TRUE(
        spinUntil([&] { return a->Value().kind() == values::Kind::Integer && a->Value().integer() == 77; }));
    keeper->records.clear();
    unload();
    forgetRecordsAfter(3500);
    ASSERT_EQ(keeper->records.size(), 3U);
    for (const auto& record : keeper->records)
        EXPECT_EQ(record.values[0], 5);
}

TEST_F(HistoryFeedTest, TheSimulatedLoggerKeepsTheLatestRecordsThatItHasRoomFor)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    startSimulated(QStringLiteral("sim:?connect=0&unloadtime=20&log=1000&keeps=4"));
    clock->advance(100'500);
    logger->Link()->Connect();
    passUntil("Connected");
    unload();
    ASSERT_EQ(keeper->records.size(), 4U);
    EXPECT_EQ(keeper->records.front().time, timeOf(97'000));
    EXPECT_EQ(keeper->records.back().time, timeOf(100'000));
}

TEST_F(HistoryFeedTest, ProgrammingTheSimulatedLoggerForgetsWhatItHasKept)
{
    channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
    startSimulated(QStringLiteral("sim:?connect=0&unloadtime=20&programtime=20&log=1000"));
    clock->advance(5500);
    logger->Link()->Connect();
    passUntil("Connected");
    logger->AddAction(site::ProgramAction);
    passUntil("ProgramComplete");
    unload();
    EXPECT_TRUE(keeper->records.empty());
}

} // namespace
} // namespace zan::halyard
