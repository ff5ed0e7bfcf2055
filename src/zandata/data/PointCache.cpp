#include "zandata/data/PointCache.h"

#include <algorithm>
#include <cmath>

namespace zan::zandata {

namespace {

HistoryTime downTo(HistoryTime time, std::int64_t stretch)
{
    const std::int64_t rest = time % stretch;
    return time - (rest < 0 ? rest + stretch : rest);
}

HistoryTime upTo(HistoryTime time, std::int64_t stretch)
{
    const HistoryTime down = downTo(time, stretch);
    return down == time ? time : down + stretch;
}

bool isSound(const HistoryPoint& point)
{
    return point.count > 0 && point.first <= point.last && std::isfinite(point.minimum) &&
           std::isfinite(point.maximum) && std::isfinite(point.mean) && point.minimum <= point.maximum;
}

} // namespace

std::vector<HistoryPoint> soundPoints(std::vector<HistoryPoint> points, HistoryTime from, HistoryTime until)
{
    std::vector<HistoryPoint> result;
    if (points.size() > std::size_t(PointCache::MostPoints))
        points.resize(std::size_t(PointCache::MostPoints));
    result.reserve(points.size());
    for (const HistoryPoint& point : points) {
        const bool follows = result.empty() || point.first > result.back().last;
        if (isSound(point) && follows && point.first >= from && point.last < until)
            result.push_back(point);
    }
    return result;
}

std::int64_t PointCache::stretchFor(const Wanted& wanted)
{
    const std::int64_t span = std::max<std::int64_t>(wanted.until - wanted.from, 1);
    const std::int64_t pixels = std::clamp(wanted.pixels, 1, MostPixels);
    std::int64_t stretch = 1;
    while (stretch * 2 * pixels <= span)
        stretch *= 2;
    // Three pictures' worth must fit.
    while (span / stretch * 3 > MostPoints - 8)
        stretch *= 2;
    return stretch;
}

bool PointCache::covers(const Wanted& wanted) const
{
    return m_from <= wanted.from && m_until >= wanted.until;
}

bool PointCache::isReadDue(const Wanted& wanted) const
{
    return m_stretch != stretchFor(wanted) || !covers(wanted);
}

std::vector<HistoryPoint> PointCache::fetch(const Source& source, HistoryTime from, HistoryTime until) const
{
    const std::int64_t most = std::clamp<std::int64_t>((until - from) / m_stretch, 1, MostPoints);
    return soundPoints(source(from, until, std::int32_t(most)), from, until);
}

/// The few records that have come at the end are read by themselves when the rest is here. False when it is not.
bool PointCache::extend(const Source& source, const Wanted& wanted)
{
    if (isEmpty() || m_isGivenUp || m_stretch != stretchFor(wanted) || wanted.from < m_from ||
        wanted.from >= m_until)
        return false;
    const HistoryTime begin = m_until;
    const HistoryTime end = upTo(wanted.until, m_stretch);
    if (end <= begin || (end - m_from) / m_stretch > MostPoints)
        return false;
    const std::vector<HistoryPoint> later = fetch(source, begin, end);
    m_points.insert(m_points.end(), later.begin(), later.end());
    m_until = end;
    return true;
}

void PointCache::read(const Source& source, const Wanted& wanted)
{
    if (extend(source, wanted))
        return;
    PointCache next;
    next.m_stretch = stretchFor(wanted);
    const std::int64_t span = wanted.until - wanted.from;
    next.m_from = downTo(std::max(wanted.from - span, EarliestTime), next.m_stretch);
    next.m_until = upTo(std::min(wanted.until + span, LatestTime), next.m_stretch);
    next.m_points = next.fetch(source, next.m_from, next.m_until);
    *this = std::move(next);
}

void PointCache::expire(HistoryTime from)
{
    if (m_isGivenUp)
        clear();
    if (isEmpty() || from >= m_until)
        return;
    const HistoryTime begin = std::max(downTo(from, m_stretch), m_from);
    m_until = begin;
    while (!m_points.empty() && m_points.back().last >= begin)
        m_points.pop_back();
    if (isEmpty())
        clear();
}

void PointCache::giveUp(const Wanted& wanted)
{
    clear();
    m_stretch = stretchFor(wanted);
    m_from = wanted.from;
    m_until = wanted.until;
    m_isGivenUp = true;
}

void PointCache::clear()
{
    *this = {};
}

} // namespace zan::zandata
