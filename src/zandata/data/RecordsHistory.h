#pragma once

#include "site/Logger.h"
#include "zandata/data/LogTime.h"

#include <deque>
#include <vector>

namespace zan::zandata {

/// The records of a log buffer as a history: what a graph and a table read where the logger keeps none. Series are the
/// buffer's columns, numbered from 1, with the formats of records that know them.
///
/// Each new list of records is compared with what is here: records that have followed are added, those that have left
/// the buffer at its beginning go. A buffer whose records stand in another order is read anew and put in order of time;
/// of two records of one time the later one counts.
class RecordsHistory final : public site::History
{
public:
    /// Most cells that are kept, some 32 MB: of a buffer that is larger, the latest records.
    static constexpr std::int64_t MostCells = 4'000'000;
    /// Most columns that are looked at.
    static constexpr std::int32_t MostColumns = 1000;

    /// Takes the records of this moment over; Nothing clears. Whatever the records raise leaves those before it.
    void take(const Ref<site::LogRecords>& records);

    QString State() const override { return {}; }
    std::vector<site::HistorySeries> series() const override { return m_series; }
    site::HistorySpan span() const override;
    std::vector<site::HistoryPoint> points(std::int64_t series, HistoryTime from, HistoryTime until,
                                           std::int32_t most) const override;
    std::vector<Past> valuesAt(HistoryTime moment) const override;
    std::int64_t rowCount() const override { return std::int64_t(m_rows.size()); }
    std::vector<site::HistoryRow> rows(std::int64_t place, std::int32_t most,
                                       const std::vector<std::int64_t>& series) const override;
    std::int64_t placeOf(HistoryTime moment) const override;

private:
    using Row = site::HistoryRow;
    void readColumns(site::LogRecords& records);
    Row readRow(site::LogRecords& records, std::int32_t row, HistoryTime time) const;
    void readAll(site::LogRecords& records);
    bool follow(site::LogRecords& records);
    void sort();
    void trim(std::int64_t most);
    std::int64_t affordableRows() const;

    std::vector<site::HistorySeries> m_series;
    std::deque<Row> m_rows; // in order of time, no two of one time
};

/// Puts records of one series together over equal stretches of time, as a history's `points` has it.
class PointMaker
{
public:
    PointMaker(HistoryTime from, HistoryTime until, std::int32_t most);
    /// Adds a record; records come in order of time and lie inside.
    void add(HistoryTime time, double value);
    std::vector<site::HistoryPoint> take() { return std::move(m_points); }

private:
    HistoryTime m_from;
    HistoryTime m_until;
    std::int32_t m_most;
    std::int64_t m_stretch = -1; // of the last point
    std::vector<site::HistoryPoint> m_points;
};

} // namespace zan::zandata
