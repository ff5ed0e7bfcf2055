#include "StoreFixture.h"

#include "history/StoreLock.h"

#include <QSqlDatabase>
#include <QSqlQuery>

#include <csignal>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>

namespace zan::history {

namespace {

bool holds(const QString& text, const char* part)
{
    return text.contains(QString::fromUtf8(part));
}

/// A database that is none of ours, with a table.
void makeForeign(const QString& path)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("foreign"));
        database.setDatabaseName(path);
        ASSERT_TRUE(database.open());
        ASSERT_TRUE(QSqlQuery(database).exec(QStringLiteral("CREATE TABLE plant (id INTEGER)")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("foreign"));
}

} // namespace

class StoreTrouble : public StoreFolder
{
protected:
    /// A store of so many records, all of them in the main file.
    void fill(int records, std::size_t tail = 16)
    {
        const auto store = make<HistoryStore>(place(), shortTail(tail));
        for (int i = 0; i < records; ++i)
            store->keep(Noon + i * 1000, columns(3),
                        {Variant(double(i)), Variant(1.0), Variant(QStringLiteral("On"))});
        ASSERT_TRUE(isFlushed(*store));
    }
    /// A store with records of three series in blocks with their figures, and five more in its tail.
    void fillBlocksAndTail()
    {
        const auto all = columns(3);
        const std::vector<Variant> values{Variant(1.0), Variant(2.0), Variant(3.0)};
        {
            const auto store = make<HistoryStore>(place(), shortTail(30));
            for (int i = 0; i < 100; ++i)
                store->keep(Noon + i * 1000, all, values);
            ASSERT_TRUE(isFlushed(*store));
            Database database(place(), Database::Access::Read);
            ASSERT_TRUE(comesTrue([&] {
                return database.number("SELECT count(*) FROM figure WHERE series = 3 AND level = 2") > 0 &&
                       database.number("SELECT frozen = removed FROM store") == 1;
            }));
        }
        const auto store = make<HistoryStore>(place(), shortTail(10'000));
        for (int i = 100; i < 105; ++i)
            store->keep(Noon + i * 1000, all, values);
        ASSERT_TRUE(isFlushed(*store));
    }
    void change(const char* sql)
    {
        Database database(place(), Database::Access::Write);
        database.runOnce(QString::fromLatin1(sql));
    }
};

TEST_F(StoreTrouble, ABlockThatIsDamagedIsSaidAndTheRestOfTheStoreStays)
{
    fillBlocksAndTail();
    change("UPDATE block SET data = X'05000000' WHERE series = 1");
    const auto store = opened();
    ASSERT_TRUE(comesTrue([&] { return store->rowCount() == 105; })) << store->State().toStdString();
    EXPECT_TRUE(store->points(1, Noon, Noon + 50, 10'000).empty());
    EXPECT_TRUE(holds(store->State(), "cannot be read")) << store->State().toStdString();
    EXPECT_EQ(store->points(2, Noon, Noon + 1'000'000, 1).at(0).count, 105);
    store->keep(Noon + 2'000'000, columns(2, 1), {Variant(2.0), Variant(3.0)});
    EXPECT_TRUE(isFlushed(*store));
    EXPECT_EQ(store->rowCount(), 106);
    EXPECT_TRUE(names(QStringLiteral("*.damaged-*")).isEmpty());
}

TEST_F(StoreTrouble, AFullDiskIsSaidAndWhatCameMeanwhileIsStoredWhenThereIsRoomAgain)
{
    fill(10);
    const int outcome = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const auto store = make<HistoryStore>(place(), shortTail(10'000));
        store->keep(Noon + 100'000, columns(1), {Variant(1.0)});
        if (!isFlushed(*store))
            return 1;
        const rlimit limit{200'000, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &limit);
        for (int i = 0; i < 40; ++i)
            store->keep(Noon + 200'000 + i, columns(1), {Variant(QString(20'000, u'x'))});
        if (!comesTrue([&] { return !store->State().isEmpty(); }))
            return 2;
        if (store->rowCount() < 11) // what is there is still read
            return 3;
        const rlimit enough{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &enough);
        if (!comesTrue([&] { return store->State().isEmpty(); }))
            return 4;
        return isFlushed(*store) && store->rowCount() == 51 ? 0 : 5;
    });
    EXPECT_EQ(outcome, 0);
    const auto store = opened();
    ASSERT_TRUE(comesTrue([&] { return store->rowCount() == 51; }));
    EXPECT_EQ(store->State(), QString());
}

TEST_F(StoreTrouble, ADamagedFileIsSetAsideAndANewOneBegun)
{
    fill(200);
    QByteArray bytes = read(at());
    ASSERT_GT(bytes.size(), 40'000);
    for (qsizetype i = 8192; i < bytes.size(); ++i)
        bytes[i] = char(i * 7);
    write(at(), bytes);
    const auto store = opened();
    store->keep(Noon, columns(1), {Variant(5.0)});
    ASSERT_TRUE(comesTrue([&] { return store->storedCount() == 1; }));
    EXPECT_TRUE(holds(store->State(), "was damaged")) << store->State().toStdString();
    EXPECT_TRUE(holds(store->State(), "set aside as weir.history.damaged-"));
    EXPECT_EQ(store->rowCount(), 1);
    const QStringList aside = names(QStringLiteral("*.damaged-*"));
    ASSERT_FALSE(aside.isEmpty());
    EXPECT_EQ(read(at(aside.first().toUtf8().constData())), bytes) << "nothing of it is lost";
}

TEST_F(StoreTrouble, AnyDamageGivesRecordsOrAClearStateAndNeverLosesTheFile)
{
    fill(300, 60);
    const QByteArray sound = read(at());
    std::mt19937 random(11);
    int setAside = 0;
    for (int round = 0; round < 150; ++round) {
        QByteArray bytes = sound;
        const int kind = int(random() % 4);
        if (kind == 0)
            bytes.truncate(qsizetype(random() % std::uint32_t(bytes.size())));
        const int spots = kind == 1 ? 1 : 30;
        for (int i = 0; i < spots && !bytes.isEmpty() && kind != 0; ++i) {
            // Often in the head of a page, where the tree hangs together.
            const auto page = qsizetype(random() % std::uint32_t(bytes.size() / 8192)) * 8192;
            const qsizetype place =
                kind == 2 ? page + qsizetype(random() % 40) : qsizetype(random() % std::uint32_t(bytes.size()));
            bytes[place] = char(random());
        }
        for (const QString& name : names())
            QFile::remove(at(name.toUtf8().constData()));
        write(at(), bytes);
        const auto store = make<HistoryStore>(place(), shortTail(20));
        for (int i = 0; i < 30; ++i)
            store->keep(Noon + 400'000 + i, columns(3), {Variant(1.0), Variant(2.0), Variant(3.0)});
        ASSERT_TRUE(comesTrue([&] { return store->storedCount() == 30 || !store->State().isEmpty(); }));
        store->rowCount();
        store->series();
        store->span();
        store->points(1, Noon, Noon + 400'000, 50);
        store->points(1, Noon, Noon + 400'000'000'000, 50);
        store->valuesAt(Noon + 5000);
        store->rows(0, 500, {1, 2, 3});
        store->placeOf(Noon + 7000);
        const QStringList aside = names(QStringLiteral("*.damaged-*"));
        setAside += !aside.isEmpty();
        ASSERT_TRUE(QFileInfo::exists(at()) || !aside.isEmpty()) << "round " << round;
        if (!aside.isEmpty()) {
            ASSERT_TRUE(comesTrue([&] { return !store->State().isEmpty(); })) << "round " << round;
        }
    }
    EXPECT_GT(setAside, 20) << "the test bites only when the damage is found";
}

/// What a damaged store may say of itself; none of it is believed.
struct HostileCell
{
    const char* name;
    const char* change;
};

class StoreHostile : public StoreTrouble, public testing::WithParamInterface<HostileCell>
{};

TEST_P(StoreHostile, AFigureThatNoStoreOfOursHasMakesWayForANewStoreAndIsSaid)
{
    fillBlocksAndTail();
    change(GetParam().change);
    const auto store = make<HistoryStore>(place(), shortTail(30));
    for (int i = 0; i < 40; ++i) // enough for a move into blocks
        store->keep(Noon + 60'000 + i * 10, columns(3), {Variant(1.0), Variant(2.0), Variant(3.0)});
    ASSERT_TRUE(comesTrue([&] {
        store->span();
        store->valuesAt(LatestTime);
        return holds(store->State(), "was damaged");
    })) << store->State().toStdString();
    EXPECT_FALSE(names(QStringLiteral("*.damaged-*")).isEmpty()) << "nothing of it is lost";
    ASSERT_TRUE(comesTrue([&] { return store->storedCount() == 40; }));
    store->keep(Noon + 200'000, columns(3), {Variant(1.0), Variant(2.0), Variant(3.0)});
    EXPECT_TRUE(isFlushed(*store));
    EXPECT_GT(store->rowCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Figures, StoreHostile,
    testing::Values(
        HostileCell{"Changes", "UPDATE store SET changes = 9223372036854775807"},
        HostileCell{"Frozen", "UPDATE store SET frozen = 9223372036854775807"},
        HostileCell{"Marker", "UPDATE store SET marker = -9223372036854775807, frozen = 1000"},
        HostileCell{"Removed", "UPDATE store SET removed = 9223372036854775807"},
        HostileCell{"Cutoff", "UPDATE store SET cutoff = 9223372036854775807"},
        HostileCell{"Trimmed", "UPDATE store SET trimmed = -9223372036854775807"},
        HostileCell{"TailId", "UPDATE tail SET id = 9223372036854775807 WHERE id = (SELECT max(id) FROM tail)"},
        HostileCell{"TailTime", "UPDATE tail SET time = -9223372036854775807"},
        HostileCell{"SeriesOfMoments", "UPDATE series SET id = 0 WHERE id = 1"},
        HostileCell{"SeriesId", "UPDATE series SET id = 9223372036854775806 WHERE id = 1"},
        HostileCell{"MomentsFirst", "UPDATE block SET first = -9223372036854775807 WHERE series = 0"},
        HostileCell{"MomentsLast", "UPDATE block SET last = 9223372036854775807 WHERE series = 0"},
        HostileCell{"MomentsCount", "UPDATE block SET count = 9223372036854775807 WHERE series = 0"},
        HostileCell{"BlockLast", "UPDATE block SET last = -9223372036854775807 WHERE series = 1"},
        HostileCell{"BlockFirst", "UPDATE block SET first = 'x' WHERE series = 1"},
        HostileCell{"BlockCount", "UPDATE block SET count = -1 WHERE series = 1"},
        HostileCell{"FigureData", "UPDATE figure SET data = X'000000020000000000000000' WHERE series = 1"}),
    [](const auto& given) { return given.param.name; });

TEST_F(StoreTrouble, AFileThatIsNoHistoryIsLeftAlone)
{
    makeForeign(at());
    const QByteArray before = read(at());
    const auto store = opened();
    store->keep(Noon, columns(1), {Variant(5.0)});
    ASSERT_TRUE(comesTrue([&] { return !store->State().isEmpty(); }));
    EXPECT_TRUE(holds(store->State(), "is not used, because the file is no history"))
        << store->State().toStdString();
    EXPECT_EQ(store->rowCount(), 0);
    EXPECT_EQ(read(at()), before);
    EXPECT_TRUE(names(QStringLiteral("*.damaged-*")).isEmpty());
}

TEST_F(StoreTrouble, AHistoryWithATriggerInItIsNotUsed)
{
    fill(5);
    {
        Database database(place(), Database::Access::Write);
        database.runOnce(QStringLiteral("CREATE TRIGGER spy AFTER INSERT ON tail BEGIN DELETE FROM tail; END"));
    }
    const auto store = opened();
    ASSERT_TRUE(comesTrue([&] { return !store->State().isEmpty(); }));
    EXPECT_TRUE(holds(store->State(), "other tables")) << store->State().toStdString();
}

TEST_F(StoreTrouble, AHistoryOfALaterProgramIsLeftAlone)
{
    fill(5);
    {
        Database database(place(), Database::Access::Write);
        database.runOnce(QStringLiteral("PRAGMA user_version = 99"));
    }
    const auto store = opened();
    ASSERT_TRUE(comesTrue([&] { return !store->State().isEmpty(); }));
    EXPECT_TRUE(holds(store->State(), "later version")) << store->State().toStdString();
}

TEST_F(StoreTrouble, OfTwoProgramsOneWritesAndTheOtherSaysSoAndReads)
{
    auto first = opened();
    first->keep(Noon, columns(1), {Variant(5.0)});
    ASSERT_TRUE(isFlushed(*first));
    const auto second = opened();
    second->keep(Noon + 1, columns(1), {Variant(6.0)});
    ASSERT_TRUE(comesTrue([&] { return !second->State().isEmpty(); }));
    EXPECT_TRUE(holds(second->State(), "Another program is writing this history")) << second->State().toStdString();
    EXPECT_EQ(second->rowCount(), 1);
    first->keep(Noon + 2, columns(1), {Variant(7.0)});
    ASSERT_TRUE(isFlushed(*first));
    EXPECT_EQ(second->rowCount(), 2);
    first = {};
    ASSERT_TRUE(comesTrue([&] { return second->State().isEmpty(); }));
    ASSERT_TRUE(isFlushed(*second));
    EXPECT_EQ(second->rowCount(), 3) << "what it was given meanwhile";
}

TEST_F(StoreTrouble, AFileThatSomebodyHasLockedIsWaitedFor)
{
    fill(5);
    const auto store = opened();
    ASSERT_TRUE(comesTrue([&] { return store->rowCount() == 5; }));
    {
        Database other(place(), Database::Access::Write);
        const Database::Transaction lock(other, Database::Access::Write);
        store->keep(Noon + 100'000, columns(1), {Variant(5.0)});
        ASSERT_TRUE(comesTrue([&] { return !store->State().isEmpty(); }));
        EXPECT_TRUE(holds(store->State(), "cannot be written at the moment")) << store->State().toStdString();
        EXPECT_EQ(store->rowCount(), 5);
    }
    ASSERT_TRUE(comesTrue([&] { return store->rowCount() == 6 && store->State().isEmpty(); }));
}

TEST_F(StoreTrouble, InAFolderThatCannotBeWrittenAStoreIsReadAndTheRestSaid)
{
    fill(5);
    for (const QString& name : names(QStringLiteral("*.lock")))
        QFile::remove(at(name.toUtf8().constData()));
    ASSERT_EQ(chmod(QFile::encodeName(at()).constData(), 0444), 0);
    ASSERT_EQ(chmod(QFile::encodeName(folder()).constData(), 0555), 0);
    const int outcome = inChild(
        [&] {
            const auto reader = make<HistoryStore>(place(), HistoryStore::Access::ReadOnly);
            if (reader->rowCount() != 5 || !reader->State().isEmpty())
                return 1;
            const auto store = opened();
            store->keep(Noon + 100'000, columns(1), {Variant(5.0)});
            if (!comesTrue([&] { return holds(store->State(), "nothing can be written in"); }))
                return 2;
            return 0;
        },
        true);
    ASSERT_EQ(chmod(QFile::encodeName(folder()).constData(), 0755), 0);
    EXPECT_EQ(outcome, 0);
}

TEST_F(StoreTrouble, AFolderThatIsNotThereIsSaid)
{
    HistoryPlace nowhere = place();
    nowhere.file = at("no/such/folder/weir.history");
    const auto store = make<HistoryStore>(nowhere);
    ASSERT_TRUE(comesTrue([&] { return !store->State().isEmpty(); }));
    EXPECT_TRUE(holds(store->State(), "nothing can be written in")) << store->State().toStdString();
    store->keep(Noon, columns(1), {Variant(1.0)});
    EXPECT_EQ(store->rowCount(), 0);
}

TEST_F(StoreTrouble, AHistoryThatIsSwitchedOffTakesNothingAndSaysNothing)
{
    const auto store = make<HistoryStore>(HistoryPlace());
    store->keep(Noon, columns(1), {Variant(1.0)});
    EXPECT_EQ(store->rowCount(), 0);
    EXPECT_EQ(store->State(), QString());
}

} // namespace zan::history
