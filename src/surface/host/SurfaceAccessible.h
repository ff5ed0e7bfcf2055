#pragma once

#include "surface/Forward.h"

namespace zan::surface::SurfaceAccessible {

/// Makes surfaces known to the toolkit's accessibility: painted controls appear as children of the surface beside
/// its widgets, with role, name and text. Done once per process.
void install();
/// A control or a whole surface goes: assistive tools that still hold it find it invalid.
void forget(const LiveControl& control);
void forget(const Surface& surface);

} // namespace zan::surface::SurfaceAccessible
