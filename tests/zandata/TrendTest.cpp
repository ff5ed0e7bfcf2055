#include "DataFixture.h"

#include "zandata/data/SeenCsv.h"
#include "zandata/data/TimeTicks.h"
#include "zandata/data/Trend.h"

#include <cmath>
#include <limits>

using namespace zan;
using namespace zan::zandata;
using fake::FakeHistory;
using site::HistoryPoint;
using values::Ref;

namespace {

/// A history that counts how it is asked.
class CountingHistory : public FakeHistory
{
public:
    mutable int pointCalls = 0;
    mutable std::int32_t largest = 0;
    mutable std::vector<std::pair<HistoryTime, HistoryTime>> asked;
    std::function<void()> onPoints;

    std::vector<HistoryPoint> points(std::int64_t series, Time from, Time until, std::int32_t most) const override
    {
        ++pointCalls;
        largest = std::max(largest, most);
        asked.emplace_back(from, until);
        if (onPoints)
            onPoints();
        return FakeHistory::points(series, from, until, most);
    }
};

Ref<CountingHistory> history(int channels, int records, std::int64_t step = 1000)
{
    auto store = values::make<CountingHistory>();
    for (int channel = 1; channel <= channels; ++channel) {
        const QString name = QStringLiteral("C%1").arg(channel);
        store->list.push_back({channel, QStringLiteral("W"), name, name, QStringLiteral("m"), {}, step});
        for (int i = 0; i < records; ++i)
            store->put(channel, noon() + i * step, double(channel * 100 + i % 10));
    }
    return store;
}

bool never()
{
    return false;
}
bool always()
{
    return true;
}

class TrendTest : public testing::Test
{
protected:
    void feed(const Ref<FakeHistory>& store) { trend.feed({}, store); }
    const std::vector<HistoryPoint>& points(std::size_t channel = 0)
    {
        return trend.channels()[channel].cache.points();
    }
    Trend trend;
};

} // namespace

// Reading ------------------------------------------------------------------------------------------------------

