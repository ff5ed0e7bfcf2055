#include "history/StoreReader.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zan::history {

namespace {

using Access = Database::Access;
using Past = site::History::Past;

constexpr std::int32_t MostAsked = 10'000;

[[noreturn]] void failDamaged()
{
    throw StoreFailure{StoreFailure::Reason::Damaged, QStringLiteral("a block of records in it makes no sense")};
}

/// Lies between the least and the greatest number also where the sum of all is too great for a number.
double meanOf(const Figures& figures)
{
    const double mean = std::isfinite(figures.sum) ? figures.sum / double(figures.count)
                                                   : figures.minimum / 2 + figures.maximum / 2;
    return std::clamp(mean, figures.minimum, figures.maximum);
}

bool isEarlier(const TailPoint& point, HistoryTime time)
{
    return point.time < time;
}

} // namespace

/// The points of one series under the making: equal stretches of time, each with the figures of what was found in it.
class StoreReader::Points
{
public:
    Points(std::int64_t series, HistoryTime from, HistoryTime until, std::int32_t most)
        : m_series(series)
        , m_from(from)
        , m_span(until - from)
        , m_most(most)
        , m_stretches(std::size_t(most))
    {}

    std::int64_t series() const noexcept { return m_series; }
    /// The stretch that a moment lies in. Times are below 2^49, and there are at most 10,000 stretches.
    std::int64_t stretchOf(HistoryTime time) const noexcept { return (time - m_from) * m_most / m_span; }
    void add(const Figures& figures)
    {
        Figures& stretch = m_stretches[std::size_t(stretchOf(figures.first))];
        if (stretch.count == 0)
            stretch = figures;
        else
            stretch.add(figures);
    }
    void add(HistoryTime time, QByteArrayView value)
    {
        double number = 0;
        if (numberOf(value, number))
            add(Figures::of(time, time, number));
    }
    std::vector<HistoryPoint> result() const
    {
        std::vector<HistoryPoint> points;
        for (const Figures& one : m_stretches) {
            if (one.count > 0)
                points.push_back({one.first, one.last, one.minimum, one.maximum, meanOf(one), one.count});
        }
        return points;
    }

private:
    std::int64_t m_series;
    HistoryTime m_from;
    HistoryTime m_span;
    std::int64_t m_most;
    std::vector<Figures> m_stretches;
};

StoreReader::StoreReader(const HistoryPlace& place)
    : m_database(place, Access::Read)
{
    checkStore(m_database);
}

void StoreReader::catchUp()
{
    const bool isFresh = std::exchange(m_isFresh, true); // until everything has been read
    const StoreHead head = StoreHead::read(m_database);
    const StoreHead former = std::exchange(m_head, head);
    m_tail.load(m_database, head);
    if (isFresh || head.changes != former.changes)
        loadMoments();
    if (isFresh || head.seriesChanges != former.seriesChanges) {
        m_series.clear();
        bool areSoundIds = true;
        m_database.each("SELECT id, window_key, channel_key, label, units, format, period FROM series ORDER BY id",
                        {}, [&](const QSqlQuery& row) {
                            const std::int64_t id = row.value(0).toLongLong();
                            areSoundIds = areSoundIds && id > Moments && id < MostSeries;
                            m_series.push_back({id, row.value(1).toString(), row.value(2).toString(),
                                                row.value(3).toString(), row.value(4).toString(),
                                                row.value(5).toString(), row.value(6).toLongLong()});
                        });
        if (!areSoundIds)
            failDamaged();
    }
    m_isFresh = false;
    m_tailMoments.clear();
    for (const TailPoint& point : m_tail.points(Moments)) {
        if (!isInBlocks(Moments, point))
            m_tailMoments.push_back(point.time);
    }
}

void StoreReader::loadMoments()
{
    m_moments.clear();
    std::int64_t before = 0;
    bool isSoundList = true;
    m_database.each(
        "SELECT first, count FROM block WHERE series = 0 ORDER BY first", {}, [&](const QSqlQuery& row) {
            const HistoryTime first = row.value(0).toLongLong();
            const std::int64_t count = row.value(1).toLongLong();
            isSoundList = isSoundList && isStorable(first) && count > 0 && count <= std::int64_t(MostInBlock);
            if (!isSoundList)
                return;
            m_moments.push_back({first, before, count});
            before += count;
        });
    if (!isSoundList)
        failDamaged();
}

bool StoreReader::isInBlocks(std::int64_t series, const TailPoint& point) const
{
    return point.id <= m_head.frozen && series <= m_head.marker;
}

std::vector<TailPoint> StoreReader::tailPoints(std::int64_t series) const
{
    std::vector<TailPoint> points = m_tail.points(series);
    std::erase_if(points, [&](const TailPoint& point) { return isInBlocks(series, point); });
    return points;
}

std::vector<HistorySeries> StoreReader::series()
{
    Database::Transaction transaction(m_database, Access::Read);
    catchUp();
    return m_series;
}

