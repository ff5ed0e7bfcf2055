#pragma once

#include "wrappers/BenchControls.h"
#include "wrappers/iBenchControl.h"

namespace zan::livedata {

/// Shows the channel of a label in its Caption: the formatted value, with label and units where SHOWLABELS asks for
/// them. A value that cannot be shown reads "ERROR!". A label without a channel that is bound to a source of restrictions
/// shows what that says; any other keeps its caption.
void UpdateLabel(wrappers::iBenchControl& control, const wrappers::BenchControls& controls);

/// Shows the formatted value of a text box's channel in its Text, whatever the user has typed there. Without a
/// channel, and for a value that cannot be shown, it reads "No channel".
void UpdateTextBox(wrappers::iBenchControl& control);

} // namespace zan::livedata
