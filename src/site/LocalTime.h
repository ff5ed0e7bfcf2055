#pragma once

#include "site/History.h"

#include <optional>

namespace zan::site {

// Stored records have times of their own, the same all over the world; a Date, and everything that a person reads, is
// local time.

/// Times that a calendar can name, with room to spare: what lies outside is taken for the nearer end.
inline constexpr HistoryTime EarliestTime = -59'000'000'000'000; // year 100
inline constexpr HistoryTime LatestTime = 253'000'000'000'000;   // year 9987

/// A record may be this many periods of its series late before there is a gap.
inline constexpr std::int64_t PeriodsOfPatience = 3;

/// Nothing for what is no date of the calendar. Of the hour that a clock shows twice in autumn the first is meant.
std::optional<HistoryTime> timeOf(const Variant& date);
values::Date dateOf(HistoryTime time);

} // namespace zan::site
