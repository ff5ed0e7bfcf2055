#pragma once

#include "wrappers/BenchControls.h"
#include "wrappers/iBenchControl.h"

namespace zan::livedata {

/// Shows in a check box whether its channel differs from the value that means unchecked, with the caption of that
/// state, and without running the box's action: the box is disabled while its Value is written. A box that has just
/// been clicked is left alone once. Without a channel it reads "No channel".
///
/// Raises what the comparison and the live control raise.
void UpdateCheckBox(wrappers::iBenchControl& control);

/// Shows its channel's value in a value bar and names it in the tool tip; where the limits are bound to a channel of
/// their own, moves them to that channel's value plus and minus an offset. Raises what the live control raises, and 91
/// when limits are bound and there is no logger.
void UpdateValueBar(wrappers::iBenchControl& control, const wrappers::BenchControls& controls);

/// Shows its channel's value in a progress bar and names it in the tool tip. A value outside the bar's range leaves the
/// bar where it was. Never raises.
void UpdateProgressBar(wrappers::iBenchControl& control);

} // namespace zan::livedata
