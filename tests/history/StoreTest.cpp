#include "StoreFixture.h"

#include <random>

namespace zan::history {

class Store : public StoreFolder
{};

TEST_F(Store, WhatWasHandedOverIsThereAfterTheProgramHasEnded)
{
    const auto two = columns(2);
    opened()->keep(Noon, two, {Variant(1.5), Variant(QStringLiteral("Pumping"))});
    const auto store = opened();
    ASSERT_TRUE(comesTrue([&] { return store->rowCount() == 1; }));
    EXPECT_EQ(store->State(), QString());
    const std::vector<HistorySeries> series = store->series();
    ASSERT_EQ(series.size(), 2U);
    EXPECT_EQ(series[0].window, QStringLiteral("RTD"));
    EXPECT_EQ(series[1].key, QStringLiteral("C1"));
    EXPECT_EQ(series[1].label, QStringLiteral("Channel 1"));
    EXPECT_EQ(series[1].units, QStringLiteral("m"));
    EXPECT_EQ(series[1].format, QStringLiteral("0.00"));
    EXPECT_EQ(series[1].period, 1000);
    const auto rows = store->rows(0, 10, {series[1].id, series[0].id});
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].time, Noon);
    EXPECT_EQ(rows[0].cells[0].text(), QStringLiteral("Pumping"));
    EXPECT_EQ(numberIn(rows[0].cells[1]), 1.5);
}

TEST_F(Store, ARecordThatComesTwiceIsThereOnceAsItCameFirst)
{
    const auto store = make<HistoryStore>(place(), shortTail(4));
    const auto one = columns(1);
    // Once within the tail, and once with the first one in a block.
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 10; ++i)
            store->keep(Noon + i, one, {Variant(double(i + 100 * round))});
        ASSERT_TRUE(isFlushed(*store));
    }
    EXPECT_EQ(store->rowCount(), 10);
    const auto points = store->points(1, Noon, Noon + 10, 1);
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0].count, 10);
    EXPECT_EQ(points[0].maximum, 9);
}

TEST_F(Store, AChannelsLateValueJoinsTheMomentThatIsThere)
{
    const auto store = make<HistoryStore>(place(), shortTail(4));
    for (int i = 0; i < 10; ++i)
        store->keep(Noon + i, columns(1), {Variant(double(i))});
    ASSERT_TRUE(isFlushed(*store));
    store->keep(Noon + 2, columns(2), {Variant(77.0), Variant(5.0)});
    ASSERT_TRUE(isFlushed(*store));
    EXPECT_EQ(store->rowCount(), 10);
    const auto rows = store->rows(2, 1, {1, 2});
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(numberIn(rows[0].cells[0]), 2);
    EXPECT_EQ(numberIn(rows[0].cells[1]), 5);
}

TEST_F(Store, ASeriesIsNamedByItsKeysAndTakesALaterLabel)
{
    const auto store = opened();
    store->keep(Noon, columns(1), {Variant(1.0)});
    auto renamed = std::make_shared<site::HistoryColumns>(*columns(1));
    renamed->front().label = QStringLiteral("Stage");
    store->keep(Noon + 1, renamed, {Variant(2.0)});
    ASSERT_TRUE(isFlushed(*store));
    const auto series = store->series();
    ASSERT_EQ(series.size(), 1U);
    EXPECT_EQ(series[0].label, QStringLiteral("Stage"));
    EXPECT_EQ(store->rowCount(), 2);
}

TEST_F(Store, AChannelWithoutAValueIsStoredAsThat)
{
    const auto store = opened();
    store->keep(Noon, columns(1), {Variant(1.0)});
    store->keep(Noon + 10, columns(1), {Variant()});
    ASSERT_TRUE(isFlushed(*store));
    EXPECT_EQ(numberIn(store->valuesAt(Noon + 9)[0].value), 1);
    EXPECT_TRUE(store->valuesAt(Noon + 10)[0].value.isEmpty());
    EXPECT_EQ(store->valuesAt(Noon + 10)[0].time, Noon + 10);
    EXPECT_EQ(store->valuesAt(Noon - 1)[0].time, 0);
    EXPECT_EQ(store->points(1, Noon, Noon + 100, 100).size(), 1U) << "no value is no point";
}

