#include "history/StoreWriter.h"

#include <QElapsedTimer>

#include <algorithm>

namespace zan::history {

namespace {

using Access = Database::Access;

/// Milliseconds after which a slice of tidying gives way to what has come meanwhile.
constexpr qint64 SliceTime = 100;
constexpr HistoryTime Hour = 3'600'000;
constexpr HistoryTime Day = 24 * Hour;

} // namespace

StoreWriter::StoreWriter(Database& database, const Limits& limits)
    : m_database(database)
    , m_limits(limits)
    , m_blocks(database)
    , m_head(StoreHead::read(database))
{
    m_tail.load(database, m_head);
    std::int64_t least = Moments + 1;
    database.each("SELECT id, window_key, channel_key FROM series", {}, [&](const QSqlQuery& row) {
        const std::int64_t id = row.value(0).toLongLong();
        m_ids.insert({row.value(1).toString(), row.value(2).toString()}, id);
        m_greatestId = std::max(m_greatestId, id);
        least = std::min(least, id);
    });
    if (m_greatestId >= MostSeries || least <= Moments)
        throw StoreFailure{StoreFailure::Reason::Damaged, QStringLiteral("a series in it makes no sense")};
}

void StoreWriter::learn(const std::vector<site::HistorySeries>& series, std::size_t place)
{
    const site::HistorySeries& facts = series[place];
    const std::pair key(facts.window, facts.key);
    const auto known = m_ids.constFind(key);
    const bool isNew = known == m_ids.constEnd();
    if (isNew && m_greatestId + 1 >= MostSeries)
        throw StoreFailure{StoreFailure::Reason::Full, QStringLiteral("it has as many series as it can hold")};
    const std::int64_t id = isNew ? m_greatestId + 1 : *known;
    m_database.run(
        "INSERT INTO series (id, window_key, channel_key, label, units, format, period) "
        "VALUES (?, ?, ?, ?, ?, ?, ?) ON CONFLICT (id) DO UPDATE SET label = excluded.label, "
        "units = excluded.units, format = excluded.format, period = excluded.period",
        {qint64(id), facts.window, facts.key, facts.label, facts.units, facts.format, qint64(facts.period)});
    m_ids.insert(key, id);
    m_greatestId = std::max(m_greatestId, id);
    m_idByPlace.push_back(id);
    ++m_head.seriesChanges;
}

bool StoreWriter::isStored(std::int64_t series, HistoryTime time)
{
    const auto place = std::size_t(series);
    if (place >= m_last.size()) {
        m_last.resize(place + 1, EarliestTime - 1);
        m_isLastKnown.resize(place + 1, false);
    }
    HistoryTime& last = m_last[place];
    if (!m_isLastKnown[place]) {
        const std::vector<TailPoint>& points = m_tail.points(series);
        last = std::max(m_blocks.last(series), points.empty() ? EarliestTime - 1 : points.back().time);
        m_isLastKnown[place] = true;
    }
    if (time > last) {
        last = time;
        return false;
    }
    return m_tail.contains(series, time) || m_blocks.contains(series, time);
}

QByteArray StoreWriter::freshCells(const QueuedRecord& record)
{
    struct Cell
    {
        std::int64_t series;
        QByteArrayView value;
    };
    std::vector<Cell> cells{{Moments, emptyValue()}};
    ByteReader reader(record.values);
    for (const std::int32_t place : *record.places) {
        const QByteArrayView value = takeValue(reader);
        cells.push_back({m_idByPlace[std::size_t(place)], value});
    }
    const auto isEarlier = [](const Cell& left, const Cell& right) { return left.series < right.series; };
    if (!std::is_sorted(cells.begin(), cells.end(), isEarlier))
        std::stable_sort(cells.begin(), cells.end(), isEarlier);
    QByteArray bytes;
    bytes.reserve(record.values.size() + 2 * qsizetype(cells.size()));
    std::int64_t former = 0;
    for (const Cell& cell : cells) {
        const bool isFirst = bytes.isEmpty();
        if ((!isFirst && cell.series == former) || isStored(cell.series, record.time))
            continue; // a series that a record names twice has its first value
        putNumber(bytes, std::uint64_t(cell.series - former));
        bytes.append(cell.value);
        former = cell.series;
    }
    return bytes;
}

void StoreWriter::store(const std::vector<QueuedRecord>& records, const std::vector<site::HistorySeries>& series)
{
    Database::Transaction transaction(m_database, Access::Write);
    const bool hasNewSeries = m_idByPlace.size() < series.size();
    while (m_idByPlace.size() < series.size())
        learn(series, m_idByPlace.size());
    if (hasNewSeries)
        m_head.write(m_database);
    for (const QueuedRecord& record : records) {
        if (record.time < m_head.cutoff || !isStorable(record.time))
            continue;
        const QByteArray cells = freshCells(record);
        if (cells.isEmpty())
            continue;
        const std::int64_t id = std::max(m_tail.lastId(), m_head.removed) + 1;
        m_database.run("INSERT INTO tail (id, time, cells) VALUES (?, ?, ?)",
                       {qint64(id), qint64(record.time), cells});
        if (!m_tail.add(id, record.time, cells))
            throw StoreFailure{StoreFailure::Reason::Other, QStringLiteral("a record could not be understood")};
    }
    transaction.commit();
}

bool StoreWriter::tidy(HistoryTime now)
{
    if (m_head.frozen > m_head.removed) {
        moveSlice();
        return true;
    }
    if (m_tail.bytes() > m_limits.tailBytes || m_tail.count() > m_limits.tailRecords) {
        m_head.frozen = m_tail.lastId();
        m_head.marker = -1;
        moveSlice();
        return true;
    }
    if (m_head.trimmed < m_head.cutoff || wantsTrimming(now)) {
        trimSlice();
        return true;
    }
    return false;
}

void StoreWriter::moveSeries(std::int64_t series)
{
    std::vector<StoredRecord> records;
    for (const TailPoint& point : m_tail.points(series)) {
        if (point.id <= m_head.frozen)
            records.push_back({point.time, point.value});
    }
    if (!records.empty())
        m_blocks.merge(series, records, series != Moments);
}

void StoreWriter::moveSlice()
{
    QElapsedTimer clock;
    clock.start();
    Database::Transaction transaction(m_database, Access::Write);
    while (m_head.marker + 1 < m_tail.seriesEnd() && !clock.hasExpired(SliceTime))
        moveSeries(++m_head.marker);
    const bool isDone = m_head.marker + 1 >= m_tail.seriesEnd();
    if (isDone) {
        m_head.removed = m_head.frozen;
        m_head.marker = -1;
        m_database.run("DELETE FROM tail WHERE id <= ?", {qint64(m_head.removed)});
        m_isSizeDue = true;
    }
    ++m_head.changes;
    m_head.write(m_database);
    transaction.commit();
    if (isDone)
        m_tail.removeUpTo(m_head.removed);
}

bool StoreWriter::wantsTrimming(HistoryTime now)
{
    HistoryTime cutoff = m_head.cutoff;
    if (m_limits.days > 0)
        cutoff = std::max(cutoff, floorTo(now - m_limits.days * Day, Hour));
    if (m_limits.megabytes > 0 && !m_database.isServer() && std::exchange(m_isSizeDue, false)) {
        const std::int64_t pages =
            m_database.number("PRAGMA page_count") - m_database.number("PRAGMA freelist_count");
        if (pages * m_database.number("PRAGMA page_size") > m_limits.megabytes * 1024 * 1024) {
            // A twentieth at a time, so that there is room for a while.
            const HistoryTime oldest =
                m_database.number("SELECT first FROM block WHERE series = 0 ORDER BY first LIMIT 1");
            if (!isStorable(oldest))
                throw StoreFailure{StoreFailure::Reason::Damaged, QStringLiteral("a time in it makes no sense")};
            const HistoryTime latest = std::max(m_blocks.last(Moments), oldest);
            cutoff =
                std::max(cutoff, floorTo(oldest, Hour) + std::max(Hour, floorTo((latest - oldest) / 20, Hour)));
        }
    }
    if (cutoff == m_head.cutoff)
        return false;
    m_head.cutoff = cutoff;
    m_trimmedSeries = -1;
    return true;
}

void StoreWriter::trimSlice()
{
    QElapsedTimer clock;
    clock.start();
    Database::Transaction transaction(m_database, Access::Write);
    while (m_trimmedSeries < m_greatestId && !clock.hasExpired(SliceTime))
        m_blocks.trim(++m_trimmedSeries, m_head.cutoff);
    if (m_trimmedSeries >= m_greatestId) {
        m_head.trimmed = m_head.cutoff;
        m_trimmedSeries = -1;
        m_isSizeDue = true;
    }
    ++m_head.changes;
    m_head.write(m_database);
    transaction.commit();
}

} // namespace zan::history
