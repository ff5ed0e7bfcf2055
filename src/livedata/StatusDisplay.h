#pragma once

#include "wrappers/BenchControls.h"
#include "wrappers/iBenchControl.h"

namespace zan::livedata {

/// Sets a status light's Visible and Value from its channel, compared with a constant or tested for a bit, or from the
/// state of the connection, as the document says. A light that shows a channel and has none stays as it is.
///
/// A value that cannot be compared raises what the comparison raises. Nothing is raised from a bit test on.
void UpdateStatusLight(wrappers::iBenchControl& control, const wrappers::BenchControls& controls);

/// Brings a light that shows the state of the connection in line with a new state of the link.
void FollowLink(wrappers::iBenchControl& control, int state);

} // namespace zan::livedata
