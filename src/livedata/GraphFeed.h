#pragma once

#include "wrappers/BenchControls.h"

namespace zan::livedata {

/// Gives a graph the log buffer's records: its heading, its limit lines, its data source, and with that the history
/// that the logger keeps, if it keeps one. Each step is made by itself: one that fails is left out.
void FeedGraph(wrappers::iBenchControl& control, wrappers::BenchControls& controls);

} // namespace zan::livedata
