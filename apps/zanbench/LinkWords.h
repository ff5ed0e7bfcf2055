#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace zan::host {

/// A link's state in words ("Connected", "Connection broken"); a number that is no state says so.
QString linkStateText(int state);

/// How old the last data are, in words that a glance takes in: "No data yet", "Data 3 s old", "Data 2 min old",
/// "Data 5 h old", "Data 3 days old".
QString dataAgeText(std::optional<std::int64_t> milliseconds);

} // namespace zan::host
