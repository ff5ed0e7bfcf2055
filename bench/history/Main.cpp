// Prints what keeping and reading a history costs, each figure beside that of a plain table in the same run: rows of
// channel, time and value through the database's own C library.
//
//     bench_history [SECONDS [MINUTES]]
//
// SECONDS: records of 10,000 channels that are stored, one for each second (default 150). MINUTES: from record to record
// in the year of 100 channels that is read (default 5; 1 takes five times as long to prepare).

#include "history/HistoryStore.h"
#include "history/PostgresServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>
#include <sqlite3.h>
#include <sys/resource.h>
#ifdef ZAN_WITH_LIBPQ
#include <libpq-fe.h>
#endif

using namespace zan;
using namespace zan::history;

namespace {

constexpr int ManyChannels = 10'000;
constexpr int YearChannels = 100;
constexpr HistoryTime Start = 1'767'225'600'000; // 2026-01-01 UTC
constexpr HistoryTime Day = 86'400'000;
constexpr HistoryTime Year = 365 * Day;

double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// What some work takes: CPU of this process and time on the clock, in seconds.
struct Cost
{
    double cpu = 0;
    double time = 0;
};

template <class Work>
Cost costOf(Work work)
{
    QElapsedTimer clock;
    clock.start();
    const double before = cpuSeconds();
    work();
    return {cpuSeconds() - before, double(clock.nsecsElapsed()) / 1e9};
}

void print(const char* what, double figure, const char* unit, const char* aim = "")
{
    std::printf("%-62s %10.3f %-12s %s\n", what, figure, unit, aim);
    std::fflush(stdout);
}

double valueAt(int channel, HistoryTime time)
{
    return std::sin(double(time % Day) / 1e7 + channel) * 100 + double(time / 1000 % 97) / 10;
}

std::shared_ptr<const site::HistoryColumns> columns(int count)
{
    auto result = std::make_shared<site::HistoryColumns>();
    for (int i = 0; i < count; ++i)
        result->push_back({0, QStringLiteral("RTD"), QStringLiteral("C%1").arg(i), {}, {}, {}, 1000});
    return result;
}

/// Hands records over and waits after each piece of them until they are stored.
void keep(HistoryStore& store, int channels, HistoryTime from, HistoryTime until, HistoryTime period, int piece)
{
    const auto all = columns(channels);
    std::vector<Variant> values(static_cast<std::size_t>(channels));
    int waiting = 0;
    for (HistoryTime time = from; time < until; time += period) {
        for (int i = 0; i < channels; ++i)
            values[std::size_t(i)] = Variant(valueAt(i, time));
        store.keep(time, all, values);
        if (++waiting < piece)
            continue;
        waiting = 0;
        if (!store.flush(std::chrono::minutes(5)))
            std::fprintf(stderr, "not stored: %s\n", qPrintable(store.State()));
    }
    store.flush(std::chrono::minutes(5));
}

/// A plain table of rows in SQLite.
class PlainTable
{
public:
    PlainTable(const QString& file, const char* key)
    {
        sqlite3_open(file.toUtf8().constData(), &m_database);
        run("PRAGMA journal_mode = WAL");
        run("PRAGMA synchronous = FULL");
        run(("CREATE TABLE record (series INTEGER, time INTEGER, value REAL" + std::string(key)).c_str());
        sqlite3_prepare_v2(m_database, "INSERT INTO record VALUES (?, ?, ?)", -1, &m_insert, nullptr);
    }
    ~PlainTable()
    {
        sqlite3_finalize(m_insert);
        sqlite3_close(m_database);
    }
    PlainTable(const PlainTable&) = delete;
    PlainTable& operator=(const PlainTable&) = delete;

    void run(const char* sql) { sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr); }
    void insert(int series, HistoryTime time, double value)
    {
        sqlite3_bind_int(m_insert, 1, series);
        sqlite3_bind_int64(m_insert, 2, time);
        sqlite3_bind_double(m_insert, 3, value);
        sqlite3_step(m_insert);
        sqlite3_reset(m_insert);
    }
    /// Number of rows of a question that is read to its end.
    int rows(const QString& sql)
    {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_database, sql.toUtf8().constData(), -1, &statement, nullptr);
        int count = 0;
        while (sqlite3_step(statement) == SQLITE_ROW)
            ++count;
        sqlite3_finalize(statement);
        return count;
    }

private:
    sqlite3* m_database = nullptr;
    sqlite3_stmt* m_insert = nullptr;
};

void storesManyChannels(const QString& folder, int seconds)
{
    HistoryPlace place;
    place.kind = HistoryPlace::Kind::Sqlite;
    place.file = folder + QStringLiteral("/many.history");
    Cost cost = costOf([&] {
        const auto store = values::make<HistoryStore>(place);
        keep(*store, ManyChannels, Start, Start + seconds * 1000, 1000, 1);
    });
    print("10,000 channels a second, SQLite: CPU", 100 * cost.cpu / seconds, "% of a core", "aim: below 50");
    print("    time on the clock for a second of data", 1000 * cost.time / seconds, "ms");

    const auto plain = [&](const char* what, const char* key) {
        PlainTable table(folder + QStringLiteral("/plain") + QString::fromLatin1(what).left(4), key);
        cost = costOf([&] {
            for (int second = 0; second < seconds; ++second) {
                table.run("BEGIN");
                for (int i = 0; i < ManyChannels; ++i)
                    table.insert(i, Start + second * 1000, valueAt(i, Start + second * 1000));
                table.run("COMMIT");
            }
        });
        print(what, 100 * cost.cpu / seconds, "% of a core");
        print("    time on the clock for a second of data", 1000 * cost.time / seconds, "ms");
    };
    plain("    rows appended, no index: sqlite3 itself", ")");
    plain("by channel and time (what reading needs): sqlite3 itself",
          ", PRIMARY KEY (series, time)) WITHOUT ROWID");
}

