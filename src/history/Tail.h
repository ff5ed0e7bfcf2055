#pragma once

#include "history/Blocks.h"
#include "history/StoreSchema.h"

#include <deque>

namespace zan::history {

/// The series of the moments themselves.
constexpr std::int64_t Moments = 0;

/// A value of the tail.
struct TailPoint
{
    HistoryTime time = 0;
    std::int64_t id = 0; ///< of the record it came with
    QByteArrayView value;
};

/// The latest records of a store in the order of their coming, as a copy in memory: those that are not in blocks yet.
/// No value of the tail is in a block too.
class Tail
{
public:
    /// Takes a record that was stored under an id above all former ones; false, and nothing taken, when its bytes are
    /// none.
    [[nodiscard]] bool add(std::int64_t id, HistoryTime time, const QByteArray& cells);
    void removeUpTo(std::int64_t id);
    /// Catches up with the store's table. Throws StoreFailure.
    void load(Database& database, const StoreHead& head);

    /// Values of a series in order of time.
    const std::vector<TailPoint>& points(std::int64_t series) const;
    bool contains(std::int64_t series, HistoryTime time) const;
    std::int64_t lastId() const noexcept { return m_lastId; }
    std::size_t count() const noexcept { return m_entries.size(); }
    qsizetype bytes() const noexcept { return m_bytes; }
    std::int64_t seriesEnd() const noexcept { return std::int64_t(m_points.size()); } ///< one past the greatest

private:
    struct Entry
    {
        std::int64_t id;
        QByteArray cells; // what the points' values lie in
    };
    std::deque<Entry> m_entries;
    std::vector<std::vector<TailPoint>> m_points; // by series
    std::int64_t m_lastId = 0;
    qsizetype m_bytes = 0;
};

} // namespace zan::history
