// A damaged or hostile file as a history: it is opened, read, written to and closed. Records or a clear state come of it,
// never a crash; what cannot be used is set aside or left alone, never deleted.
//
// An input is either a whole file (its first byte is 'F'), or what is to be changed in a small sound store: cells of its
// tables, bytes of its pages, its length.

#include "fuzz/support/Pieces.h"
#include "fuzz/support/Require.h"
#include "history/HistoryStore.h"
#include "values/Convert.h"
#include "values/Failure.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

using namespace zan;
using fuzz::Pieces;
using fuzz::require;
using history::HistoryStore;
using history::HistoryTime;
using values::Ref;
using values::Variant;

namespace {

constexpr HistoryTime Noon = 1'782'900'000'000;
constexpr int Channels = 3;
constexpr int Records = 40;
constexpr int NewRecords = 24;
constexpr std::uint64_t MostEdits = 40;

struct Column
{
    const char* table;
    const char* name;
};
constexpr Column Columns[] = {
    {"store", "version"}, {"store", "changes"},     {"store", "series_changes"},
    {"store", "frozen"},  {"store", "marker"},      {"store", "removed"},
    {"store", "cutoff"},  {"store", "trimmed"},     {"store", "id"},
    {"series", "id"},     {"series", "window_key"}, {"series", "label"},
    {"series", "format"}, {"series", "period"},     {"tail", "id"},
    {"tail", "time"},     {"tail", "cells"},        {"block", "series"},
    {"block", "first"},   {"block", "last"},        {"block", "count"},
    {"block", "data"},    {"figure", "series"},     {"figure", "level"},
    {"figure", "start"},  {"figure", "data"},
};

history::HistoryPlace placeOf(const QString& file)
{
    history::HistoryPlace place;
    place.kind = history::HistoryPlace::Kind::Sqlite;
    place.file = file;
    return place;
}

history::StoreWriter::Limits limits()
{
    history::StoreWriter::Limits limits;
    limits.tailRecords = 16;
    return limits;
}

std::shared_ptr<const site::HistoryColumns> columns()
{
    auto result = std::make_shared<site::HistoryColumns>();
    for (int i = 0; i < Channels; ++i)
        result->push_back({0, QStringLiteral("RTD"), QStringLiteral("C%1").arg(i), QStringLiteral("Label"),
                           QStringLiteral("m"), QStringLiteral("0.00"), 1000});
    return result;
}

void keep(HistoryStore& store, HistoryTime from, int records)
{
    const auto all = columns();
    for (int i = 0; i < records; ++i) {
        const Variant other = i % 7 == 0 ? Variant(std::nan("")) : Variant(QStringLiteral("On"));
        store.keep(from + i * 1000, all, {Variant(double(i)), Variant(std::int16_t(i)), other});
    }
}

/// The folder in which each input has its turn, in memory where there is such a place.
const QString& folder()
{
    static const QTemporaryDir made(QDir(QStringLiteral("/dev/shm")).exists()
                                        ? QStringLiteral("/dev/shm/zan-fuzz-XXXXXX")
                                        : QDir::tempPath() + QStringLiteral("/zan-fuzz-XXXXXX"));
    static const QString path = made.path();
    return path;
}

void empty()
{
    const QDir all(folder());
    for (const QString& name : all.entryList(QDir::Files | QDir::Hidden))
        QFile::remove(all.filePath(name));
}

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size(),
            "the fuzzer has its file");
}

/// A small store in which everything lies: blocks, figures, a tail.
const QByteArray& soundStore()
{
    static const QByteArray bytes = [] {
        empty();
        const QString path = folder() + QStringLiteral("/sound.history");
        {
            const Ref<HistoryStore> store = values::make<HistoryStore>(placeOf(path), limits());
            keep(*store, Noon, Records);
            require(store->flush(), "a sound store takes records");
            keep(*store, Noon + Records * 1000, 10);
            require(store->flush(), "a sound store takes records");
        }
        return read(path);
    }();
    return bytes;
}

QVariant hostileValue(Pieces& pieces)
{
    constexpr std::int64_t Special[] = {std::numeric_limits<std::int64_t>::min(),
                                        std::numeric_limits<std::int64_t>::max(),
                                        -1,
                                        0,
                                        1,
                                        history::EarliestTime,
                                        history::LatestTime,
                                        std::int64_t(1) << 59};
    switch (pieces.byte() % 7) {
    case 0:
        return qint64(Special[pieces.byte() % std::size(Special)]);
    case 1:
        return qint64(pieces.number(8));
    case 2:
        return qint64(Noon + std::int64_t(pieces.number(3)) - 1'000'000);
    case 3:
        return pieces.bytes(pieces.byte()).toByteArray();
    case 4:
        return QString(qsizetype(pieces.byte()) * 1000, QChar(char16_t(pieces.number(2))));
    case 5:
        return std::nan("");
    default:
        return QVariant();
    }
}

