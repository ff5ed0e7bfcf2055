// Prints what keeping and reading a history costs, each figure beside that of a plain table in the same run: rows of
// channel, time and value through the database's own C library.
//
//     bench_history [SECONDS [MINUTES [ROWS]]]
//
// SECONDS: for so long a record of 10,000 channels is stored in every second that passes (default 30). MINUTES: from
// record to record in the year of 100 channels that is read (default 5; 1 takes five times as long to prepare). ROWS: of the
// long store of one channel whose rows are read as a table reads them (default 1,000,000).

#include "history/HistoryStore.h"
#include "history/PostgresServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>
#include <functional>
#include <sqlite3.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
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

/// Seconds of CPU of the processes that a server has had since it began, those that have ended included: what the
/// kernel counts for a process and for its children that were waited for.
class ServerClock
{
public:
    explicit ServerClock(pid_t server)
        : m_server(server)
    {}
    double seconds() const
    {
        double all = 0;
        for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            bool isNumber = false;
            const auto process = pid_t(name.toInt(&isNumber));
            const QList<QByteArray> fields = isNumber ? fieldsOf(process) : QList<QByteArray>();
            if (fields.size() < 15)
                continue;
            constexpr int Parent = 1, User = 11, System = 12, EndedUser = 13, EndedSystem = 14; // after the name
            if (process == m_server)
                all += fields[User].toDouble() + fields[System].toDouble() + fields[EndedUser].toDouble() +
                       fields[EndedSystem].toDouble();
            else if (fields[Parent].toLongLong() == m_server)
                all += fields[User].toDouble() + fields[System].toDouble();
        }
        return all / double(sysconf(_SC_CLK_TCK));
    }

private:
    static QList<QByteArray> fieldsOf(pid_t process)
    {
        QFile file(QStringLiteral("/proc/%1/stat").arg(process));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const QByteArray line = file.readAll();
        return line.mid(line.lastIndexOf(')') + 2).split(' ');
    }
    pid_t m_server;
};

/// Does the work of one second in each of so many seconds, as a site does that logs at this pace, and gives back what it
/// took a second. What a store does behind a second's records is counted with the next ones.
template <class Work>
double paced(int seconds, const std::function<double()>& clock, Work work)
{
    const double before = clock();
    const auto begin = std::chrono::steady_clock::now();
    for (int second = 0; second < seconds; ++second) {
        work(second);
        std::this_thread::sleep_until(begin + std::chrono::seconds(second + 1));
    }
    return (clock() - before) / seconds;
}

void printRatio(const char* what, double mine, double plain)
{
    std::printf("%-62s %10.3f times\n", what, plain > 0 ? mine / plain : 0.0);
    std::fflush(stdout);
}

double storesPaced(const HistoryPlace& place, int seconds, const std::function<double()>& clock)
{
    const auto all = columns(ManyChannels);
    const auto store = values::make<HistoryStore>(place);
    std::vector<Variant> values(ManyChannels);
    const double cost = paced(seconds, clock, [&](int second) {
        const HistoryTime time = Start + second * 1000;
        for (int i = 0; i < ManyChannels; ++i)
            values[std::size_t(i)] = Variant(valueAt(i, time));
        store->keep(time, all, values);
    });
    if (!store->flush(std::chrono::minutes(5)))
        std::fprintf(stderr, "not stored: %s\n", qPrintable(store->State()));
    std::printf("    records stored %lld of %d, lost: %s\n", static_cast<long long>(store->storedCount()), seconds,
                store->State().isEmpty() ? "none" : qPrintable(store->State()));
    return cost;
}

void storesManyChannels(const QString& folder, int seconds)
{
    HistoryPlace place;
    place.kind = HistoryPlace::Kind::Sqlite;
    place.file = folder + QStringLiteral("/many.history");
    const double mine = storesPaced(place, seconds, cpuSeconds);
    print("10,000 channels a second, SQLite: CPU", 100 * mine, "% of a core", "aim: below 50");
    const auto plain = [&](const char* what, const char* key) {
        PlainTable table(folder + QStringLiteral("/plain") + QString::fromLatin1(what).left(4), key);
        const double cost = paced(seconds, cpuSeconds, [&](int second) {
            table.run("BEGIN");
            for (int i = 0; i < ManyChannels; ++i)
                table.insert(i, Start + second * 1000, valueAt(i, Start + second * 1000));
            table.run("COMMIT");
        });
        print(what, 100 * cost, "% of a core");
        printRatio("        the history takes", mine, cost);
    };
    plain("    rows appended, no index: sqlite3 itself", ")");
    plain("by channel and time (what reading needs): sqlite3 itself",
          ", PRIMARY KEY (series, time)) WITHOUT ROWID");
}

