#include "PostgresServer.h"
#include "StoreFixture.h"

#include <QSqlDatabase>

#include <random>

namespace zan::history {

/// Tests against a real PostgreSQL server, started once for all of them.
class ServerStore : public testing::Test
{
protected:
    static void SetUpTestSuite() { s_server = std::make_unique<PostgresServer>(); }
    static void TearDownTestSuite() { s_server.reset(); }
    void SetUp() override
    {
        if (!s_server->problem().isEmpty())
            GTEST_SKIP() << "No PostgreSQL server could be started: " << s_server->problem().toStdString();
        if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")))
            GTEST_SKIP() << "The package libqt6sql6-psql is not installed.";
    }
    /// A site of its own for every test.
    HistoryPlace place() const
    {
        HistoryPlace place = s_server->place();
        place.schema = QStringLiteral("zan_test_%1")
                           .arg(QString::fromLatin1(testing::UnitTest::GetInstance()->current_test_info()->name()))
                           .toLower()
                           .left(60);
        return place;
    }
    static std::unique_ptr<PostgresServer> s_server;
};

std::unique_ptr<PostgresServer> ServerStore::s_server;

TEST_F(ServerStore, RecordsInAnyOrderTwiceAndLateAreThereOnceAndInOrder)
{
    StoreWriter::Limits limits;
    limits.tailRecords = 100;
    std::mt19937 random(5);
    fake::FakeHistory oracle;
    const auto all = columns(2);
    {
        const auto store = make<HistoryStore>(place(), limits);
        for (int i = 0; i < 1500; ++i) {
            const HistoryTime time = Noon + HistoryTime(random() % 1000) * 60'000;
            const std::vector<Variant> values{Variant(double(i)), Variant(QStringLiteral("Ü%1").arg(i))};
            store->keep(time, all, values);
            for (int k = 0; k < 2; ++k)
                oracle.records[k + 1].emplace(time, values[std::size_t(k)]);
        }
        ASSERT_TRUE(isFlushed(*store)) << store->State().toStdString();
    }
    const auto store = make<HistoryStore>(place(), limits);
    ASSERT_TRUE(comesTrue([&] { return store->rowCount() > 0; }));
    EXPECT_EQ(store->State(), QString());
    ASSERT_EQ(store->rowCount(), oracle.rowCount());
    const auto rows = store->rows(0, 10'000, {1, 2});
    const auto expected = oracle.rows(0, 10'000, {1, 2});
    ASSERT_EQ(rows.size(), expected.size());
    double sum = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ASSERT_EQ(rows[i].time, expected[i].time);
        ASSERT_EQ(numberIn(rows[i].cells[0]), numberIn(expected[i].cells[0]));
        ASSERT_EQ(rows[i].cells[1].text(), expected[i].cells[1].text());
        sum += numberIn(rows[i].cells[0]);
    }
    const auto points = store->points(1, Noon, Noon + 1000 * 60'000, 1);
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0].count, oracle.rowCount());
    EXPECT_NEAR(points[0].mean, sum / double(rows.size()), 1e-9);
    EXPECT_EQ(store->placeOf(rows[700].time), 700);
    EXPECT_EQ(numberIn(store->valuesAt(rows[500].time)[0].value), numberIn(rows[500].cells[0]));
    StoreReader reader(place());
    EXPECT_EQ(reader.check().mistakes, QStringList());
}

TEST_F(ServerStore, EachSiteHasItsOwnTables)
{
    HistoryPlace other = place();
    other.schema += QStringLiteral("_b");
    const auto first = make<HistoryStore>(place());
    const auto second = make<HistoryStore>(other);
    first->keep(Noon, columns(1), {Variant(1.0)});
    second->keep(Noon, columns(1), {Variant(2.0)});
    second->keep(Noon + 1, columns(1), {Variant(3.0)});
    ASSERT_TRUE(isFlushed(*first) && isFlushed(*second));
    // A read gives up where a busy server takes long.
    EXPECT_TRUE(comesTrue([&] { return first->rowCount() == 1; }));
    EXPECT_TRUE(comesTrue([&] { return second->rowCount() == 2; }));
}

TEST_F(ServerStore, OfTwoProgramsOneWritesAndTheOtherTakesOver)
{
    auto first = make<HistoryStore>(place());
    first->keep(Noon, columns(1), {Variant(1.0)});
    ASSERT_TRUE(isFlushed(*first));
    const auto second = make<HistoryStore>(place());
    ASSERT_TRUE(comesTrue([&] { return second->State().contains(QStringLiteral("Another program")); }));
    second->keep(Noon + 1, columns(1), {Variant(2.0)});
    first = {};
    ASSERT_TRUE(isFlushed(*second));
    EXPECT_TRUE(comesTrue([&] { return second->rowCount() == 2; }));
}

TEST_F(ServerStore, AServerThatGoesAwayIsSaidAndWhatCameMeanwhileIsStoredWhenItIsBack)
{
    const auto store = make<HistoryStore>(place());
    store->keep(Noon, columns(1), {Variant(1.0)});
    ASSERT_TRUE(isFlushed(*store));
    EXPECT_TRUE(comesTrue([&] { return store->rowCount() == 1; }));
    ASSERT_TRUE(s_server->stop());
    store->keep(Noon + 1, columns(1), {Variant(2.0)});
    ASSERT_TRUE(comesTrue([&] { return store->State().contains(QStringLiteral("cannot be written")); }));
    EXPECT_EQ(store->rowCount(), 0);
    ASSERT_TRUE(s_server->restart());
    ASSERT_TRUE(comesTrue([&] { return store->rowCount() == 2 && store->State().isEmpty(); }));
}

TEST_F(ServerStore, AServerThatIsNotThereIsSaidWithoutThePassword)
{
    HistoryPlace nowhere = place();
    nowhere.host += QStringLiteral("/none");
    nowhere.password = QStringLiteral("hush");
    const auto store = make<HistoryStore>(nowhere);
    ASSERT_TRUE(comesTrue([&] { return !store->State().isEmpty(); }));
    EXPECT_FALSE(store->State().contains(QStringLiteral("hush")));
}

} // namespace zan::history
