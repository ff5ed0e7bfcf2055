#include "zandata/data/TimeView.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zan::zandata {

namespace {

/// Shown around a single record, which has no length of its own.
constexpr std::int64_t AroundOne = 60'000;

HistoryTime inCalendar(double time)
{
    if (std::isnan(time))
        return 0;
    return HistoryTime(std::clamp(time, double(EarliestTime), double(LatestTime)));
}

} // namespace

void TimeView::follow(const site::HistorySpan& records, HistoryTime latest)
{
    m_first = records.isEmpty ? latest : records.first;
    m_last = records.isEmpty ? latest : records.last;
    m_latest = std::max(latest, m_last);
    place();
}

void TimeView::place()
{
    if (m_mode == Mode::Held)
        return;
    if (m_mode == Mode::Span) {
        m_until = m_latest + 1;
        m_from = m_until - m_followedSpan;
        return;
    }
    m_from = m_first;
    m_until = m_last + 1;
    if (m_until - m_from < ShortestSpan) {
        m_from -= AroundOne / 2;
        m_until += AroundOne / 2;
    }
}

void TimeView::followRecords()
{
    m_mode = m_followed = Mode::Records;
    place();
}

void TimeView::followSpan(std::int64_t span)
{
    m_followedSpan = std::clamp(span, ShortestSpan, LongestSpan);
    m_mode = m_followed = Mode::Span;
    place();
}

void TimeView::goLive()
{
    m_mode = m_followed;
    place();
}

void TimeView::hold()
{
    m_mode = Mode::Held;
}

void TimeView::show(HistoryTime from, HistoryTime until)
{
    if (until < from)
        std::swap(from, until);
    m_from = std::clamp(from, EarliestTime, LatestTime - ShortestSpan);
    m_until = std::clamp(until, m_from + ShortestSpan, std::min(m_from + LongestSpan, LatestTime));
    m_mode = Mode::Held;
}

void TimeView::pan(double milliseconds)
{
    const HistoryTime from = inCalendar(double(m_from) + milliseconds);
    show(from, from + span());
}

void TimeView::zoom(double factor, double about)
{
    if (!(factor > 0) || !std::isfinite(factor) || !std::isfinite(about))
        return;
    const double wanted = std::clamp(double(span()) * factor, double(ShortestSpan), double(LongestSpan));
    const double share = std::clamp((about - double(m_from)) / double(span()), 0.0, 1.0);
    const double from = about - share * wanted;
    show(inCalendar(from), inCalendar(from + wanted));
}

} // namespace zan::zandata
