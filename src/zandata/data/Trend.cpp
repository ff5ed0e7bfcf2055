#include "zandata/data/Trend.h"

#include "values/Failure.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace zan::zandata {

using site::HistorySeries;
using values::attempt;

namespace {

constexpr qsizetype LongestText = 200; // characters of a label that are shown
/// So many times the usual step between records is no gap yet, where the period had to be guessed from them.
constexpr std::int64_t GuessedPatience = 5;
/// Milliseconds between the two times of one record at most.
constexpr std::int64_t SameRecord = 1;

QString shortened(const QString& text)
{
    return text.left(LongestText).simplified();
}

/// The usual time from one record to the next, from the points themselves: the middle one of all; 0 for too few.
std::int64_t usualStep(const std::vector<HistoryPoint>& points)
{
    if (points.size() < 3)
        return 0;
    std::vector<std::int64_t> steps;
    steps.reserve(points.size());
    for (std::size_t i = 1; i < points.size(); ++i)
        steps.push_back(points[i].first - points[i - 1].last);
    const auto middle = steps.begin() + std::ptrdiff_t(steps.size() / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    return std::max<std::int64_t>(*middle, 1);
}

/// The latest point that begins at a moment or before it.
std::vector<HistoryPoint>::const_iterator lastBefore(const std::vector<HistoryPoint>& points, HistoryTime moment)
{
    const auto after =
        std::upper_bound(points.begin(), points.end(), moment,
                         [](HistoryTime time, const HistoryPoint& point) { return time < point.first; });
    return after == points.begin() ? points.end() : after - 1;
}

} // namespace

Trend::Trend() = default;

// Channels -----------------------------------------------------------------------------------------------------

/// The channels of the data source in its order, each with the store that has the most of it. Series of the history are
/// known by label and units; of several alike the first one not taken yet.
std::vector<Trend::Source> Trend::sourcesOf(const Ref<site::History>& history) const
{
    std::vector<HistorySeries> stored;
    if (history)
        attempt([&] { stored = history->series(); });
    std::vector<Source> result;
    const std::vector<HistorySeries> columns = m_records->series();
    if (columns.empty()) {
        for (const HistorySeries& series : stored)
            result.push_back({history, series, 0});
        return result;
    }
    std::vector<bool> taken(stored.size());
    for (const HistorySeries& column : columns) {
        std::size_t place = result.size() < MostChannels ? 0 : stored.size(); // the others are not drawn
        while (place < stored.size() &&
               (taken[place] || stored[place].label != column.label || stored[place].units != column.units))
            ++place;
        if (place < stored.size()) {
            taken[place] = true;
            result.push_back({history, stored[place], column.id});
        } else {
            result.push_back({m_records, column, column.id});
        }
    }
    return result;
}

void Trend::list(std::vector<Source> sources)
{
    std::vector<TrendChannel> next;
    for (std::size_t i = 0; i < std::min(sources.size(), MostChannels); ++i) {
        const HistorySeries& series = sources[i].series;
        TrendChannel channel;
        channel.number = std::int32_t(i) + 1;
        channel.label = shortened(series.label.isEmpty() ? series.key : series.label);
        channel.units = shortened(series.units);
        channel.format = series.format;
        channel.period = std::clamp<std::int64_t>(series.period, 0, TimeView::LongestSpan);
        channel.store = sources[i].store;
        channel.series = series.id;
        channel.column = sources[i].column;
        // What was read of the same series stays.
        const auto before = std::find_if(m_channels.begin(), m_channels.end(), [&](const TrendChannel& old) {
            return old.store == channel.store && old.series == channel.series;
        });
        if (before != m_channels.end())
            channel.cache = std::move(before->cache);
        next.push_back(std::move(channel));
    }
    m_channels = std::move(next);
}

void Trend::feed(const Ref<site::LogRecords>& records, const Ref<site::History>& history)
{
    if (m_isBusy)
        return;
    const QScopedValueRollback busy(m_isBusy, true);
    const site::HistorySpan shown = m_span;
    const HistoryTime storedBefore = std::exchange(m_storedUntil, EarliestTime);
    // Of the records that stay in the buffer none may have come in between.
    const HistoryTime known = m_records->span().last;
    std::int64_t staying = 0;
    attempt([&] {
        if (const std::optional<HistoryTime> first = records ? timeOf(records->cell(0, 0)) : std::nullopt)
            staying = m_records->rowCount() - m_records->placeOf(*first);
    });
    attempt([&] { m_records->take(records); });
    const bool isRewritten = m_records->placeOf(known + 1) != staying;
    std::vector<Source> sources = sourcesOf(history);
    std::vector<QString> labels;
    for (const Source& source : sources)
        labels.push_back(source.series.label.left(LongestText));
    m_filter->setSource(records ? Ref<binding::Object>(records) : Ref<binding::Object>(history), std::move(labels));
    list(std::move(sources));

    m_state.clear();
    site::HistorySpan span = m_records->span();
    HistoryTime latest = span.isEmpty ? 0 : span.last;
    if (history) {
        attempt([&] {
            m_state = history->State().left(LongestText);
            const site::HistorySpan stored = history->span();
            if (stored.isEmpty || stored.last < stored.first)
                return;
            const HistoryTime first = std::clamp(stored.first, EarliestTime, LatestTime);
            const HistoryTime last = std::clamp(stored.last, EarliestTime, LatestTime);
            span = span.isEmpty ? site::HistorySpan{first, last, false}
                                : site::HistorySpan{std::min(first, span.first), std::max(last, span.last), false};
            latest = span.last;
            m_storedUntil = last;
        });
    }
    m_span = span;
    // What was read holds up to the last record known then, unless records have come in between.
    const HistoryTime news = shown.isEmpty ? EarliestTime : shown.last;
    for (TrendChannel& channel : m_channels) {
        channel.cache.expire(channel.store == m_records ? news : std::min(news, storedBefore));
        if (isRewritten && channel.store == m_records)
            channel.cache.clear();
    }
    expire(history, storedBefore);
    readLastValues();
    m_view.follow(m_records->span().isEmpty ? m_span : m_records->span(), latest);
}

/// Records that were unloaded from a logger stand between those that were there: more rows before the end than there
/// were. Then everything is read anew.
void Trend::expire(const Ref<site::History>& history, HistoryTime storedBefore)
{
    if (!history) {
        m_rowCount = 0;
        return;
    }
    attempt([&] {
        if (history->placeOf(storedBefore + 1) != m_rowCount) {
            for (TrendChannel& channel : m_channels) {
                if (channel.store == history)
                    channel.cache.clear();
            }
        }
        m_rowCount = history->placeOf(m_storedUntil + 1);
    });
}

void Trend::readLastValues()
{
    const HistoryTime moment = LatestTime;
    std::vector<std::pair<const site::History*, std::vector<std::pair<std::int64_t, site::History::Past>>>> known;
    const auto pastsOf = [&](const Ref<site::History>& store) -> const auto&
    {
        for (const auto& [of, pasts] : known) {
            if (of == store.get())
                return pasts;
        }
        std::vector<std::pair<std::int64_t, site::History::Past>> pasts;
        attempt([&] {
            const std::vector<HistorySeries> series = store->series();
            const std::vector<site::History::Past> values = store->valuesAt(moment);
            for (std::size_t i = 0; i < std::min(series.size(), values.size()); ++i)
                pasts.emplace_back(series[i].id, values[i]);
        });
        known.emplace_back(store.get(), std::move(pasts));
        return known.back().second;
    };
    for (TrendChannel& channel : m_channels) {
        for (const auto& [id, past] : pastsOf(channel.store)) {
            if (id == channel.series) {
                channel.lastTime = past.time;
                channel.lastValue = past.value;
            }
        }
        if (channel.column == 0 || channel.store == m_records)
            continue;
        for (const auto& [column, past] : pastsOf(Ref<site::History>(m_records))) {
            if (column == channel.column && past.time > channel.lastTime) {
                channel.lastTime = past.time;
                channel.lastValue = past.value;
            }
        }
    }
}

// Reading ------------------------------------------------------------------------------------------------------

Wanted Trend::wanted(int pixels) const
{
    return {m_view.from(), m_view.until(), std::max(pixels, 1)};
}

bool Trend::isReadDue(int pixels) const
{
    const Wanted want = wanted(pixels);
    return std::any_of(m_channels.begin(), m_channels.end(), [&](const TrendChannel& channel) {
        return isShown(channel) && channel.cache.isReadDue(want);
    });
}

/// The history's, and behind them the records that the log buffer alone has so far: a store takes a moment to keep what
/// it is handed, and a logger that logs every hour must not be an hour late on the screen.
std::vector<HistoryPoint> Trend::pointsOf(const TrendChannel& channel, HistoryTime from, HistoryTime until,
                                          std::int32_t most) const
{
    std::vector<HistoryPoint> points = channel.store->points(channel.series, from, until, most);
    if (channel.column == 0 || channel.store == m_records)
        return points;
    // The same record may lie a millisecond apart in both: a Date is a number of days.
    const HistoryTime begin = std::max(from, m_storedUntil + SameRecord + 1);
    for (const HistoryPoint& recent : m_records->points(channel.column, begin, until, most))
        points.push_back(recent);
    return points;
}

bool Trend::read(int pixels, const std::function<bool()>& isTimeUp)
{
    if (m_isBusy)
        return true;
    const QScopedValueRollback busy(m_isBusy, true);
    const Wanted want = wanted(pixels);
    bool hasRead = false;
    // What is not there at all comes before what is only too coarse.
    for (const bool isMissing : {true, false}) {
        for (TrendChannel& channel : m_channels) {
            if (!isShown(channel) || !channel.cache.isReadDue(want) || (isMissing && channel.cache.covers(want)))
                continue;
            if (hasRead && isTimeUp())
                return false;
            hasRead = true;
            const auto source = [&](HistoryTime from, HistoryTime until, std::int32_t most) {
                return pointsOf(channel, from, until, most);
            };
            if (!attempt([&] { channel.cache.read(source, want); })) {
                channel.cache.giveUp(want);
                m_state = QStringLiteral("The stored records cannot be read.");
            }
        }
    }
    return true;
}

// Looking ------------------------------------------------------------------------------------------------------

std::int64_t Trend::patience(const TrendChannel& channel)
{
    if (channel.period > 0)
        return channel.period * site::PeriodsOfPatience;
    const std::int64_t step = usualStep(channel.cache.points());
    return step == 0 ? LatestTime : step * GuessedPatience;
}

std::vector<Gap> Trend::gapsOf(const TrendChannel& channel, std::size_t most) const
{
    std::vector<Gap> gaps;
    const std::vector<HistoryPoint>& points = channel.cache.points();
    const std::int64_t limit = patience(channel);
    for (std::size_t i = 1; i < points.size() && gaps.size() < most; ++i) {
        const Gap between{points[i - 1].last, points[i].first};
        if (between.until - between.from > limit && between.until > m_view.from() && between.from < m_view.until())
            gaps.push_back(between);
    }
    return gaps;
}

const HistoryPoint* Trend::pointAt(const TrendChannel& channel, HistoryTime moment) const
{
    const std::vector<HistoryPoint>& points = channel.cache.points();
    const auto found = lastBefore(points, moment);
    if (found == points.end() || moment - found->last > patience(channel))
        return nullptr;
    return &*found;
}

} // namespace zan::zandata