/// Changes cells as the piece of a program does that means harm and knows the tables.
void changeCells(const QString& path, Pieces& pieces, std::uint64_t edits)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("fuzz"));
        database.setDatabaseName(path);
        require(database.open(), "a sound store can be opened");
        QSqlQuery(database).exec(QStringLiteral("BEGIN"));
        for (std::uint64_t i = 0; i < edits && !pieces.isAtEnd(); ++i) {
            const Column& column = Columns[pieces.byte() % std::size(Columns)];
            QSqlQuery query(database);
            query.prepare(
                QStringLiteral("UPDATE %1 SET %2 = ? WHERE rowid = (SELECT rowid FROM %1 LIMIT 1 OFFSET ? % "
                               "max(1, (SELECT count(*) FROM %1)))")
                    .arg(QLatin1String(column.table), QLatin1String(column.name)));
            query.bindValue(1, int(pieces.byte()));
            query.bindValue(0, hostileValue(pieces));
            query.exec();
        }
        QSqlQuery(database).exec(QStringLiteral("COMMIT"));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("fuzz"));
}

void changePages(QByteArray& bytes, Pieces& pieces)
{
    while (!pieces.isAtEnd()) {
        const std::uint8_t kind = pieces.byte();
        const auto place = qsizetype(pieces.number(3) % std::uint64_t(bytes.size()));
        if (kind == 0xFF) {
            bytes.truncate(std::max<qsizetype>(place, 1));
            continue;
        }
        const QByteArray patch = pieces.bytes(std::min<std::size_t>(pieces.byte(), 64)).toByteArray();
        bytes.replace(place, std::min(patch.size(), bytes.size() - place), patch.left(bytes.size() - place));
    }
}

void prepare(const QString& path, const std::uint8_t* data, std::size_t size)
{
    if (size > 0 && data[0] == 'F') {
        write(path, QByteArray(reinterpret_cast<const char*>(data) + 1, qsizetype(size) - 1));
        return;
    }
    Pieces pieces(data, size);
    QByteArray bytes = soundStore();
    empty();
    write(path, bytes);
    if (const std::uint64_t edits = pieces.byte() % MostEdits; edits > 0)
        changeCells(path, pieces, edits);
    if (pieces.isAtEnd())
        return;
    bytes = read(path);
    changePages(bytes, pieces);
    write(path, bytes);
}

void look(const HistoryStore& store)
{
    const std::vector<site::HistorySeries> series = store.series();
    std::vector<std::int64_t> ids{0, -1, std::numeric_limits<std::int64_t>::max()};
    for (std::size_t i = 0; i < std::min<std::size_t>(series.size(), 8); ++i)
        ids.push_back(series[i].id);
    const site::HistorySpan span = store.span();
    require(span.isEmpty || (history::isStorable(span.first) && history::isStorable(span.last)),
            "a store names moments of the calendar");
    constexpr HistoryTime Least = std::numeric_limits<HistoryTime>::min();
    constexpr HistoryTime Greatest = std::numeric_limits<HistoryTime>::max();
    for (const std::int64_t id : ids) {
        for (const auto& [from, until] : {std::pair(Noon, Noon + 50'000), {Least, Greatest}}) {
            for (const site::HistoryPoint& point : store.points(id, from, until, 100)) {
                require(point.count > 0 && point.first <= point.last, "a point stands for records");
                require(std::isfinite(point.mean) && point.minimum <= point.mean && point.mean <= point.maximum,
                        "a point's figures are numbers in order");
            }
        }
    }
    for (const HistoryTime moment : {Noon + 20'000, Least, Greatest}) {
        store.placeOf(moment);
        for (const site::History::Past& past : store.valuesAt(moment))
            values::attempt([&] { values::toText(past.value); });
    }
    const std::int64_t count = store.rowCount();
    require(count >= 0, "there are no fewer rows than none");
    for (const std::int64_t place : {std::int64_t(0), count / 2, count - 1, Least, Greatest}) {
        for (const site::HistoryRow& row : store.rows(place, 50, ids))
            require(row.cells.size() == ids.size(), "a row has every cell");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication* const application = [] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        return new QCoreApplication(count, arguments);
    }();
    static_cast<void>(application);
    empty();
    const QString path = folder() + QStringLiteral("/weir.history");
    prepare(path, data, size);
    const QByteArray before = read(path);
    look(*values::make<HistoryStore>(placeOf(path), HistoryStore::Access::ReadOnly));
    require(QFile::exists(path), "whoever only reads deletes nothing");
    {
        const Ref<HistoryStore> store = values::make<HistoryStore>(placeOf(path), limits());
        keep(*store, Noon + 1'000'000, NewRecords);
        // Stored or said, however long the machine takes; what is neither is a hang, which the fuzzer ends.
        while (!store->flush(std::chrono::milliseconds(50)) && store->State().isEmpty()) {
        }
        look(*store);
        require(store->rowCount() > 0 || !store->State().isEmpty(), "what is stored can be read, or it is said");
    }
    const QStringList aside = QDir(folder()).entryList({QStringLiteral("*.damaged-*")}, QDir::Files);
    require(QFile::exists(path) || !aside.isEmpty(), "no file is lost");
    require(!before.isEmpty() || aside.isEmpty(), "an empty file is no damage");
    return 0;
}