TEST_F(Store, RecordsThatMakeNoSenseAreNotTaken)
{
    const auto store = opened();
    store->keep(Noon, nullptr, {});
    store->keep(Noon, columns(2), {Variant(1.0)});
    store->keep(LatestTime + 1, columns(1), {Variant(1.0)});
    store->keep(EarliestTime - 1, columns(1), {Variant(1.0)});
    store->keep(EarliestTime, columns(1), {Variant(2.0)});
    store->keep(LatestTime, columns(1), {Variant(3.0)});
    ASSERT_TRUE(isFlushed(*store));
    EXPECT_EQ(store->State(), QString());
    EXPECT_EQ(store->rowCount(), 2);
    const auto points =
        store->points(1, std::numeric_limits<HistoryTime>::min(), std::numeric_limits<HistoryTime>::max(), 10'000);
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[1].maximum, 3);
}

TEST_F(Store, AskingForNonsenseGivesNothing)
{
    const auto store = opened();
    EXPECT_EQ(store->rowCount(), 0);
    store->keep(Noon, columns(1), {Variant(1.0)});
    ASSERT_TRUE(isFlushed(*store));
    EXPECT_TRUE(store->points(99, Noon, Noon + 1, 1).empty());
    EXPECT_TRUE(store->points(0, Noon, Noon + 1, 1).empty());
    EXPECT_TRUE(store->points(-5, Noon, Noon + 1, 1).empty());
    EXPECT_TRUE(store->points(1, Noon + 1, Noon, 1).empty());
    EXPECT_TRUE(store->points(1, Noon, Noon + 1, 0).empty());
    EXPECT_TRUE(store->rows(-1, 5, {1}).empty());
    EXPECT_TRUE(store->rows(1, 5, {1}).empty());
    const auto rows = store->rows(0, 5, {99});
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_TRUE(rows[0].cells[0].isEmpty());
}

