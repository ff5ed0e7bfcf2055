#pragma once

#include "zandata/data/Trend.h"

namespace zan::zandata {

/// What a graph shows as a table. While every point is one record: a row for each moment and a column for each channel.
/// Where records share a point, a row for each point with its least, mean and greatest value and their number.
QString seenCsv(const Trend& trend);

} // namespace zan::zandata