#ifdef ZAN_WITH_LIBPQ
/// CPU for a second of records that are copied into a plain table, of this process and the server together.
double copiesPaced(const HistoryPlace& place, int seconds, const char* table, const std::function<double()>& clock)
{
    const QByteArray where =
        QStringLiteral("host=%1 dbname=%2 user=%3").arg(place.host, place.database, place.user).toUtf8();
    PGconn* connection = PQconnectdb(where.constData());
    PQclear(PQexec(connection, table));
    const double cost = paced(seconds, clock, [&](int second) {
        PQclear(PQexec(connection, "COPY plain FROM STDIN"));
        QByteArray text;
        for (int i = 0; i < ManyChannels; ++i)
            text += QByteArray::number(i) + '\t' + QByteArray::number(qint64(Start + second * 1000)) + '\t' +
                    QByteArray::number(valueAt(i, Start + second * 1000), 'g', 17) + '\n';
        PQputCopyData(connection, text.constData(), int(text.size()));
        PQputCopyEnd(connection, nullptr);
        while (PGresult* result = PQgetResult(connection))
            PQclear(result);
    });
    PQclear(PQexec(connection, "DROP TABLE plain"));
    PQfinish(connection);
    return cost;
}
#endif

void storesOnAServer(int seconds)
{
    const PostgresServer server;
    if (!server.problem().isEmpty()) {
        std::printf("PostgreSQL is left out: %s\n", qPrintable(server.problem()));
        return;
    }
    const ServerClock serverClock(server.process());
    const auto both = [&] { return cpuSeconds() + serverClock.seconds(); };
    const double serverBefore = serverClock.seconds();
    const double mine = storesPaced(server.place(), seconds, both);
    print("10,000 channels a second, PostgreSQL: CPU of both sides", 100 * mine, "% of a core", "aim: below 50");
    print("    of it the server's processes", 100 * (serverClock.seconds() - serverBefore) / seconds,
          "% of a core");
#ifdef ZAN_WITH_LIBPQ
    const auto plain = [&](const char* what, const char* table) {
        const double cost = copiesPaced(server.place(), seconds, table, both);
        print(what, 100 * cost, "% of a core");
        printRatio("        the history takes", mine, cost);
    };
    plain("    rows without an index: COPY itself, both sides",
          "CREATE TABLE plain (series INTEGER, time BIGINT, value FLOAT8)");
    plain("    by channel and time: COPY itself, both sides",
          "CREATE TABLE plain (series INTEGER, time BIGINT, value FLOAT8, PRIMARY KEY (series, time))");
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
    const double dayTime = millisecondsOf([&] { count = store->points(50, day, day + Day, 10'000).size(); });
    print("a day of one channel", dayTime, "ms", "aim: below 20");
    print("    points", double(count), "");
    const double yearTime = millisecondsOf([&] { count = store->points(50, Start, Start + Year, 1000).size(); });
    print("a year as 1,000 points", yearTime, "ms", "aim: below 50");
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
    const double plainDay = millisecondsOf([&] { table.rows(dayRows); });
    print("    a day, sqlite3 itself", plainDay, "ms");
    printRatio("        the history takes", dayTime, plainDay);
    const QString yearRows =
        QStringLiteral(
            "SELECT min(time), max(time), min(value), max(value), avg(value), count(*) FROM record WHERE "
            "series = 50 GROUP BY (time - %1) * 1000 / %2")
            .arg(Start)
            .arg(Year);
    const double plainYear = millisecondsOf([&] { table.rows(yearRows); });
    print("    a year as 1,000 groups, sqlite3 itself", plainYear, "ms");
    printRatio("        the history takes", yearTime, plainYear);
}

/// What a table asks for: a chunk of rows at any place, and the place of a time.
void readsRows(const QString& folder, int count)
{
    HistoryPlace place;
    place.kind = HistoryPlace::Kind::Sqlite;
    place.file = folder + QStringLiteral("/rows.history");
    place.megabytes = 0;
    {
        const auto made = values::make<HistoryStore>(place);
        keep(*made, 1, Start, Start + count * 1000LL, 1000, 20'000);
    }
    const auto store = values::make<HistoryStore>(place, HistoryStore::Access::ReadOnly);
    std::int64_t rows = 0;
    const Cost opening = costOf([&] { rows = store->rowCount(); });
    std::printf("A table of %lld rows of one channel\n", static_cast<long long>(rows));
    print("    opened and counted", opening.time * 1000, "ms");
    std::int64_t at = 0;
    const auto anywhere = [&] { return at = (at + rows / 7 * 3) % std::max<std::int64_t>(rows, 1); };
    constexpr int Chunk = 256;
    print("    256 rows anywhere", millisecondsOf([&] { store->rows(anywhere(), Chunk, {1}); }), "ms",
          "aim: below 16");
    print("    the row of a time", millisecondsOf([&] { store->placeOf(Start + anywhere() * 1000); }), "ms",
          "aim: below 16");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int seconds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 30;
    const int minutes = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
    const QTemporaryDir folder;
    storesManyChannels(folder.path(), seconds);
    storesOnAServer(seconds);
    readsAYear(folder.path(), minutes);
    readsRows(folder.path(), argc > 3 ? std::max(1, std::atoi(argv[3])) : 1'000'000);
    return 0;
}
