#pragma once

#include "history/SeriesBlocks.h"
#include "history/Tail.h"

#include <QHash>

#include <memory>
#include <vector>

namespace zan::history {

/// A record on its way to a store: `places` are the places of its series among all that were ever handed over, and
/// `values` their values one after the other.
struct QueuedRecord
{
    HistoryTime time = 0;
    std::shared_ptr<const std::vector<std::int32_t>> places;
    QByteArray values;
};

/// What the one thread that writes a store does to it, step by step. Every member throws StoreFailure; after that the
/// writer is of no use any more, and another one is made of the store.
///
/// A record goes into the tail, a table that only grows at its end, so that a thousand channels cost one row. When the
/// tail is long enough it is frozen up to some record, and the frozen part goes into the blocks and figures of one
/// series after the other, a slice at a time, so that records that come meanwhile do not wait.
class StoreWriter
{
public:
    /// What decides when the tail is long enough; a test takes less.
    struct Limits
    {
        qsizetype tailBytes = 4 * 1024 * 1024;
        std::size_t tailRecords = 4096;
        std::int64_t days = 0;
        std::int64_t megabytes = 0;
        HistoryTime (*now)() = nullptr; ///< the clock that tells how old records are; the system's unless told
    };

    StoreWriter(Database& database, const Limits& limits);

    /// Stores records, as one: either all or none.
    void store(const std::vector<QueuedRecord>& records, const std::vector<site::HistorySeries>& series);
    /// Does some of what there is to do besides, for about a tenth of a second; false when there was nothing. `now`
    /// is the present time, for the age of records.
    bool tidy(HistoryTime now);

private:
    void learn(const std::vector<site::HistorySeries>& series, std::size_t place);
    /// The cells that are not stored yet, in order of series.
    QByteArray freshCells(const QueuedRecord& record);
    bool isStored(std::int64_t series, HistoryTime time);
    void moveSlice();
    void moveSeries(std::int64_t series);
    void trimSlice();
    bool wantsTrimming(HistoryTime now);

    Database& m_database;
    Limits m_limits;
    SeriesBlocks m_blocks;
    Tail m_tail;
    StoreHead m_head;
    QHash<std::pair<QString, QString>, std::int64_t> m_ids; // by keys of window and channel
    std::int64_t m_greatestId = 0;
    std::vector<std::int64_t> m_idByPlace;
    std::vector<HistoryTime> m_last; // by series: nothing is stored after it
    std::vector<bool> m_isLastKnown;
    std::int64_t m_trimmedSeries = -1; // of a trimming under way
    bool m_isSizeDue = true;           // the size may have changed since it was looked at
};

} // namespace zan::history
