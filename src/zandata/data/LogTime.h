#pragma once

#include "site/LocalTime.h"

#include <QString>

#include <optional>

namespace zan::zandata {

using site::HistoryTime;
using values::Ref;
using values::Variant;

using site::dateOf;
using site::EarliestTime;
using site::LatestTime;
using site::timeOf;

/// "2026-03-02 14:05:09", with milliseconds where there are any.
QString timeText(HistoryTime time);
/// A time as a person types it ("2026-03-02 14:05", "2 Mar 2026 14:05:09", "14:05" for the day of `near`); nothing for
/// what is none.
std::optional<HistoryTime> timeFromText(const QString& text, HistoryTime near);

} // namespace zan::zandata
