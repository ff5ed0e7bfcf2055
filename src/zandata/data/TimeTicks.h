#pragma once

#include "zandata/data/LogTime.h"

#include <vector>

namespace zan::zandata {

/// Marks of a time axis and what stands at them, in plain words: "14:05:09", "14:05", "Tue 3 Mar", "Mar 2026", "2026".
/// Marks lie at whole seconds, minutes, hours, days and so on of the local clock; the first one of a new day says which
/// day it is.
class TimeTicks
{
public:
    /// At most this many marks from one time to the other.
    TimeTicks(HistoryTime from, HistoryTime until, int most);

    const std::vector<HistoryTime>& times() const noexcept { return m_times; }
    QString label(HistoryTime time) const;
    /// Widest text that a label can be, for measuring.
    static QString widestLabel() { return QStringLiteral("Wed 28 Sep"); }

private:
    enum class Unit { Millisecond, Day, Month, Year };
    void place(HistoryTime from, HistoryTime until);

    Unit m_unit = Unit::Millisecond;
    std::int64_t m_count = 1; // units from mark to mark
    std::vector<HistoryTime> m_times;
};

/// A stretch of time in words: "Tue 3 Mar 2026, 10:00 to 11:00", "Tue 3 Mar 2026, 10:00 to Wed 4 Mar 2026, 10:00".
QString spanText(HistoryTime from, HistoryTime until);

} // namespace zan::zandata