HistoryTime StoreReader::latest(std::int64_t series)
{
    HistoryTime time = EarliestTime - 1;
    m_database.each("SELECT last FROM block WHERE series = ? ORDER BY first DESC LIMIT 1", {qint64(series)},
                    [&](const QSqlQuery& row) { time = row.value(0).toLongLong(); });
    if (time != EarliestTime - 1 && !isStorable(time))
        failDamaged();
    return time;
}

HistorySpan StoreReader::span()
{
    Database::Transaction transaction(m_database, Access::Read);
    catchUp();
    HistorySpan span;
    if (!m_moments.empty())
        span = {m_moments.front().first, latest(Moments), false};
    if (m_tailMoments.empty())
        return span;
    if (span.isEmpty)
        return {m_tailMoments.front(), m_tailMoments.back(), false};
    return {std::min(span.first, m_tailMoments.front()), std::max(span.last, m_tailMoments.back()), false};
}

void StoreReader::eachInBlocks(std::int64_t series, HistoryTime from, HistoryTime until, const Look& look)
{
    struct Block
    {
        HistoryTime first;
        QByteArray data;
    };
    std::vector<Block> blocks;
    m_database.each("SELECT first, data FROM block WHERE series = ? AND first < ? AND first >= COALESCE("
                    "(SELECT max(first) FROM block WHERE series = ? AND first <= ?), ?) ORDER BY first",
                    {qint64(series), qint64(until), qint64(series), qint64(from), qint64(from)},
                    [&](const QSqlQuery& row) {
                        blocks.push_back({row.value(0).toLongLong(), row.value(1).toByteArray()});
                    });
    std::vector<StoredRecord> records;
    for (const Block& block : blocks) {
        if (!takeRecords(block.data, block.first, records))
            failDamaged();
        for (const StoredRecord& record : records) {
            if (record.time >= from && record.time < until)
                look(record.time, record.value);
        }
    }
}

void StoreReader::eachOfBoth(std::int64_t series, HistoryTime from, HistoryTime until, const Look& look)
{
    const std::vector<TailPoint> tail = tailPoints(series);
    auto next = std::lower_bound(tail.begin(), tail.end(), from, isEarlier);
    const auto end = std::lower_bound(next, tail.end(), until, isEarlier);
    eachInBlocks(series, from, until, [&](HistoryTime time, QByteArrayView value) {
        for (; next != end && next->time < time; ++next)
            look(next->time, next->value);
        look(time, value);
    });
    for (; next != end; ++next)
        look(next->time, next->value);
}

void StoreReader::eachRecord(std::int64_t series, HistoryTime from, HistoryTime until, const Look& look)
{
    Database::Transaction transaction(m_database, Access::Read);
    catchUp();
    eachOfBoth(series, from, until, look);
}

std::vector<Figures> StoreReader::figures(std::int64_t series, int level, HistoryTime from, HistoryTime until)
{
    const Level& steps = Levels[std::size_t(level)];
    std::vector<Figures> all;
    std::vector<Figures> row;
    bool isSoundRow = true;
    m_database.each("SELECT start, data FROM figure WHERE series = ? AND level = ? AND start >= ? AND start < ? "
                    "ORDER BY start",
                    {qint64(series), level, qint64(floorTo(from, steps.rowLength())), qint64(until)},
                    [&](const QSqlQuery& one) {
                        isSoundRow = isSoundRow &&
                                     takeFigures(one.value(1).toByteArray(), one.value(0).toLongLong(), steps, row);
                        all.insert(all.end(), row.begin(), row.end());
                    });
    if (!isSoundRow)
        failDamaged();
    std::erase_if(all, [&](const Figures& one) { return one.last < from || one.first >= until; });
    return all;
}

void StoreReader::gather(Points& points, int level, HistoryTime from, HistoryTime until)
{
    if (level < 0) {
        eachInBlocks(points.series(), from, until,
                     [&](HistoryTime time, QByteArrayView value) { points.add(time, value); });
        return;
    }
    // Figures whose records lie in one stretch are taken as they are; where a border goes through them, the finer ones
    // below tell on which side each record lies.
    const HistoryTime length = Levels[std::size_t(level)].length;
    for (const Figures& one : figures(points.series(), level, from, until)) {
        const bool isInside = one.first >= from && one.last < until;
        if (isInside && points.stretchOf(one.first) == points.stretchOf(one.last))
            points.add(one);
        else
            gather(points, level - 1, std::max(from, one.start), std::min(until, one.start + length));
    }
}

std::vector<HistoryPoint> StoreReader::points(std::int64_t series, HistoryTime from, HistoryTime until,
                                              std::int32_t most)
{
    from = std::clamp(from, EarliestTime, LatestTime);
    until = std::clamp(until, EarliestTime, LatestTime + 1);
    if (series <= 0 || until <= from || most < 1)
        return {};
    Database::Transaction transaction(m_database, Access::Read);
    catchUp();
    Points points(series, from, until, std::min(most, MostAsked));
    const HistoryTime width = (until - from) / std::min(most, MostAsked);
    int level = int(Levels.size()) - 1;
    while (level >= 0 && Levels[std::size_t(level)].length > width)
        --level;
    gather(points, level, from, until);
    for (const TailPoint& point : tailPoints(series)) {
        if (point.time >= from && point.time < until)
            points.add(point.time, point.value);
    }
    return points.result();
}

