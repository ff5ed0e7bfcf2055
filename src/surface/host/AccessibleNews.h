#pragma once

#include "surface/Forward.h"

namespace zan::surface::AccessibleNews {

/// Compares what a surface shows with what was told of it before and tells the differences, at most one of each kind for
/// a control. What is found first tells nothing: a tool that begins to listen looks around itself. What hides and shows
/// a great many controls at once, as another window does, is told as one change of the surface.
///
/// The widgets of input controls tell of themselves; they only get their names here.
///
/// A listener may do anything: surface and controls may be gone afterwards.
void tell(Surface& surface);
/// A control or a surface goes.
void forget(const LiveControl& control) noexcept;
void forget(const Surface& surface) noexcept;
/// Nobody listens any more.
void forgetAll() noexcept;

} // namespace zan::surface::AccessibleNews
