#pragma once

#include "surface/Forward.h"

namespace zan::surface::SurfaceAccessible {

/// Makes surfaces known to the toolkit's accessibility: painted controls appear as children of the surface beside
/// its widgets, with role, name and value. Done once per process.
void install();
/// Tells assistive tools what has changed since they were told last: names, values and states of painted controls, which
/// controls there are, and the one that keys edit. It also gives names to input widgets. Nothing is looked at while no
/// tool listens. A listener may do anything: surface and controls may be gone afterwards.
void tellNews(Surface& surface);
/// Another control is the one that keys edit: that is told at the end of this turn.
void currentChanged(Surface& surface);
/// A control or a whole surface goes: assistive tools that still hold it find it invalid.
void forget(const LiveControl& control);
void forget(const Surface& surface);

} // namespace zan::surface::SurfaceAccessible