namespace {

/// Compares everything that a store can be asked with the plainest answers.
void compare(const HistoryStore& store, const fake::FakeHistory& oracle, std::mt19937& random, HistoryTime length)
{
    ASSERT_EQ(store.rowCount(), oracle.rowCount());
    ASSERT_EQ(store.span().first, oracle.span().first);
    ASSERT_EQ(store.span().last, oracle.span().last);
    const auto anyTime = [&] {
        return Noon - length / 10 + HistoryTime(random() % (std::uint64_t(length) * 12 / 10));
    };
    for (int round = 0; round < 20; ++round) {
        const HistoryTime from = anyTime();
        const HistoryTime until = anyTime();
        const auto most = std::int32_t(1 + random() % 300);
        for (const HistorySeries& series : oracle.list) {
            const auto found = store.points(series.id, from, until, most);
            std::vector<HistoryPoint> expected;
            for (const auto& [time, value] : oracle.records.at(series.id)) {
                if (time < from || time >= until)
                    continue;
                const double number = numberIn(value);
                const HistoryTime stretch = (time - from) * most / (until - from);
                if (expected.empty() || (expected.back().first - from) * most / (until - from) != stretch)
                    expected.push_back({time, time, number, number, 0, 0});
                HistoryPoint& point = expected.back();
                point.last = time;
                point.minimum = std::min(point.minimum, number);
                point.maximum = std::max(point.maximum, number);
                point.mean += number;
                ++point.count;
            }
            ASSERT_EQ(found.size(), expected.size()) << from << " " << until << " " << most;
            for (std::size_t i = 0; i < found.size(); ++i) {
                ASSERT_EQ(found[i].first, expected[i].first);
                ASSERT_EQ(found[i].last, expected[i].last);
                ASSERT_EQ(found[i].minimum, expected[i].minimum);
                ASSERT_EQ(found[i].maximum, expected[i].maximum);
                ASSERT_EQ(found[i].count, expected[i].count);
                ASSERT_NEAR(found[i].mean, expected[i].mean / double(expected[i].count), 1e-9);
            }
        }
        ASSERT_EQ(store.placeOf(from), oracle.placeOf(from));
        const auto pasts = store.valuesAt(from);
        const auto expectedPasts = oracle.valuesAt(from);
        ASSERT_EQ(pasts.size(), expectedPasts.size());
        for (std::size_t i = 0; i < pasts.size(); ++i) {
            ASSERT_EQ(pasts[i].time, expectedPasts[i].time);
            ASSERT_EQ(pasts[i].value.isEmpty(), expectedPasts[i].value.isEmpty());
            if (!pasts[i].value.isEmpty()) {
                ASSERT_EQ(numberIn(pasts[i].value), numberIn(expectedPasts[i].value));
            }
        }
        const std::int64_t place = std::int64_t(random() % std::uint64_t(oracle.rowCount() + 1));
        const std::vector<std::int64_t> ids{oracle.list.back().id, oracle.list.front().id};
        const auto rows = store.rows(place, most, ids);
        const auto expectedRows = oracle.rows(place, most, ids);
        ASSERT_EQ(rows.size(), expectedRows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            ASSERT_EQ(rows[i].time, expectedRows[i].time);
            for (std::size_t column = 0; column < ids.size(); ++column) {
                ASSERT_EQ(rows[i].cells[column].isEmpty(), expectedRows[i].cells[column].isEmpty());
                if (!rows[i].cells[column].isEmpty()) {
                    ASSERT_EQ(numberIn(rows[i].cells[column]), numberIn(expectedRows[i].cells[column]));
                }
            }
        }
    }
}

struct Order
{
    std::uint32_t seed;
    std::size_t tail;   // records of the tail before it goes into blocks
    HistoryTime length; // of the time that the records are spread over
    int records;
};

} // namespace

class StoreOrder : public Store, public testing::WithParamInterface<Order>
{};

