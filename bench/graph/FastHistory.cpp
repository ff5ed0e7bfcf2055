#include "FastHistory.h"

#include <algorithm>
#include <cmath>

namespace zan::bench {

double recordValue(std::int64_t series, std::int64_t record)
{
    // A cheap wave of a quarter of a million records, and noise out of the record's number.
    const double phase = double((record * (series + 1)) % 250'000) / 250'000.0;
    const double wave = phase < 0.5 ? phase * 4 - 1 : 3 - phase * 4;
    std::uint64_t noise = std::uint64_t(record + 1) * 0x9e3779b97f4a7c15ull + std::uint64_t(series);
    noise ^= noise >> 29;
    return double(series) * 10 + wave * 4 + double(noise % 1000) / 1000.0;
}

FastHistory::FastHistory(std::int64_t seriesCount, std::int64_t records)
    : m_levels(std::size_t(seriesCount))
{
    for (std::int64_t id = 1; id <= seriesCount; ++id) {
        const QString name = QStringLiteral("Channel %1").arg(id);
        const QString units = id % 2 == 0 ? QStringLiteral("m") : QStringLiteral("l/s");
        m_series.push_back({id, QStringLiteral("RTD"), name, name, units, QStringLiteral("0.00"), Step});
        for (std::int64_t record = 0; record < records; ++record)
            add(std::size_t(id - 1), record, recordValue(id, record));
    }
    m_records = records;
}

void FastHistory::append()
{
    for (std::size_t series = 0; series < m_series.size(); ++series)
        add(series, m_records, recordValue(std::int64_t(series) + 1, m_records));
    ++m_records;
}

void FastHistory::add(std::size_t series, std::int64_t record, double value)
{
    std::int64_t place = record;
    for (std::vector<Sum>& level : m_levels[series]) {
        place /= Factor;
        if (place == std::int64_t(level.size())) {
            level.push_back({value, value, value});
            continue;
        }
        Sum& sum = level.back();
        sum.minimum = std::min(sum.minimum, value);
        sum.maximum = std::max(sum.maximum, value);
        sum.total += value;
    }
}

/// Whole blocks of the highest level that fits, single records at the ends.
FastHistory::Sum FastHistory::sumOf(std::size_t series, std::int64_t first, std::int64_t end) const
{
    const double begin = recordValue(std::int64_t(series) + 1, first);
    Sum result{begin, begin, 0};
    const auto take = [&](const Sum& sum) {
        result.minimum = std::min(result.minimum, sum.minimum);
        result.maximum = std::max(result.maximum, sum.maximum);
        result.total += sum.total;
    };
    for (std::int64_t at = first; at < end;) {
        std::int64_t size = 1;
        std::size_t level = 0;
        while (level < m_levels[series].size() && at % (size * Factor) == 0 && at + size * Factor <= end) {
            size *= Factor;
            ++level;
        }
        if (level == 0) {
            const double value = recordValue(std::int64_t(series) + 1, at);
            take({value, value, value});
        } else {
            take(m_levels[series][level - 1][std::size_t(at / size)]);
        }
        at += size;
    }
    return result;
}

site::HistorySpan FastHistory::span() const
{
    if (m_records == 0)
        return {};
    return {Begin, timeOf(m_records - 1), false};
}

std::int64_t FastHistory::placeOf(Time moment) const
{
    if (moment <= Begin)
        return 0;
    return std::min((moment - Begin + Step - 1) / Step, m_records);
}

std::vector<site::HistoryPoint> FastHistory::points(std::int64_t series, Time from, Time until,
                                                    std::int32_t most) const
{
    std::vector<site::HistoryPoint> result;
    if (series < 1 || series > std::int64_t(m_series.size()) || until <= from || most < 1)
        return result;
    std::int64_t at = placeOf(from);
    const std::int64_t end = placeOf(until);
    const double stretch = double(until - from) / double(most);
    while (at < end) {
        const auto place = std::int64_t(double(timeOf(at) - from) / stretch);
        const std::int64_t next =
            std::clamp(placeOf(from + Time(std::ceil(double(place + 1) * stretch))), at + 1, end);
        const Sum sum = sumOf(std::size_t(series - 1), at, next);
        const std::int64_t count = next - at;
        result.push_back(
            {timeOf(at), timeOf(next - 1), sum.minimum, sum.maximum, sum.total / double(count), count});
        at = next;
    }
    return result;
}

std::vector<site::History::Past> FastHistory::valuesAt(Time moment) const
{
    std::vector<Past> result(m_series.size());
    const std::int64_t place = placeOf(moment + 1) - 1;
    for (std::size_t i = 0; place >= 0 && i < result.size(); ++i)
        result[i] = {timeOf(place), values::Variant(recordValue(std::int64_t(i) + 1, place))};
    return result;
}

std::vector<site::HistoryRow> FastHistory::rows(std::int64_t place, std::int32_t most,
                                                const std::vector<std::int64_t>& series) const
{
    std::vector<site::HistoryRow> result;
    for (std::int64_t at = std::max<std::int64_t>(place, 0); at < std::min(place + most, m_records); ++at) {
        site::HistoryRow row{timeOf(at), {}};
        for (const std::int64_t id : series)
            row.cells.emplace_back(recordValue(id, at));
        result.push_back(std::move(row));
    }
    return result;
}

} // namespace zan::bench
