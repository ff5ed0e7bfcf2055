#pragma once

#include "zanbench/OpenedSite.h"

namespace zan::window {
class BenchWindow;
}

namespace zan::host {

/// The values that a panel shows, one line per channel in the order of the controls: bind string, label, value as
/// its format shows it, units; then the channels of the window itself that no control is bound to. Columns are
/// aligned with blanks.
QString liveValues(const window::BenchWindow& panel);

} // namespace zan::host
