#pragma once

#include "site/History.h"

#include <QString>

#include <optional>

namespace zan::zandata {

using site::HistoryTime;
using values::Ref;
using values::Variant;

// Stored records have times of their own, the same all over the world; a Date of the log buffers, and everything that a
// person reads, is local time.

/// Times that a calendar can name, with room to spare: what lies outside is taken for the nearer end.
inline constexpr HistoryTime EarliestTime = -59'000'000'000'000; // year 100
inline constexpr HistoryTime LatestTime = 253'000'000'000'000;   // year 9987

/// Nothing for what is no date of the calendar. Of the hour that a clock shows twice in autumn the first is meant.
std::optional<HistoryTime> timeOf(const Variant& date);
values::Date dateOf(HistoryTime time);

/// "2026-03-02 14:05:09", with milliseconds where there are any.
QString timeText(HistoryTime time);
/// A time as a person types it ("2026-03-02 14:05", "2 Mar 2026 14:05:09", "14:05" for the day of `near`); nothing for
/// what is none.
std::optional<HistoryTime> timeFromText(const QString& text, HistoryTime near);

} // namespace zan::zandata
