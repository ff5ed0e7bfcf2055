#pragma once

#include "zandata/data/GraphFilter.h"
#include "zandata/data/PointCache.h"
#include "zandata/data/RecordsHistory.h"
#include "zandata/data/TimeView.h"

#include <functional>

namespace zan::zandata {

/// One channel of a graph and what has been read of it.
struct TrendChannel
{
    std::int32_t number = 0; ///< in the filter, from 1
    QString label;
    QString units;
    QString format;
    std::int64_t period = 0; ///< milliseconds between records; 0 while unknown
    Ref<site::History> store;
    std::int64_t series = 0; ///< in that store
    std::int64_t column = 0; ///< of the log buffer, whose latest records the history may not have yet; 0 for none
    PointCache cache;
    HistoryTime lastTime = 0; ///< of the latest record; 0 while there is none
    Variant lastValue;
};

/// A stretch of time in which a channel has no records, though some came before and after.
struct Gap
{
    HistoryTime from = 0;
    HistoryTime until = 0;
    bool operator==(const Gap&) const = default;
};

/// What a graph shows, without its looks: the channels, the stretch of time and the points. Reading is asked for by
/// isReadDue() and done by read(), a little at a turn, so that a store that takes long never holds a drag up.
class Trend
{
public:
    /// Most channels that are drawn.
    static constexpr std::size_t MostChannels = 64;

    Trend();
    Trend(const Trend&) = delete;
    Trend& operator=(const Trend&) = delete;

    /// New records. The data source names the channels; where the history has stored a channel, its records are the
    /// history's. Without a data source the history's series are the channels. Failures of either leave what there was.
    void feed(const Ref<site::LogRecords>& records, const Ref<site::History>& history);

    GraphFilter& filter() noexcept { return *m_filter; }
    const GraphFilter& filter() const noexcept { return *m_filter; }
    TimeView& view() noexcept { return m_view; }
    const TimeView& view() const noexcept { return m_view; }
    const std::vector<TrendChannel>& channels() const noexcept { return m_channels; }
    bool isShown(const TrendChannel& channel) const { return m_filter->isShown(channel.number); }
    /// What a person has to know of the store; empty while all is well.
    const QString& state() const noexcept { return m_state; }
    /// From the first record to the last, of the history where there is one.
    const site::HistorySpan& span() const noexcept { return m_span; }

    /// Reads what the picture of this width lacks, channel after channel, until `isTimeUp` says so; one channel at
    /// least. True when nothing is left to be read.
    bool read(int pixels, const std::function<bool()>& isTimeUp);
    /// Whether that would read anything.
    bool isReadDue(int pixels) const;

    /// Gaps of a channel that reach into the stretch of time that is shown, at most `most`.
    std::vector<Gap> gapsOf(const TrendChannel& channel, std::size_t most = 1000) const;
    /// The point of a channel at a moment, or the last one before it unless a gap lies between; null for none.
    const HistoryPoint* pointAt(const TrendChannel& channel, HistoryTime moment) const;
    /// Longest time between two records that is no gap.
    static std::int64_t patience(const TrendChannel& channel);

private:
    struct Source
    {
        Ref<site::History> store;
        site::HistorySeries series;
        std::int64_t column = 0;
    };
    std::vector<Source> sourcesOf(const Ref<site::History>& history) const;
    void list(std::vector<Source> sources);
    void expire(const Ref<site::History>& history, HistoryTime storedBefore);
    void readLastValues();
    std::vector<HistoryPoint> pointsOf(const TrendChannel& channel, HistoryTime from, HistoryTime until,
                                       std::int32_t most) const;
    Wanted wanted(int pixels) const;

    Ref<GraphFilter> m_filter = values::make<GraphFilter>();
    Ref<RecordsHistory> m_records = values::make<RecordsHistory>();
    std::vector<TrendChannel> m_channels;
    TimeView m_view;
    site::HistorySpan m_span;
    HistoryTime m_storedUntil = EarliestTime; // last record of the history, when it was last looked at
    std::int64_t m_rowCount = 0;              // its records up to that one
    QString m_state;
    bool m_isBusy = false; // a store is being asked: what it sets off in between changes nothing here
};

} // namespace zan::zandata
