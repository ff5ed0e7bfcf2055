#pragma once

#include "values/Colour.h"

namespace zan::display {

/// A shade of a colour, 0 percent being black. System colours are not resolved: their number goes through the same
/// arithmetic.
///
/// COMPAT: green is taken together with blue and divided by 255, and blue by -256, as it always was. Pure reds scale
/// as one expects; blue always ends at 0 and counts as green, so the shades of a blue are green.
values::Colour ScaleColour(values::Colour colour, int percent);

} // namespace zan::display