Past StoreReader::pastOf(std::int64_t series, HistoryTime moment)
{
    Past past;
    bool isFound = false;
    HistoryTime first = 0;
    QByteArray data;
    m_database.each("SELECT first, data FROM block WHERE series = ? AND first <= ? ORDER BY first DESC LIMIT 1",
                    {qint64(series), qint64(moment)}, [&](const QSqlQuery& row) {
                        first = row.value(0).toLongLong();
                        data = row.value(1).toByteArray();
                        isFound = true;
                    });
    std::vector<StoredRecord> records;
    if (isFound && !takeRecords(data, first, records))
        failDamaged();
    const auto isLater = [](HistoryTime time, const auto& record) { return time < record.time; };
    const auto next = std::upper_bound(records.begin(), records.end(), moment, isLater);
    QByteArrayView value;
    if (next != records.begin()) {
        past.time = std::prev(next)->time;
        value = std::prev(next)->value;
    }
    const std::vector<TailPoint>& tail = m_tail.points(series); // what is in blocks too is the same there
    const auto after = std::upper_bound(tail.begin(), tail.end(), moment, isLater);
    if (after != tail.begin() && (value.isEmpty() || std::prev(after)->time > past.time)) {
        past.time = std::prev(after)->time;
        value = std::prev(after)->value;
    }
    if (!value.isEmpty())
        past.value = valueOf(value);
    return past;
}

std::vector<Past> StoreReader::valuesAt(HistoryTime moment)
{
    Database::Transaction transaction(m_database, Access::Read);
    catchUp();
    std::vector<Past> values;
    values.reserve(m_series.size());
    for (const HistorySeries& one : m_series)
        values.push_back(pastOf(one.id, moment));
    return values;
}

std::int64_t StoreReader::countRows()
{
    const std::int64_t inBlocks = m_moments.empty() ? 0 : m_moments.back().before + m_moments.back().count;
    return inBlocks + std::int64_t(m_tailMoments.size());
}

std::int64_t StoreReader::rowCount()
{
    Database::Transaction transaction(m_database, Access::Read);
    catchUp();
    return countRows();
}

std::int64_t StoreReader::rowsBefore(std::size_t block) const
{
    const MomentBlock& one = m_moments[block];
    const auto end = std::lower_bound(m_tailMoments.begin(), m_tailMoments.end(), one.first);
    return one.before + (end - m_tailMoments.begin());
}

std::vector<HistoryRow> StoreReader::rows(std::int64_t place, std::int32_t most,
                                          const std::vector<std::int64_t>& series)
{
    Database::Transaction transaction(m_database, Access::Read);
    catchUp();
    most = std::clamp(most, 1, MostAsked);
    std::vector<HistoryRow> rows;
    if (place < 0 || place >= countRows())
        return rows;
    // The block in which the place lies, found by halving; before the first block lie moments of the tail alone.
    std::size_t low = 0;
    std::size_t high = m_moments.size();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (rowsBefore(middle) <= place)
            low = middle + 1;
        else
            high = middle;
    }
    std::int64_t at = low > 0 ? rowsBefore(low - 1) : 0;
    HistoryTime from = low > 0 ? m_moments[low - 1].first : EarliestTime;
    const auto take = [&](HistoryTime time, QByteArrayView) {
        if (at++ >= place && std::int32_t(rows.size()) < most)
            rows.push_back({time, std::vector<Variant>(series.size())});
    };
    for (std::size_t block = low; std::int32_t(rows.size()) < most; ++block) {
        const HistoryTime until = block < m_moments.size() ? m_moments[block].first : LatestTime + 1;
        eachOfBoth(Moments, from, until, take);
        from = until;
        if (block >= m_moments.size())
            break;
    }
    for (std::size_t column = 0; column < series.size() && !rows.empty(); ++column) {
        auto row = rows.begin();
        eachOfBoth(series[column], rows.front().time, rows.back().time + 1,
                   [&](HistoryTime time, QByteArrayView value) {
                       while (row != rows.end() && row->time < time)
                           ++row;
                       if (row != rows.end() && row->time == time)
                           row->cells[column] = valueOf(value);
                   });
    }
    return rows;
}

std::int64_t StoreReader::place(HistoryTime moment)
{
    std::int64_t before =
        std::lower_bound(m_tailMoments.begin(), m_tailMoments.end(), moment) - m_tailMoments.begin();
    const auto next =
        std::upper_bound(m_moments.begin(), m_moments.end(), moment,
                         [](HistoryTime time, const MomentBlock& block) { return time < block.first; });
    if (next == m_moments.begin())
        return before;
    const MomentBlock& block = *std::prev(next);
    before += block.before;
    eachInBlocks(Moments, block.first, moment, [&](HistoryTime, QByteArrayView) { ++before; });
    return before;
}

std::int64_t StoreReader::placeOf(HistoryTime moment)
{
    Database::Transaction transaction(m_database, Access::Read);
    catchUp();
    return place(moment);
}

} // namespace zan::history