TEST_F(TrendTest, FollowsTheWholeOfItsRecordsAtFirst)
{
    feed(history(1, 100));
    EXPECT_EQ(trend.view().from(), noon());
    EXPECT_EQ(trend.view().until(), noon() + 99'001);
    EXPECT_TRUE(trend.read(500, never));
    EXPECT_EQ(points().size(), 100u);
}

TEST_F(TrendTest, NeverHoldsMorePointsThanAFewPicturesHavePixels)
{
    const auto store = history(1, 60'000, 100);
    feed(store);
    trend.read(500, never);
    EXPECT_LE(points().size(), std::size_t(PointCache::MostPoints));
    EXPECT_LE(store->largest, PointCache::MostPoints);
    std::int64_t records = 0;
    for (const HistoryPoint& point : points())
        records += point.count;
    EXPECT_EQ(records, 60'000);
}

TEST_F(TrendTest, SmallMovesReadNothing)
{
    const auto store = history(2, 5000);
    feed(store);
    trend.view().show(noon() + 1'000'000, noon() + 2'000'000);
    trend.read(500, never);
    const int before = store->pointCalls;
    for (int step = 0; step < 40; ++step) {
        trend.view().pan(20'000);
        trend.read(500, never);
    }
    EXPECT_EQ(store->pointCalls, before);
}

TEST_F(TrendTest, ManyMovesBeforeATurnEndInOneReadOfEachChannel)
{
    const auto store = history(3, 5000);
    feed(store);
    trend.read(500, never);
    const int before = store->pointCalls;
    for (int step = 0; step < 30; ++step)
        trend.view().zoom(0.8, double(noon() + 2'000'000));
    EXPECT_TRUE(trend.read(500, never));
    EXPECT_EQ(store->pointCalls - before, 3);
}

TEST_F(TrendTest, TurnThatIsOverReadsOneChannelAndLeavesTheRest)
{
    const auto store = history(3, 100);
    feed(store);
    EXPECT_FALSE(trend.read(500, always));
    EXPECT_EQ(store->pointCalls, 1);
    EXPECT_FALSE(trend.read(500, always));
    EXPECT_TRUE(trend.read(500, always));
    EXPECT_EQ(store->pointCalls, 3);
    EXPECT_FALSE(trend.isReadDue(500));
}

TEST_F(TrendTest, NewRecordReadsNoMoreThanTheEnd)
{
    const auto store = history(1, 10'000);
    feed(store);
    trend.read(500, never);
    store->put(1, noon() + 10'000'000, 7.0);
    store->asked.clear();
    feed(store);
    trend.read(500, never);
    ASSERT_EQ(store->asked.size(), 1u);
    EXPECT_GT(store->asked[0].first, noon() + 9'900'000);
    EXPECT_EQ(points().back().last, noon() + 10'000'000);
}

TEST_F(TrendTest, RecordsThatLandLateAreSeen)
{
    const auto store = history(1, 100);
    feed(store);
    trend.read(500, never);
    const std::size_t before = points().size();
    store->put(1, noon() + 500, 7.0); // between two that were there
    store->put(1, noon() + 100'000, 7.0);
    feed(store);
    trend.read(500, never);
    EXPECT_EQ(points().size(), before + 2);
}

TEST_F(TrendTest, HiddenChannelIsNotRead)
{
    const auto store = history(2, 100);
    trend.filter().setEnabled(1, false);
    feed(store);
    trend.read(500, never);
    EXPECT_EQ(store->pointCalls, 1);
    EXPECT_TRUE(points(0).empty());
    EXPECT_FALSE(points(1).empty());
}

TEST_F(TrendTest, ChannelsOfTheDataSourceAreFoundInTheHistoryByLabelAndUnits)
{
    const auto store = history(2, 10);
    store->list[1].label = QStringLiteral("C1"); // two of one name: in their order
    trend.feed(records({"X|m", "C1|m", "C1|m", "C1|l"}, {{1.0, 2.0, 3.0, 4.0}}), store);
    ASSERT_EQ(trend.channels().size(), 4u);
    EXPECT_NE(trend.channels()[0].store.get(), store.get());
    EXPECT_EQ(trend.channels()[1].series, 1);
    EXPECT_EQ(trend.channels()[2].series, 2);
    EXPECT_EQ(trend.channels()[2].store.get(), store.get());
    EXPECT_NE(trend.channels()[3].store.get(), store.get());
}

TEST_F(TrendTest, RecordThatTheHistoryHasNotStoredYetIsTakenFromTheBuffer)
{
    const auto store = history(1, 10);
    std::vector<std::vector<Variant>> rows;
    for (int i = 0; i < 11; ++i)
        rows.push_back({double(100 + i)});
    trend.feed(records({"C1|m"}, rows), store);
    trend.read(500, never);
    ASSERT_EQ(points().size(), 11u);
    EXPECT_EQ(points().back().last, noon() + 10'000);
    EXPECT_EQ(points().back().mean, 110);
    EXPECT_EQ(trend.channels()[0].lastTime, noon() + 10'000);
    EXPECT_EQ(values::toDouble(trend.channels()[0].lastValue), 110);
    // A moment later it is in both, a millisecond apart, and is there once.
    store->put(1, noon() + 9'999, 110.0);
    trend.feed(records({"C1|m"}, rows), store);
    trend.read(500, never);
    ASSERT_EQ(points().size(), 11u);
    EXPECT_EQ(points().back().last, noon() + 9'999);
}

TEST_F(TrendTest, RecordOnItsWayIntoTheHistoryLetsTheRestBe)
{
    const auto store = history(1, 10'000);
    std::vector<std::vector<Variant>> rows(10'001, std::vector<Variant>{1.0});
    trend.feed(records({"C1|m"}, rows), store);
    trend.read(500, never);
    store->put(1, noon() + 10'000'000, 1.0);
    rows.push_back({2.0});
    store->asked.clear();
    trend.feed(records({"C1|m"}, rows), store);
    trend.read(500, never);
    ASSERT_EQ(store->asked.size(), 1u);
    EXPECT_GT(store->asked[0].first, noon() + 9'900'000);
    EXPECT_EQ(points().back().last, noon() + 10'001'000);
}

// Gaps ---------------------------------------------------------------------------------------------------------

TEST_F(TrendTest, StretchWithoutRecordsIsAGapAndLateOnesAreNone)
{
    const auto store = values::make<FakeHistory>();
    store->list = {{1, {}, QStringLiteral("a"), {}, {}, {}, 1000}};
    for (const int second : {0, 1, 3, 6, 20, 21})
        store->put(1, noon() + second * 1000, 1.0);
    feed(store);
    trend.read(500, never);
    EXPECT_EQ(trend.gapsOf(trend.channels()[0]), (std::vector<Gap>{{noon() + 6000, noon() + 20'000}}));
    EXPECT_TRUE(trend.pointAt(trend.channels()[0], noon() + 8000));
    EXPECT_FALSE(trend.pointAt(trend.channels()[0], noon() + 15'000)) << "nothing is read out of a gap";
    EXPECT_FALSE(trend.pointAt(trend.channels()[0], noon() - 1));
}

TEST_F(TrendTest, WithoutAKnownPeriodTheRecordsThemselvesTellIt)
{
    const auto store = values::make<FakeHistory>();
    store->list = {{1, {}, QStringLiteral("a"), {}, {}, {}, 0}};
    for (int i = 0; i < 100; ++i) {
        if (i < 50 || i > 60)
            store->put(1, noon() + i * 1000, 1.0);
    }
    feed(store);
    trend.read(500, never);
    EXPECT_EQ(trend.gapsOf(trend.channels()[0]).size(), 1u);
}

TEST_F(TrendTest, GapsStayGapsWhereManyRecordsShareAPoint)
{
    const auto store = values::make<FakeHistory>();
    store->list = {{1, {}, QStringLiteral("a"), {}, {}, {}, 1000}};
    for (int i = 0; i < 40'000; ++i) {
        if (i < 20'000 || i > 22'000)
            store->put(1, noon() + i * 1000, 1.0);
    }
    feed(store);
    trend.read(100, never);
    ASSERT_LT(points().size(), 1000u);
    EXPECT_EQ(trend.gapsOf(trend.channels()[0]), (std::vector<Gap>{{noon() + 19'999'000, noon() + 22'001'000}}));
}

// Hostile stores -----------------------------------------------------------------------------------------------

TEST_F(TrendTest, StoreThatThrowsWhenItIsReadSaysSoAndIsNotAskedAgainForTheSame)
{
    const auto store = history(1, 100);
    feed(store);
    store->onPoints = [] { throw 7; };
    EXPECT_TRUE(trend.read(500, never));
    EXPECT_EQ(trend.state(), u"The stored records cannot be read.");
    EXPECT_TRUE(trend.read(500, never));
    EXPECT_EQ(store->pointCalls, 1);
    store->onPoints = {};
    feed(store);
    trend.read(500, never);
    EXPECT_EQ(trend.state(), QString());
    EXPECT_EQ(points().size(), 100u);
}

TEST_F(TrendTest, StoreThatComesBackToTheGraphWhileItIsReadIsNoCrash)
{
    const auto store = history(2, 100);
    feed(store);
    store->onPoints = [&] {
        trend.feed({}, {});
        trend.read(500, never);
        trend.filter().Reset();
    };
    EXPECT_TRUE(trend.read(500, never));
    EXPECT_EQ(trend.channels().size(), 2u);
}

TEST(SoundPoints, LeaveOutWhatIsNotFiniteNotInOrderOrOutside)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    const std::vector<HistoryPoint> sound = soundPoints({{10, 20, 1, 2, 1.5, 3},
                                                         {21, 22, nan, 2, 1, 1},
                                                         {23, 24, 1, infinite, 1, 1},
                                                         {25, 24, 1, 2, 1, 1},
                                                         {15, 30, 1, 2, 1, 1},
                                                         {26, 27, 1, 2, 1, 0},
                                                         {28, 29, 3, 2, 1, 1},
                                                         {30, 30, 5, 5, 5, 1},
                                                         {99, 101, 5, 5, 5, 1}},
                                                        0, 100);
    ASSERT_EQ(sound.size(), 2u);
    EXPECT_EQ(sound[1].first, 30);
}

TEST_F(TrendTest, LabelOfAMillionCharactersIsShortened)
{
    const auto store = history(1, 10);
    store->list[0].label = QString(1'000'000, u'x');
    store->list[0].units = QString(1'000'000, u'\n');
    feed(store);
    EXPECT_LE(trend.channels()[0].label.size(), 200);
    EXPECT_EQ(trend.channels()[0].units, QString());
}

TEST_F(TrendTest, SpanOfAllTimeIsHeldInsideTheCalendar)
{
    const auto store = values::make<FakeHistory>();
    store->list = {{1, {}, QStringLiteral("a"), {}, {}, {}, 0}};
    store->put(1, std::numeric_limits<std::int64_t>::min() + 5, 1.0);
    store->put(1, std::numeric_limits<std::int64_t>::max() - 5, 1.0);
    feed(store);
    EXPECT_TRUE(trend.read(500, never));
    EXPECT_GE(trend.view().from(), EarliestTime - 60'000);
    EXPECT_LE(trend.view().until(), LatestTime + 60'000);
}

// The log buffer -----------------------------------------------------------------------------------------------

TEST_F(TrendTest, RecordsOfTheBufferAreAddedAndThoseThatHaveLeftItGo)
{
    const auto made = values::make<RecordsHistory>(); // counted
    RecordsHistory& buffer = *made;
    const auto list = records({"A|m"}, {{1.0}, {2.0}, {3.0}});
    buffer.take(list);
    list->rows.erase(list->rows.begin());
    list->rows.push_back({Variant(dateOf(noon() + 3000)), 4.0});
    buffer.take(list);
    EXPECT_EQ(buffer.rowCount(), 3);
    EXPECT_EQ(buffer.span().first, noon() + 1000);
    EXPECT_EQ(buffer.span().last, noon() + 3000);
    EXPECT_EQ(values::toDouble(buffer.valuesAt(noon() + 2500)[0].value), 3.0);
}

TEST_F(TrendTest, BufferWhoseTimesGoBackwardsIsPutInOrderAndTheLaterOfOneTimeCounts)
{
    const auto made = values::make<RecordsHistory>(); // counted
    RecordsHistory& buffer = *made;
    const auto list = records({"A|m"}, {{1.0}, {2.0}, {3.0}});
    list->rows.push_back({Variant(dateOf(noon() + 1000)), 9.0});
    list->rows.push_back({Variant(QStringLiteral("no time")), 5.0});
    list->rows.push_back({Variant(values::Date{1e300}), 5.0});
    buffer.take(list);
    EXPECT_EQ(buffer.rowCount(), 3);
    EXPECT_EQ(values::toDouble(buffer.valuesAt(noon() + 1500)[0].value), 9.0);
    buffer.take(list);
    EXPECT_EQ(buffer.rowCount(), 3);
}

TEST_F(TrendTest, TextsEmptyCellsAndWhatIsNotFiniteAreNoPoints)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    trend.feed(records({"A"}, {{1.0}, {Variant()}, {QStringLiteral("5")}, {nan}, {Variant::null()}, {2.0}}), {});
    trend.read(500, never);
    ASSERT_EQ(points().size(), 2u);
    EXPECT_EQ(points()[1].mean, 2.0);
}

TEST_F(TrendTest, BufferOfOtherChannelsIsReadAnew)
{
    const auto made = values::make<RecordsHistory>(); // counted
    RecordsHistory& buffer = *made;
    buffer.take(records({"A", "B"}, {{1.0, 2.0}}));
    buffer.take(records({"B"}, {{7.0}}));
    ASSERT_EQ(buffer.series().size(), 1u);
    EXPECT_EQ(values::toDouble(buffer.valuesAt(noon())[0].value), 7.0);
    buffer.take({});
    EXPECT_EQ(buffer.rowCount(), 0);
}

// The stretch of time ------------------------------------------------------------------------------------------

TEST(TimeViewTest, WhatIsHeldStaysAndGoingLiveFollowsWhatWasFollowedLast)
{
    TimeView view;
    view.follow({1000, 5000, false}, 5000);
    view.followSpan(600'000);
    EXPECT_EQ(view.until(), 5001);
    view.pan(-1000);
    EXPECT_FALSE(view.isLive());
    view.follow({1000, 9000, false}, 9000);
    EXPECT_EQ(view.until(), 4001);
    view.goLive();
    EXPECT_EQ(view.until(), 9001);
    EXPECT_EQ(view.span(), 600'000);
    view.followRecords();
    EXPECT_EQ(view.from(), 1000);
}

TEST(TimeViewTest, ZoomKeepsTheMomentUnderThePointerAndHasEnds)
{
    TimeView view;
    view.show(0, 1000);
    view.zoom(0.5, 250);
    EXPECT_EQ(view.from(), 125);
    EXPECT_EQ(view.until(), 625);
    for (int i = 0; i < 200; ++i)
        view.zoom(0.5, 300);
    EXPECT_EQ(view.span(), TimeView::ShortestSpan);
    for (int i = 0; i < 200; ++i)
        view.zoom(2, 300);
    EXPECT_LE(view.span(), TimeView::LongestSpan);
    for (const double bad : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), HUGE_VAL}) {
        const HistoryTime from = view.from();
        view.zoom(bad, 0);
        EXPECT_EQ(view.from(), from);
    }
    view.pan(std::numeric_limits<double>::quiet_NaN());
    view.pan(1e300);
    EXPECT_LE(view.until(), LatestTime);
    view.show(100, 0);
    EXPECT_LT(view.from(), view.until());
}

TEST(TimeAxis, SaysSecondsMinutesDaysMonthsAndYearsInPlainWords)
{
    const auto labels = [](std::int64_t span, int most) {
        const TimeTicks ticks(noon(), noon() + span, most);
        QStringList texts;
        for (const HistoryTime time : ticks.times())
            texts << ticks.label(time);
        return texts.join(u'|');
    };
    EXPECT_EQ(labels(20'000, 4), u"14:00:00|14:00:10|14:00:20");
    EXPECT_EQ(labels(3'600'000, 5), u"14:00|14:15|14:30|14:45|15:00");
    EXPECT_EQ(labels(24 * 3'600'000, 4), u"Tue 3 Mar|12:00");
    EXPECT_EQ(labels(std::int64_t(7) * 24 * 3'600'000, 4), u"Wed 4 Mar|Fri 6 Mar|Sun 8 Mar");
    EXPECT_EQ(labels(std::int64_t(100) * 24 * 3'600'000, 4), u"Apr 2026|May 2026|Jun 2026");
    EXPECT_EQ(labels(std::int64_t(3) * 366 * 24 * 3'600'000, 4), u"2027|2028|2029");
    EXPECT_EQ(labels(0, 4), QString());
}

TEST(TimeAxis, NeverHasMoreMarksThanThereIsRoomFor)
{
    for (std::int64_t span = 1; span < TimeView::LongestSpan; span = span * 3 + 1) {
        for (const int most : {1, 3, 8})
            EXPECT_LE(TimeTicks(noon(), noon() + span, most).times().size(), std::size_t(most) + 2) << span;
    }
}

TEST(TimeAxis, StretchInWords)
{
    EXPECT_EQ(spanText(noon(), noon() + 3'600'000), u"Mon 2 Mar 2026, 14:00 to 15:00");
    EXPECT_EQ(spanText(noon(), noon() + 24 * 3'600'000), u"Mon 2 Mar 2026, 14:00 to Tue 3 Mar 2026, 14:00");
}

TEST(LogTime, DateAndTimeAreTheSameMomentBothWays)
{
    for (const std::int64_t offset : {0LL, 1LL, 999LL, 86'400'000LL, 31'536'000'123LL, -3'000'000'000'000LL})
        EXPECT_EQ(timeOf(Variant(dateOf(noon() + offset))), noon() + offset) << offset;
    EXPECT_FALSE(timeOf(Variant(1.5)));
    EXPECT_FALSE(timeOf(Variant(values::Date{std::numeric_limits<double>::quiet_NaN()})));
}

TEST(LogTime, TypedTimesAreDatesOrTimesOfTheSameDay)
{
    EXPECT_EQ(timeFromText(QStringLiteral(" 2026-03-02 14:00 "), 0), noon());
    EXPECT_EQ(timeFromText(QStringLiteral("14:00:30"), noon() + 7'200'000), noon() + 30'000);
    for (const char16_t* text : {u"", u"soon", u"99:99", u"2026-13-40"})
        EXPECT_FALSE(timeFromText(QString::fromUtf16(text), noon())) << QString::fromUtf16(text).toStdString();
}

// What is seen, as a table -------------------------------------------------------------------------------------

TEST_F(TrendTest, SingleRecordsAreARowForEachMoment)
{
    trend.feed(records({"=A|m", "B"}, {{1.0, 2.5}, {Variant(), 3.0}}), {});
    trend.read(500, never);
    EXPECT_EQ(seenCsv(trend), u"Time,'=A (m),B\r\n2026-03-02 14:00:00,1,2.5\r\n2026-03-02 14:00:01,,3\r\n");
}

TEST_F(TrendTest, SharedPointsAreARowEachWithTheirLeastMeanAndGreatestValue)
{
    const auto store = history(1, 10'000);
    feed(store);
    trend.read(10, never);
    const QStringList lines = seenCsv(trend).split(QStringLiteral("\r\n"));
    EXPECT_EQ(lines[0], u"Channel,From,To,Minimum,Mean,Maximum,Records");
    EXPECT_TRUE(lines[1].startsWith(QLatin1String("C1 (m),2026-03-02 14:00:00,")));
    EXPECT_TRUE(lines[2].contains(QLatin1String(",100,104.49236641221374,109,524"))) << lines[2].toStdString();
}
