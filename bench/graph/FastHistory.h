#pragma once

#include "site/History.h"

#include <array>
#include <vector>

namespace zan::bench {

/// The value of a record, the same for our graph and for the bare one: a slow wave with noise on it.
double recordValue(std::int64_t series, std::int64_t record);

/// A history in memory of any length: records a second apart, answered out of sums of 16, 256, 4,096 ... records, as a
/// store answers that keeps aggregates.
class FastHistory final : public site::History
{
public:
    using Time = site::HistoryTime;
    static constexpr Time Begin = 1'600'000'000'000;
    static constexpr std::int64_t Step = 1000;

    FastHistory(std::int64_t seriesCount, std::int64_t records);
    /// One record more of every series.
    void append();

    QString State() const override { return {}; }
    std::vector<site::HistorySeries> series() const override { return m_series; }
    site::HistorySpan span() const override;
    std::vector<site::HistoryPoint> points(std::int64_t series, Time from, Time until,
                                           std::int32_t most) const override;
    std::vector<Past> valuesAt(Time moment) const override;
    std::int64_t rowCount() const override { return m_records; }
    std::vector<site::HistoryRow> rows(std::int64_t place, std::int32_t most,
                                       const std::vector<std::int64_t>& series) const override;
    std::int64_t placeOf(Time moment) const override;

private:
    struct Sum
    {
        double minimum, maximum, total;
    };
    static constexpr std::int64_t Factor = 16;
    static Time timeOf(std::int64_t record) { return Begin + record * Step; }
    void add(std::size_t series, std::int64_t record, double value);
    Sum sumOf(std::size_t series, std::int64_t first, std::int64_t end) const;

    std::vector<site::HistorySeries> m_series;
    std::int64_t m_records = 0;
    std::vector<std::array<std::vector<Sum>, 6>> m_levels; // by series
};

} // namespace zan::bench
