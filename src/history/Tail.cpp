#include "history/Tail.h"

#include <algorithm>

namespace zan::history {

namespace {

struct Cell
{
    std::int64_t series;
    QByteArrayView value;
};

bool takeCells(const QByteArray& bytes, std::vector<Cell>& cells)
{
    cells.clear();
    ByteReader reader(bytes);
    std::int64_t series = 0;
    while (!reader.isAtEnd()) {
        const std::uint64_t distance = reader.number();
        const QByteArrayView value = takeValue(reader);
        if (reader.hasFailed() || distance >= std::uint64_t(MostSeries - series) ||
            (distance == 0 && !cells.empty()))
            return false;
        series += std::int64_t(distance);
        cells.push_back({series, value});
    }
    return !reader.hasFailed();
}

bool isEarlier(const TailPoint& point, HistoryTime time)
{
    return point.time < time;
}

} // namespace

bool Tail::add(std::int64_t id, HistoryTime time, const QByteArray& cells)
{
    // The values lie in the bytes that the entry keeps, which are not copied with it.
    std::vector<Cell> taken;
    if (id <= m_lastId || id > MostRecords || !isStorable(time) || !takeCells(cells, taken))
        return false;
    m_lastId = id;
    m_bytes += cells.size();
    m_entries.push_back({id, cells});
    for (const Cell& cell : taken) {
        if (std::size_t(cell.series) >= m_points.size())
            m_points.resize(std::size_t(cell.series) + 1);
        std::vector<TailPoint>& points = m_points[std::size_t(cell.series)];
        const TailPoint point{time, id, cell.value};
        if (points.empty() || points.back().time < time)
            points.push_back(point);
        else
            points.insert(std::lower_bound(points.begin(), points.end(), time, isEarlier), point);
    }
    return true;
}

void Tail::removeUpTo(std::int64_t id)
{
    if (m_entries.empty() || m_entries.front().id > id)
        return;
    for (std::vector<TailPoint>& points : m_points)
        std::erase_if(points, [&](const TailPoint& point) { return point.id <= id; });
    while (!m_entries.empty() && m_entries.front().id <= id) {
        m_bytes -= m_entries.front().cells.size();
        m_entries.pop_front();
    }
}

void Tail::load(Database& database, const StoreHead& head)
{
    removeUpTo(head.removed);
    bool isSoundTail = true;
    database.each("SELECT id, time, cells FROM tail WHERE id > ? ORDER BY id",
                  {qint64(std::max(m_lastId, head.removed))}, [&](const QSqlQuery& row) {
                      isSoundTail = isSoundTail && add(row.value(0).toLongLong(), row.value(1).toLongLong(),
                                                       row.value(2).toByteArray());
                  });
    if (!isSoundTail)
        throw StoreFailure{StoreFailure::Reason::Damaged, QStringLiteral("a record in it makes no sense")};
}

const std::vector<TailPoint>& Tail::points(std::int64_t series) const
{
    static const std::vector<TailPoint> none;
    return series >= 0 && series < seriesEnd() ? m_points[std::size_t(series)] : none;
}

bool Tail::contains(std::int64_t series, HistoryTime time) const
{
    const std::vector<TailPoint>& own = points(series);
    if (own.empty() || own.back().time < time)
        return false;
    return std::lower_bound(own.begin(), own.end(), time, isEarlier)->time == time;
}

} // namespace zan::history
