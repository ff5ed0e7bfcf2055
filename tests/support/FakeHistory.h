#pragma once

#include "site/History.h"
#include "values/Convert.h"

#include <algorithm>
#include <map>
#include <set>

namespace zan::fake {

/// A history in memory that answers in the plainest way: what a test puts in it.
class FakeHistory : public site::History
{
public:
    using Time = site::HistoryTime;

    std::vector<site::HistorySeries> list;
    std::map<std::int64_t, std::map<Time, values::Variant>> records; ///< by series
    QString state;

    void put(std::int64_t series, Time time, const values::Variant& value) { records[series][time] = value; }

    QString State() const override { return state; }
    std::vector<site::HistorySeries> series() const override { return list; }
    site::HistorySpan span() const override
    {
        const std::set<Time> times = moments();
        if (times.empty())
            return {};
        return {*times.begin(), *times.rbegin(), false};
    }
    std::vector<site::HistoryPoint> points(std::int64_t series, Time from, Time until,
                                           std::int32_t most) const override
    {
        std::vector<site::HistoryPoint> result;
        const auto found = records.find(series);
        if (found == records.end() || until <= from || most < 1)
            return result;
        Time stretch = -1;
        for (const auto& [time, value] : found->second) {
            double number = 0;
            if (time < from || time >= until || values::tryToDouble(value, number) != values::ErrorNumber::None)
                continue;
            const auto place = Time(double(time - from) / double(until - from) * most);
            if (place != stretch)
                result.push_back({time, time, number, number, 0, 0});
            stretch = place;
            site::HistoryPoint& point = result.back();
            point.last = time;
            point.minimum = std::min(point.minimum, number);
            point.maximum = std::max(point.maximum, number);
            point.mean = (point.mean * double(point.count) + number) / double(point.count + 1);
            ++point.count;
        }
        return result;
    }
    std::vector<Past> valuesAt(Time moment) const override
    {
        std::vector<Past> result;
        for (const site::HistorySeries& one : list) {
            Past past;
            if (const auto found = records.find(one.id); found != records.end())
                if (const auto next = found->second.upper_bound(moment); next != found->second.begin())
                    past = {std::prev(next)->first, std::prev(next)->second};
            result.push_back(past);
        }
        return result;
    }
    std::int64_t rowCount() const override { return std::int64_t(moments().size()); }
    std::vector<site::HistoryRow> rows(std::int64_t place, std::int32_t most,
                                       const std::vector<std::int64_t>& series) const override
    {
        std::vector<site::HistoryRow> result;
        std::int64_t at = 0;
        for (const Time time : moments()) {
            if (at++ < place || std::int32_t(result.size()) >= most)
                continue;
            site::HistoryRow row{time, {}};
            for (const std::int64_t id : series) {
                const auto found = records.find(id);
                if (found == records.end() || !found->second.contains(time))
                    row.cells.emplace_back();
                else
                    row.cells.push_back(found->second.at(time));
            }
            result.push_back(std::move(row));
        }
        return result;
    }
    std::int64_t placeOf(Time moment) const override
    {
        const std::set<Time> times = moments();
        return std::distance(times.begin(), times.lower_bound(moment));
    }

private:
    std::set<Time> moments() const
    {
        std::set<Time> result;
        for (const auto& [series, stored] : records)
            for (const auto& [time, value] : stored)
                result.insert(time);
        return result;
    }
};

} // namespace zan::fake
