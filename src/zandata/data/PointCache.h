#pragma once

#include "zandata/data/LogTime.h"

#include <functional>
#include <vector>

namespace zan::zandata {

using site::HistoryPoint;

/// The stretch of time that is wanted of a series, over how many pixels.
struct Wanted
{
    HistoryTime from = 0;
    HistoryTime until = 0;
    int pixels = 1;
};

/// What a graph has read of one series: points over equal stretches for more than is seen, so that small moves need no
/// read. Stretches have lengths of powers of two of a millisecond and begin at multiples of it, so that what was read
/// for one picture fits the next. Never more than MostPoints, however many records there are.
class PointCache
{
public:
    static constexpr std::int32_t MostPoints = 8'000;
    /// Widest picture that gets a stretch for each pixel.
    static constexpr int MostPixels = 2'000;

    const std::vector<HistoryPoint>& points() const noexcept { return m_points; }
    /// What the points stand for: outside of it nothing is known.
    HistoryTime from() const noexcept { return m_from; }
    HistoryTime until() const noexcept { return m_until; }
    bool isEmpty() const noexcept { return m_until <= m_from; }

    /// Whether a read would show more than what is here.
    bool isReadDue(const Wanted& wanted) const;
    /// Whether what is seen is here at all, however coarse.
    bool covers(const Wanted& wanted) const;
    /// Answers as a history does with the points of one series.
    using Source = std::function<std::vector<HistoryPoint>(HistoryTime from, HistoryTime until, std::int32_t most)>;
    /// Reads what is wanted and as much again on both sides; what a source raises leaves what was here.
    void read(const Source& source, const Wanted& wanted);
    /// Records have come from this time on: what is here of them is read again with the next read.
    void expire(HistoryTime from);
    void clear();
    /// A read has failed: it is not tried again for this stretch of time until something expires.
    void giveUp(const Wanted& wanted);

    /// Length of a stretch for this picture.
    static std::int64_t stretchFor(const Wanted& wanted);

private:
    std::vector<HistoryPoint> fetch(const Source& source, HistoryTime from, HistoryTime until) const;
    bool extend(const Source& source, const Wanted& wanted);

    std::int64_t m_stretch = 0;
    bool m_isGivenUp = false;
    HistoryTime m_from = 0;
    HistoryTime m_until = 0;
    std::vector<HistoryPoint> m_points;
};

/// Points as a store has to give them: finite, in order of time, none outside, no more than asked for. What is not like
/// that is left out.
std::vector<HistoryPoint> soundPoints(std::vector<HistoryPoint> points, HistoryTime from, HistoryTime until);

} // namespace zan::zandata