TEST_P(StoreOrder, RecordsInAnyOrderGiveWhatAllOfThemTogetherWould)
{
    const Order order = GetParam();
    std::mt19937 random(order.seed);
    fake::FakeHistory oracle;
    auto store = make<HistoryStore>(place(), shortTail(order.tail));
    constexpr int Channels = 3;
    const auto all = columns(Channels);
    for (int i = 0; i < Channels; ++i) {
        oracle.list.push_back((*all)[std::size_t(i)]);
        oracle.list.back().id = i + 1;
        oracle.records[i + 1];
    }
    store->keep(Noon, all, {Variant(1.0), Variant(2.0), Variant(3.0)});
    for (int i = 0; i < Channels; ++i)
        oracle.put(i + 1, Noon, Variant(i + 1.0));
    HistoryTime at = Noon;
    for (int record = 0; record < order.records; ++record) {
        // Mostly in order, now and then anywhere, now and then where one is already.
        at += 1 + HistoryTime(random() % (std::uint64_t(order.length) / std::uint64_t(order.records)));
        HistoryTime time = random() % 4 ? at : Noon + HistoryTime(random() % std::uint64_t(order.length));
        if (random() % 6 == 0)
            time = Noon;
        const int from = int(random() % Channels);
        const int count = 1 + int(random() % std::uint32_t(Channels - from));
        std::vector<Variant> values;
        for (int i = from; i < from + count; ++i) {
            values.emplace_back(double(std::int32_t(random() % 20'001)) / 8 - 1000);
            auto& stored = oracle.records[i + 1];
            stored.emplace(time, values.back());
        }
        store->keep(time, columns(count, from), values);
        if (record % (order.records / 4) == order.records / 8) {
            ASSERT_TRUE(isFlushed(*store));
            ASSERT_NO_FATAL_FAILURE(compare(*store, oracle, random, order.length));
        }
        if (record == order.records / 2)
            store = make<HistoryStore>(place(), shortTail(order.tail)); // another program goes on
    }
    ASSERT_TRUE(isFlushed(*store));
    ASSERT_NO_FATAL_FAILURE(compare(*store, oracle, random, order.length));
    store = {};
    StoreReader reader(place());
    EXPECT_EQ(reader.check().mistakes, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Orders, StoreOrder,
                         testing::Values(Order{1, 4, 3'600'000, 800}, Order{2, 50, 86'400'000, 3000},
                                         Order{3, 100'000, 86'400'000, 1000},
                                         Order{4, 300, 40 * 86'400'000LL, 6000},
                                         Order{5, 7, 700 * 86'400'000LL, 2000}, Order{6, 1500, 9'000'000, 9000}),
                         [](const auto& given) { return "Seed" + std::to_string(given.param.seed); });

TEST_F(Store, WhatIsTooOldGoesToTheHourAndNothingElse)
{
    constexpr HistoryTime now = Noon + 1'234'567;
    const HistoryTime cutoff = floorTo(now - 2 * 86'400'000LL, 3'600'000);
    StoreWriter::Limits limits = shortTail(64);
    limits.now = [] { return now; };
    fake::FakeHistory oracle;
    oracle.list.push_back(columns(1)->front());
    oracle.list.back().id = 1;
    const auto one = columns(1);
    {
        const auto store = make<HistoryStore>(place(), limits);
        for (int i = 0; i < 4000; ++i) { // some five days, old ones among them late
            const HistoryTime time = now - HistoryTime((i * 617) % 4000) * 108'000;
            store->keep(time, one, {Variant(double(i))});
            if (time >= cutoff)
                oracle.put(1, time, Variant(double(i)));
        }
        ASSERT_TRUE(isFlushed(*store));
        EXPECT_EQ(store->rowCount(), 4000);
    }
    limits.days = 2;
    const auto store = make<HistoryStore>(place(), limits);
    const auto count = [&] {
        std::int64_t all = 0;
        for (const HistoryPoint& day : store->points(1, cutoff - 10 * 86'400'000LL, now + 1, 3))
            all += day.count;
        return all;
    };
    // Series go one after the other.
    ASSERT_TRUE(comesTrue([&] { return store->rowCount() == oracle.rowCount() && count() == oracle.rowCount(); }));
    EXPECT_EQ(store->span().first, oracle.span().first);
    store->keep(cutoff - 1, one, {Variant(5.0)});
    ASSERT_TRUE(isFlushed(*store));
    EXPECT_EQ(store->rowCount(), oracle.rowCount()) << "what is too old does not come back";
    StoreReader reader(place());
    EXPECT_EQ(reader.check().mistakes, QStringList());
}

TEST_F(Store, AFileThatGrowsTooLargeLosesItsOldest)
{
    StoreWriter::Limits limits = shortTail(500);
    limits.megabytes = 1;
    const auto store = make<HistoryStore>(place(), limits);
    const auto many = columns(20);
    std::mt19937 random(3);
    HistoryTime time = Noon;
    for (int i = 0; i < 20'000; ++i, time += 60'000) {
        std::vector<Variant> values;
        for (int k = 0; k < 20; ++k)
            values.emplace_back(double(random()));
        store->keep(time, many, values);
        if (i % 1000 == 0) {
            ASSERT_TRUE(isFlushed(*store));
        }
    }
    ASSERT_TRUE(isFlushed(*store));
    Database database(place(), Database::Access::Read);
    const auto used = [&] {
        const Database::Transaction moment(database, Database::Access::Read);
        return (database.number("PRAGMA page_count") - database.number("PRAGMA freelist_count")) *
               database.number("PRAGMA page_size");
    };
    ASSERT_TRUE(comesTrue([&] { return used() <= 1024 * 1024; }));
    EXPECT_GT(store->span().first, Noon);
    EXPECT_GT(store->rowCount(), 500) << "no more goes than has to";
    EXPECT_EQ(store->span().last, time - 60'000);
    EXPECT_EQ(store->State(), QString());
}

} // namespace zan::history
