#pragma once

#include "zandata/data/LogTime.h"

#include <array>

namespace zan::zandata {

/// The stretch of time that a graph shows, and how it follows new records.
class TimeView
{
public:
    enum class Mode {
        Records, ///< from the first to the last record of the data source
        Span,    ///< the last hour, day and so on, up to the latest record
        Held,    ///< what the user has chosen; new records do not move it
    };
    /// Shortest and longest stretch.
    static constexpr std::int64_t ShortestSpan = 10;
    static constexpr std::int64_t LongestSpan = 6'400'000'000'000; // 200 years

    Mode mode() const noexcept { return m_mode; }
    bool isLive() const noexcept { return m_mode != Mode::Held; }
    HistoryTime from() const noexcept { return m_from; }
    HistoryTime until() const noexcept { return m_until; }
    std::int64_t span() const noexcept { return m_until - m_from; }
    /// Of the mode Span.
    std::int64_t followedSpan() const noexcept { return m_followedSpan; }

    /// New records: the data source's and, for the end, those of the history. What is held stays.
    void follow(const site::HistorySpan& records, HistoryTime latest);
    /// Follows the records of the data source again, as in the beginning.
    void followRecords();
    /// Follows the latest records over this length.
    void followSpan(std::int64_t span);
    /// Back to what was followed last.
    void goLive();
    void hold();
    /// Shows this stretch and holds it; times the wrong way round are put right.
    void show(HistoryTime from, HistoryTime until);
    void pan(double milliseconds);
    /// Below 1 shows less, about a moment that keeps its place.
    void zoom(double factor, double about);

private:
    void place();
    Mode m_mode = Mode::Records;
    Mode m_followed = Mode::Records;
    HistoryTime m_from = 0;
    HistoryTime m_until = 60'000;
    HistoryTime m_first = 0; // of the data source
    HistoryTime m_last = 0;
    HistoryTime m_latest = 0; // of all
    std::int64_t m_followedSpan = 3'600'000;
};

/// A length of time that a user can follow at a press.
struct FollowedRange
{
    const char* name;
    const char* button;
    char key;
    std::int64_t span;
};
inline constexpr std::int64_t HourLength = 3'600'000;
inline constexpr std::array FollowedRanges{FollowedRange{"Last hour", "1 h", 'H', HourLength},
                                           FollowedRange{"Last day", "1 d", 'D', 24 * HourLength},
                                           FollowedRange{"Last week", "1 w", 'W', 7 * 24 * HourLength}};

} // namespace zan::zandata
