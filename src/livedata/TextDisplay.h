#pragma once

#include "wrappers/iBenchControl.h"

namespace zan::livedata {

/// Shows the channel of a label in its Caption: the formatted value, with label and units where SHOWLABELS asks for
/// them. A label without a channel keeps its caption. A value that cannot be shown reads "ERROR!".
void UpdateLabel(wrappers::iBenchControl& control);

/// Shows the formatted value of a text box's channel in its Text, whatever the user has typed there. Without a
/// channel, and for a value that cannot be shown, it reads "No channel".
void UpdateTextBox(wrappers::iBenchControl& control);

} // namespace zan::livedata
