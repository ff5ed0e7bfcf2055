#pragma once

#include "surface/host/LiveControl.h"
#include "window/BenchWindow.h"
#include "wrappers/iBenchControl.h"

namespace zan::host {

using binding::Variant;
using values::Ref;

/// The wrapper that a script means: itself, its live control, or its place or key in Window.Controls. Raises 91 for
/// Nothing, for a control that has been removed and for a panel without controls, 5 for a control of another panel,
/// and what the list raises for a place or key that it does not have.
Ref<wrappers::iBenchControl> wrapperOf(const window::BenchWindow& window, const Variant& control);

/// The live control that a script means; raises as wrapperOf, and 91 for a wrapper without one.
Ref<surface::LiveControl> liveOf(const window::BenchWindow& window, const Variant& control);

} // namespace zan::host
