#pragma once

#include "surface/Forward.h"

namespace zan::surface::SurfaceAccessible {

/// Makes surfaces known to the toolkit's accessibility: painted controls appear as children of the surface beside
/// its widgets, with role, name and text. Done once per process.
void install();
/// Tells assistive tools that another control is the one that keys edit: the surface's focus is on it while the surface
/// has the keyboard.
void tellCurrent(Surface& surface, LiveControl& control);
/// A control or a whole surface goes: assistive tools that still hold it find it invalid.
void forget(const LiveControl& control);
void forget(const Surface& surface);

} // namespace zan::surface::SurfaceAccessible
