#include "zandata/data/RecordRows.h"

#include "values/Failure.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace zan::zandata {

using values::attempt;

namespace {

/// Chunks that are asked for at a time: what was seen long before is scrolled past.
constexpr std::size_t MostWanted = 4;
constexpr qsizetype LongestLabel = 200;

bool areAlike(const std::vector<site::HistorySeries>& a, const std::vector<site::HistorySeries>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const site::HistorySeries& one, const site::HistorySeries& other) {
                          return one.id == other.id && one.label == other.label && one.units == other.units &&
                                 one.format == other.format;
                      });
}

} // namespace

void RecordRows::setSource(const Ref<site::LogRecords>& records, const Ref<site::History>& history)
{
    if (m_isBusy)
        return;
    const QScopedValueRollback busy(m_isBusy, true);
    attempt([&] { m_records->take(history ? Ref<site::LogRecords>() : records); });
    const Ref<site::History> store = history ? history : Ref<site::History>(m_records);

    std::vector<site::HistorySeries> columns;
    std::int64_t count = 0;
    std::int64_t before = 0; // rows up to the last one that was known
    HistoryTime last = 0;
    const bool isAnswered = attempt([&] {
        columns = store->series();
        count = std::max<std::int64_t>(store->rowCount(), 0);
        before = store->placeOf(m_last + 1);
        const site::HistorySpan span = store->span();
        last = span.isEmpty ? 0 : std::clamp(span.last, EarliestTime, LatestTime);
    });
    if (!isAnswered)
        return; // what was shown stays
    if (columns.size() > MostColumns)
        columns.resize(MostColumns);
    for (site::HistorySeries& column : columns)
        column.label = (column.label.isEmpty() ? column.key : column.label).left(LongestLabel);
    // Rows that have come at the end leave those before them where they were. Anything else is another table.
    const bool isSame = store == m_store && areAlike(columns, m_columns) && before == m_offset + m_count;
    if (isSame && !m_chunks.empty())
        m_chunks.erase((m_offset + m_count) / ChunkRows);
    if (!isSame)
        m_chunks.clear();
    m_wanted.clear();
    m_store = store;
    m_columns = std::move(columns);
    m_ids.clear();
    for (const site::HistorySeries& column : m_columns)
        m_ids.push_back(column.id);
    m_offset = std::max<std::int64_t>(count - MostRows, 0);
    m_count = count - m_offset;
    m_last = last;
}

RecordRows::Chunk* RecordRows::find(std::int64_t chunk)
{
    const auto found = m_chunks.find(chunk);
    if (found == m_chunks.end())
        return nullptr;
    found->second.lastUse = ++m_use;
    return &found->second;
}

void RecordRows::want(std::int64_t chunk)
{
    std::erase(m_wanted, chunk);
    m_wanted.push_back(chunk);
    if (m_wanted.size() > MostWanted)
        m_wanted.erase(m_wanted.begin());
}

const site::HistoryRow* RecordRows::rowIn(std::int64_t place)
{
    Chunk* chunk = find(place / ChunkRows);
    const auto inside = std::size_t(place % ChunkRows);
    return chunk && inside < chunk->rows.size() ? &chunk->rows[inside] : nullptr;
}

const site::HistoryRow* RecordRows::row(std::int64_t place)
{
    if (place < 0 || place >= m_count)
        return nullptr;
    const std::int64_t stored = place + m_offset;
    if (!m_chunks.contains(stored / ChunkRows))
        want(stored / ChunkRows);
    return rowIn(stored);
}

const site::HistoryRow* RecordRows::readRow(std::int64_t place)
{
    if (place < 0 || place >= m_count)
        return nullptr;
    const std::int64_t stored = place + m_offset;
    if (!m_chunks.contains(stored / ChunkRows))
        fetch(stored / ChunkRows);
    return rowIn(stored);
}

void RecordRows::fetch(std::int64_t chunk)
{
    if (!m_store || m_isBusy)
        return;
    const QScopedValueRollback busy(m_isBusy, true);
    Chunk next;
    attempt([&] { next.rows = m_store->rows(chunk * ChunkRows, ChunkRows, m_ids); });
    // A store that fails leaves its rows empty rather than being asked again and again.
    if (next.rows.size() > std::size_t(ChunkRows))
        next.rows.resize(std::size_t(ChunkRows));
    for (site::HistoryRow& row : next.rows)
        row.cells.resize(m_ids.size());
    next.lastUse = ++m_use;
    m_chunks[chunk] = std::move(next);
    if (m_chunks.size() > MostChunks) {
        const auto oldest =
            std::min_element(m_chunks.begin(), m_chunks.end(), [](const auto& one, const auto& other) {
                return one.second.lastUse < other.second.lastUse;
            });
        m_chunks.erase(oldest);
    }
}

void RecordRows::read(const std::function<bool()>& isTimeUp,
                      const std::function<void(std::int64_t, std::int32_t)>& arrived)
{
    do {
        if (m_wanted.empty())
            return;
        const std::int64_t chunk = m_wanted.back();
        m_wanted.pop_back();
        fetch(chunk);
        const std::int64_t first = std::max<std::int64_t>(chunk * ChunkRows - m_offset, 0);
        arrived(first, std::int32_t(std::min<std::int64_t>(ChunkRows, m_count - first)));
    } while (!isTimeUp());
}

std::int64_t RecordRows::placeOf(HistoryTime moment) const
{
    std::int64_t place = 0;
    if (m_store)
        attempt([&] { place = m_store->placeOf(moment); });
    return std::clamp<std::int64_t>(place - m_offset, 0, m_count);
}

} // namespace zan::zandata