#ifdef ZAN_WITH_LIBPQ
void copyRows(const HistoryPlace& place, int seconds)
{
    const QByteArray where =
        QStringLiteral("host=%1 dbname=%2 user=%3").arg(place.host, place.database, place.user).toUtf8();
    PGconn* connection = PQconnectdb(where.constData());
    PQclear(PQexec(connection, "CREATE TABLE plain (series INTEGER, time BIGINT, value FLOAT8)"));
    const Cost cost = costOf([&] {
        for (int second = 0; second < seconds; ++second) {
            PQclear(PQexec(connection, "COPY plain FROM STDIN"));
            QByteArray text;
            for (int i = 0; i < ManyChannels; ++i)
                text += QByteArray::number(i) + '\t' + QByteArray::number(qint64(Start + second * 1000)) + '\t' +
                        QByteArray::number(valueAt(i, Start + second * 1000), 'g', 17) + '\n';
            PQputCopyData(connection, text.constData(), int(text.size()));
            PQputCopyEnd(connection, nullptr);
            while (PGresult* result = PQgetResult(connection))
                PQclear(result);
        }
    });
    PQfinish(connection);
    print("    rows without an index: COPY itself, CPU of this process", 100 * cost.cpu / seconds, "% of a core");
    print("    time on the clock for a second of data", 1000 * cost.time / seconds, "ms");
}
#endif

void storesOnAServer(int seconds)
{
    const PostgresServer server;
    if (!server.problem().isEmpty()) {
        std::printf("PostgreSQL is left out: %s\n", qPrintable(server.problem()));
        return;
    }
    const Cost cost = costOf([&] {
        const auto store = values::make<HistoryStore>(server.place());
        keep(*store, ManyChannels, Start, Start + seconds * 1000, 1000, 1);
    });
    print("10,000 channels a second, PostgreSQL: CPU of this process", 100 * cost.cpu / seconds, "% of a core",
          "aim: below 50");
    print("    time on the clock for a second of data", 1000 * cost.time / seconds, "ms");
#ifdef ZAN_WITH_LIBPQ
    copyRows(server.place(), seconds);
#endif
}

/// Time of one question, the fastest of some, in milliseconds.
template <class Work>
double millisecondsOf(Work work)
{
    double best = 1e9;
    for (int i = 0; i < 7; ++i)
        best = std::min(best, costOf(work).time * 1000);
    return best;
}

void readsAYear(const QString& folder, int minutes)
{
    const HistoryTime period = minutes * 60'000LL;
    HistoryPlace place;
    place.kind = HistoryPlace::Kind::Sqlite;
    place.file = folder + QStringLiteral("/year.history");
    const Cost cost = costOf([&] {
        const auto made = values::make<HistoryStore>(place);
        keep(*made, YearChannels, Start, Start + Year, period, 500);
    });
    const double all = double(Year) / double(period) * YearChannels;
    print("A year of 100 channels handed over: CPU for a value", 1e6 * cost.cpu / all, "us");
    print("    values", all / 1e6, "million");

    const auto store = values::make<HistoryStore>(place, HistoryStore::Access::ReadOnly);
    store->rowCount();
    std::size_t count = 0;
    const HistoryTime day = Start + 200 * Day;
    print("a day of one channel", millisecondsOf([&] { count = store->points(50, day, day + Day, 10'000).size(); }),
          "ms", "aim: below 20");
    print("    points", double(count), "");
    print("a year as 1,000 points",
          millisecondsOf([&] { count = store->points(50, Start, Start + Year, 1000).size(); }), "ms",
          "aim: below 50");
    print("    points", double(count), "");
    print("values of all 100 at a moment", millisecondsOf([&] { store->valuesAt(day + 12'345); }), "ms");
    print("100 rows of 8 channels in the middle", millisecondsOf([&] {
              store->rows(store->rowCount() / 2, 100, {1, 2, 3, 4, 5, 6, 7, 8});
          }),
          "ms");
    print("the row of a time", millisecondsOf([&] { store->placeOf(day); }), "ms");

    PlainTable table(folder + QStringLiteral("/plainyear"), ", PRIMARY KEY (series, time)) WITHOUT ROWID");
    table.run("BEGIN");
    for (int channel = 1; channel <= YearChannels; ++channel) {
        for (HistoryTime time = Start; time < Start + Year; time += period)
            table.insert(channel, time, valueAt(channel, time));
    }
    table.run("COMMIT");
    const QString dayRows =
        QStringLiteral("SELECT time, value FROM record WHERE series = 50 AND time >= %1 AND time < %2")
            .arg(day)
            .arg(day + Day);
    print("    a day, sqlite3 itself", millisecondsOf([&] { table.rows(dayRows); }), "ms");
    const QString yearRows =
        QStringLiteral(
            "SELECT min(time), max(time), min(value), max(value), avg(value), count(*) FROM record WHERE "
            "series = 50 GROUP BY (time - %1) * 1000 / %2")
            .arg(Start)
            .arg(Year);
    print("    a year as 1,000 groups, sqlite3 itself", millisecondsOf([&] { table.rows(yearRows); }), "ms");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int seconds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 150;
    const int minutes = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
    const QTemporaryDir folder;
    storesManyChannels(folder.path(), seconds);
    storesOnAServer(seconds);
    readsAYear(folder.path(), minutes);
    return 0;
}
