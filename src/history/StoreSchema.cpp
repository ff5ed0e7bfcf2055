#include "history/StoreSchema.h"

#include "history/Blocks.h"

#include <array>

namespace zan::history {

namespace {

using Reason = StoreFailure::Reason;

constexpr std::int64_t Version = 1;
constexpr std::int64_t ApplicationId = 0x5A616E48; // "ZanH"

// series 0 in `block` holds the moments at which anything was stored, without values. A row of `tail` is what one
// moment has brought: for each series the distance of its id from the one before, and the value; ids rise within it.
constexpr std::array<const char*, 5> Tables = {
    "CREATE TABLE store (id BIGINT PRIMARY KEY, version BIGINT, changes BIGINT, series_changes BIGINT, "
    "frozen BIGINT, marker BIGINT, removed BIGINT, cutoff BIGINT, trimmed BIGINT)",
    "CREATE TABLE series (id %ID% PRIMARY KEY, window_key TEXT, channel_key TEXT, label TEXT, units TEXT, "
    "format TEXT, period BIGINT, UNIQUE (window_key, channel_key))",
    "CREATE TABLE tail (id %ID% PRIMARY KEY, time BIGINT, cells %BYTES%)",
    "CREATE TABLE block (series BIGINT, first BIGINT, last BIGINT, count BIGINT, data %BYTES%, "
    "PRIMARY KEY (series, first))",
    "CREATE TABLE figure (series BIGINT, level BIGINT, start BIGINT, data %BYTES%, "
    "PRIMARY KEY (series, level, start))",
};

QString tableText(const char* table, bool isServer)
{
    return QString::fromLatin1(table)
        .replace(QLatin1String("%ID%"), QLatin1String(isServer ? "BIGINT" : "INTEGER"))
        .replace(QLatin1String("%BYTES%"), QLatin1String(isServer ? "BYTEA" : "BLOB"));
}

void makeTables(Database& database)
{
    if (!database.isServer())
        database.runOnce(QStringLiteral("PRAGMA page_size = 8192"));
    Database::Transaction transaction(database, Database::Access::Write);
    for (const char* table : Tables)
        database.runOnce(tableText(table, database.isServer()));
    database.runOnce(
        QStringLiteral("INSERT INTO store VALUES (1, %1, 0, 0, 0, -1, 0, %2, %2)").arg(Version).arg(EarliestTime));
    if (!database.isServer()) {
        database.runOnce(QStringLiteral("PRAGMA application_id = %1").arg(ApplicationId));
        database.runOnce(QStringLiteral("PRAGMA user_version = %1").arg(Version));
    }
    transaction.commit();
}

enum class Content { Nothing, Ours };

/// A file is taken for ours only when every table in it is as we make it: nothing else in it is ever run.
Content lookAtFile(Database& database)
{
    const std::int64_t id = database.number("PRAGMA application_id");
    QStringList texts;
    database.each("SELECT sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name", {},
                  [&](const QSqlQuery& row) { texts.append(row.value(0).toString()); });
    if (id == 0 && texts.isEmpty())
        return Content::Nothing;
    if (id != ApplicationId)
        throw StoreFailure{Reason::Foreign, QStringLiteral("the file is no history")};
    if (database.number("PRAGMA user_version") > Version)
        throw StoreFailure{Reason::Foreign,
                           QStringLiteral("the history was made by a later version of the program")};
    QStringList ours;
    for (const char* table : Tables)
        ours.append(tableText(table, false));
    ours.sort();
    texts.sort();
    if (ours != texts)
        throw StoreFailure{Reason::Foreign, QStringLiteral("the file holds other tables than a history's")};
    return Content::Ours;
}

Content lookAtServer(Database& database)
{
    if (database.number("SELECT count(*) FROM information_schema.tables WHERE table_schema = current_schema()") ==
        0)
        return Content::Nothing;
    if (database.number("SELECT count(*) FROM information_schema.tables WHERE table_schema = current_schema() AND "
                        "table_name IN ('store', 'series', 'tail', 'block', 'figure')") != 5)
        throw StoreFailure{Reason::Foreign, QStringLiteral("its schema holds other tables than a history's")};
    if (database.number("SELECT version FROM store") > Version)
        throw StoreFailure{Reason::Foreign,
                           QStringLiteral("the history was made by a later version of the program")};
    return Content::Ours;
}

Content lookAt(Database& database)
{
    return database.isServer() ? lookAtServer(database) : lookAtFile(database);
}

} // namespace

void prepareStore(Database& database)
{
    if (lookAt(database) == Content::Nothing)
        makeTables(database);
    if (!database.isServer()) {
        database.runOnce(QStringLiteral("PRAGMA journal_mode = WAL"));
        database.runOnce(QStringLiteral("PRAGMA synchronous = FULL"));
        database.runOnce(QStringLiteral("PRAGMA journal_size_limit = 67108864"));
    }
}

void checkStore(Database& database)
{
    if (lookAt(database) == Content::Nothing)
        throw StoreFailure{Reason::Other, QStringLiteral("nothing has been stored yet")};
}

bool isSound(Database& database)
{
    if (database.isServer())
        return true;
    bool isOk = false;
    database.each("PRAGMA quick_check(1)", {},
                  [&](const QSqlQuery& row) { isOk = row.value(0).toString() == QLatin1String("ok"); });
    return isOk;
}

StoreHead StoreHead::read(Database& database)
{
    StoreHead head;
    bool isThere = false;
    database.each(
        "SELECT changes, series_changes, frozen, marker, removed, cutoff, trimmed FROM store WHERE id = 1", {},
        [&](const QSqlQuery& row) {
            std::int64_t* const fields[] = {&head.changes, &head.seriesChanges, &head.frozen, &head.marker,
                                            &head.removed, &head.cutoff,        &head.trimmed};
            int column = 0;
            for (std::int64_t* field : fields)
                *field = row.value(column++).toLongLong();
            isThere = true;
        });
    if (!isThere)
        throw StoreFailure{Reason::Damaged, QStringLiteral("its head is missing")};
    const auto isCount = [](std::int64_t number) { return number >= 0 && number < MostRecords / 2; };
    if (!isCount(head.changes) || !isCount(head.seriesChanges) || !isCount(head.frozen) || !isCount(head.removed) ||
        head.marker < -1 || head.marker > MostSeries || !isStorable(head.cutoff) || !isStorable(head.trimmed))
        throw StoreFailure{Reason::Damaged, QStringLiteral("its head makes no sense")};
    return head;
}

void StoreHead::write(Database& database) const
{
    database.run(
        "UPDATE store SET changes = ?, series_changes = ?, frozen = ?, marker = ?, removed = ?, cutoff = ?, "
        "trimmed = ? WHERE id = 1",
        {qint64(changes), qint64(seriesChanges), qint64(frozen), qint64(marker), qint64(removed), qint64(cutoff),
         qint64(trimmed)});
}

} // namespace zan::history
