#pragma once

#include "history/Tail.h"

#include <functional>

namespace zan::history {

using site::HistoryPoint;
using site::HistoryRow;
using site::HistorySeries;
using site::HistorySpan;

/// Answers questions to a store over a connection of its own, each from one moment of the store. Every member throws
/// StoreFailure. What is in blocks is read as far as it is needed; the tail is kept in memory and caught up with.
class StoreReader
{
public:
    explicit StoreReader(const HistoryPlace& place);

    std::vector<HistorySeries> series();
    HistorySpan span();
    std::vector<HistoryPoint> points(std::int64_t series, HistoryTime from, HistoryTime until, std::int32_t most);
    std::vector<site::History::Past> valuesAt(HistoryTime moment);
    std::int64_t rowCount();
    std::vector<HistoryRow> rows(std::int64_t place, std::int32_t most, const std::vector<std::int64_t>& series);
    std::int64_t placeOf(HistoryTime moment);

    /// A look at every record of a series in order of time, from a moment up to and without another.
    using Look = std::function<void(HistoryTime time, QByteArrayView value)>;
    void eachRecord(std::int64_t series, HistoryTime from, HistoryTime until, const Look& look);

    struct CheckResult
    {
        std::int64_t series = 0;
        std::int64_t blocks = 0;
        std::int64_t records = 0;
        QStringList mistakes; ///< for a person; empty when all is well
    };
    /// Reads everything there is and compares it with the figures kept of it.
    CheckResult check();

private:
    struct MomentBlock
    {
        HistoryTime first;
        std::int64_t before; // moments in the blocks before it
        std::int64_t count;
    };
    class Points;

    void catchUp();
    void loadMoments();
    /// Points of the tail that are not in blocks yet, in order of time.
    std::vector<TailPoint> tailPoints(std::int64_t series) const;
    bool isInBlocks(std::int64_t series, const TailPoint& point) const;
    void eachInBlocks(std::int64_t series, HistoryTime from, HistoryTime until, const Look& look);
    void eachOfBoth(std::int64_t series, HistoryTime from, HistoryTime until, const Look& look);
    void gather(Points& points, int level, HistoryTime from, HistoryTime until);
    std::vector<Figures> figures(std::int64_t series, int level, HistoryTime from, HistoryTime until);
    site::History::Past pastOf(std::int64_t series, HistoryTime moment);
    std::int64_t countRows();
    std::int64_t rowsBefore(std::size_t block) const;
    std::int64_t place(HistoryTime moment);
    HistoryTime latest(std::int64_t series);
    void checkSeries(const HistorySeries& series, CheckResult& result);

    Database m_database;
    StoreHead m_head;
    Tail m_tail;
    bool m_isFresh = true; // nothing has been read yet
    std::vector<HistorySeries> m_series;
    std::vector<MomentBlock> m_moments;
    std::vector<HistoryTime> m_tailMoments; // those that are not in blocks
};

} // namespace zan::history
