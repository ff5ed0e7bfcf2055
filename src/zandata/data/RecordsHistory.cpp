#include "zandata/data/RecordsHistory.h"

#include "site/FormattedRecords.h"
#include "values/Convert.h"

#include <algorithm>
#include <cmath>

namespace zan::zandata {

using site::HistoryPoint;
using site::HistorySeries;

namespace {

constexpr std::int32_t MostPoints = 10'000;
/// Characters of a column's label that anybody looks at.
constexpr qsizetype LongestLabel = 200;
/// Characters of a format; what is longer is none.
constexpr qsizetype LongestFormat = 1000;

/// The number that a record is for a graph; nothing for a text, an error or what is not finite.
std::optional<double> numberOf(const Variant& value)
{
    double number = 0;
    if (value.isText() || value.isObject() || value.isArray() || value.kind() == values::Kind::Empty ||
        value.kind() == values::Kind::Null || values::tryToDouble(value, number) != values::ErrorNumber::None ||
        !std::isfinite(number))
        return std::nullopt;
    return number;
}

} // namespace

// Points -------------------------------------------------------------------------------------------------------

PointMaker::PointMaker(HistoryTime from, HistoryTime until, std::int32_t most)
    : m_from(from)
    , m_until(until)
    , m_most(std::clamp(most, 1, MostPoints))
{}

void PointMaker::add(HistoryTime time, double value)
{
    const auto place = std::int64_t(double(time - m_from) / (double(m_until) - double(m_from)) * double(m_most));
    if (place != m_stretch || m_points.empty()) {
        m_stretch = place;
        m_points.push_back({time, time, value, value, value, 1});
        return;
    }
    HistoryPoint& point = m_points.back();
    point.last = time;
    point.minimum = std::min(point.minimum, value);
    point.maximum = std::max(point.maximum, value);
    ++point.count;
    point.mean += (value - point.mean) / double(point.count);
}

// Taking over --------------------------------------------------------------------------------------------------

std::int64_t RecordsHistory::affordableRows() const
{
    return std::max<std::int64_t>(MostCells / std::int64_t(m_series.size() + 1), 1);
}

void RecordsHistory::readColumns(site::LogRecords& records)
{
    const std::int32_t columns = std::clamp(records.columnCount(), 1, MostColumns + 1);
    const auto* formatted = dynamic_cast<const site::FormattedRecords*>(&records);
    std::vector<HistorySeries> list;
    for (std::int32_t column = 1; column < columns; ++column) {
        HistorySeries one;
        one.id = column;
        one.label = records.columnLabel(column).left(LongestLabel);
        one.units = records.columnUnits(column).left(LongestLabel);
        if (formatted)
            one.format = formatted->columnFormat(column);
        if (one.format.size() > LongestFormat)
            one.format.clear();
        list.push_back(one);
    }
    const bool isSame = std::equal(
        list.begin(), list.end(), m_series.begin(), m_series.end(),
        [](const HistorySeries& a, const HistorySeries& b) { return a.label == b.label && a.units == b.units; });
    if (!isSame)
        m_rows.clear(); // cells of other channels
    m_series = std::move(list);
}

RecordsHistory::Row RecordsHistory::readRow(site::LogRecords& records, std::int32_t row, HistoryTime time) const
{
    Row result;
    result.time = time;
    result.cells.reserve(m_series.size());
    for (const HistorySeries& one : m_series)
        result.cells.push_back(records.cell(row, std::int32_t(one.id)));
    return result;
}

void RecordsHistory::take(const Ref<site::LogRecords>& records)
{
    const Ref<RecordsHistory> alive(this);
    if (!records) {
        m_series.clear();
        m_rows.clear();
        return;
    }
    readColumns(*records);
    if (m_rows.empty() || !follow(*records))
        readAll(*records);
}

void RecordsHistory::readAll(site::LogRecords& records)
{
    const std::int32_t count = std::max(records.rowCount(), 0);
    const auto first = std::int32_t(std::max<std::int64_t>(0, count - affordableRows()));
    std::deque<Row> rows;
    for (std::int32_t row = first; row < count; ++row) {
        if (const std::optional<HistoryTime> time = timeOf(records.cell(row, 0)))
            rows.push_back(readRow(records, row, *time));
    }
    m_rows = std::move(rows);
    sort();
}

void RecordsHistory::sort()
{
    const auto byTime = [](const Row& a, const Row& b) { return a.time < b.time; };
    if (!std::is_sorted(m_rows.begin(), m_rows.end(), byTime))
        std::stable_sort(m_rows.begin(), m_rows.end(), byTime);
    std::deque<Row> once;
    for (Row& row : m_rows) {
        if (!once.empty() && once.back().time == row.time)
            once.back() = std::move(row);
        else
            once.push_back(std::move(row));
    }
    m_rows = std::move(once);
}

/// Adds what follows the last record that is here. False when the list is no continuation of it.
bool RecordsHistory::follow(site::LogRecords& records)
{
    const std::int32_t count = records.rowCount();
    std::vector<Row> later;
    std::int32_t row = count - 1;
    for (; row >= 0; --row) {
        const std::optional<HistoryTime> time = timeOf(records.cell(row, 0));
        if (!time || (!later.empty() && *time >= later.back().time))
            return false;
        if (*time <= m_rows.back().time) {
            if (*time != m_rows.back().time)
                return false;
            break;
        }
        later.push_back(readRow(records, row, *time));
    }
    if (row < 0)
        return false;
    // The record that both have stands at the same place from the end as from the beginning of what is kept.
    const std::int64_t shared = std::int64_t(row) + 1;
    if (shared > rowCount() && rowCount() < affordableRows())
        return false;
    const std::int64_t leaving = rowCount() - std::min(shared, rowCount());
    m_rows.erase(m_rows.begin(), m_rows.begin() + std::ptrdiff_t(leaving));
    const std::optional<HistoryTime> oldest =
        shared <= rowCount() ? timeOf(records.cell(0, 0)) : std::optional(m_rows.front().time);
    if (!oldest || m_rows.empty() || *oldest != m_rows.front().time)
        return false;
    m_rows.insert(m_rows.end(), std::make_move_iterator(later.rbegin()), std::make_move_iterator(later.rend()));
    trim(affordableRows());
    return true;
}

void RecordsHistory::trim(std::int64_t most)
{
    if (rowCount() > most)
        m_rows.erase(m_rows.begin(), m_rows.begin() + std::ptrdiff_t(rowCount() - most));
}

// Answers ------------------------------------------------------------------------------------------------------

site::HistorySpan RecordsHistory::span() const
{
    if (m_rows.empty())
        return {};
    return {m_rows.front().time, m_rows.back().time, false};
}

std::int64_t RecordsHistory::placeOf(HistoryTime moment) const
{
    const auto found = std::lower_bound(m_rows.begin(), m_rows.end(), moment,
                                        [](const Row& row, HistoryTime time) { return row.time < time; });
    return std::int64_t(found - m_rows.begin());
}

std::vector<HistoryPoint> RecordsHistory::points(std::int64_t series, HistoryTime from, HistoryTime until,
                                                 std::int32_t most) const
{
    if (series < 1 || series > std::int64_t(m_series.size()) || until <= from || most < 1)
        return {};
    PointMaker points(from, until, most);
    for (auto row = m_rows.begin() + std::ptrdiff_t(placeOf(from)); row != m_rows.end() && row->time < until;
         ++row) {
        if (const std::optional<double> number = numberOf(row->cells[std::size_t(series - 1)]))
            points.add(row->time, *number);
    }
    return points.take();
}

std::vector<site::History::Past> RecordsHistory::valuesAt(HistoryTime moment) const
{
    std::vector<Past> result(m_series.size());
    std::size_t missing = result.size();
    for (std::int64_t place = placeOf(moment + 1) - 1; place >= 0 && missing > 0; --place) {
        const Row& row = m_rows[std::size_t(place)];
        for (std::size_t i = 0; i < result.size(); ++i) {
            if (result[i].value.kind() != values::Kind::Empty || row.cells[i].kind() == values::Kind::Empty)
                continue;
            result[i] = {row.time, row.cells[i]};
            --missing;
        }
    }
    return result;
}

std::vector<site::HistoryRow> RecordsHistory::rows(std::int64_t place, std::int32_t most,
                                                   const std::vector<std::int64_t>& series) const
{
    std::vector<Row> result;
    const std::int64_t first = std::max<std::int64_t>(place, 0);
    const std::int64_t end = std::min(rowCount(), first + std::clamp(most, 0, MostPoints));
    for (std::int64_t at = first; at < end; ++at) {
        const Row& stored = m_rows[std::size_t(at)];
        Row row{stored.time, {}};
        for (const std::int64_t id : series) {
            const bool isKnown = id >= 1 && id <= std::int64_t(m_series.size());
            row.cells.push_back(isKnown ? stored.cells[std::size_t(id - 1)] : Variant());
        }
        result.push_back(std::move(row));
    }
    return result;
}

} // namespace zan::zandata
