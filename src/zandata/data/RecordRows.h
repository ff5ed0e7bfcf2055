#pragma once

#include "zandata/data/RecordsHistory.h"

#include <functional>
#include <map>
#include <vector>

namespace zan::zandata {

/// The rows of a history as a table looks at them: in chunks, of which the few that were looked at last are kept. A chunk
/// that is not here is read later, a few at a turn, so that scrolling never waits for a slow store.
class RecordRows
{
public:
    static constexpr std::int32_t ChunkRows = 256;
    static constexpr std::size_t MostChunks = 64;
    /// Most rows that a table has; of a longer history the latest.
    static constexpr std::int64_t MostRows = 10'000'000;
    /// Most columns of channels.
    static constexpr std::size_t MostColumns = 1000;

    /// Where records come from now. The records of a log buffer are looked at where there is no history.
    void setSource(const Ref<site::LogRecords>& records, const Ref<site::History>& history);

    const std::vector<site::HistorySeries>& columns() const noexcept { return m_columns; }
    std::int64_t count() const noexcept { return m_count; }
    /// Rows of the history that come before the first one of the table.
    std::int64_t offset() const noexcept { return m_offset; }

    /// The row at a place, 0 the oldest; null while it is not here, and then it is asked for.
    const site::HistoryRow* row(std::int64_t place);
    /// The row at a place, read now if need be; null where there is none.
    const site::HistoryRow* readRow(std::int64_t place);
    /// Place of the first row at a moment or after it.
    std::int64_t placeOf(HistoryTime moment) const;

    bool isReadDue() const noexcept { return !m_wanted.empty(); }
    /// Reads what was asked for, the latest first, until `isTimeUp` says so, one chunk at least; tells of each chunk by
    /// its first place and the number of its rows.
    void read(const std::function<bool()>& isTimeUp,
              const std::function<void(std::int64_t, std::int32_t)>& arrived);
    /// Chunks that are kept.
    std::size_t keptChunks() const noexcept { return m_chunks.size(); }

private:
    struct Chunk
    {
        std::vector<site::HistoryRow> rows;
        std::uint64_t lastUse = 0;
    };
    Chunk* find(std::int64_t chunk);
    const site::HistoryRow* rowIn(std::int64_t place);
    void fetch(std::int64_t chunk);
    void want(std::int64_t chunk);

    Ref<RecordsHistory> m_records = values::make<RecordsHistory>();
    Ref<site::History> m_store;
    std::vector<site::HistorySeries> m_columns;
    std::vector<std::int64_t> m_ids;
    std::int64_t m_count = 0;
    std::int64_t m_offset = 0;
    HistoryTime m_last = 0; // of the last row when the source was looked at
    std::map<std::int64_t, Chunk> m_chunks;
    std::vector<std::int64_t> m_wanted; // chunks, the latest asked for at the end
    std::uint64_t m_use = 0;
    bool m_isBusy = false; // the store is being asked
};

} // namespace zan::zandata
