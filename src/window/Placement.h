#pragma once

#include "wrappers/ControlType.h"

namespace zan::window {

/// A rectangle as it is snapped to a grid: each of the four measures becomes the nearest multiple of the step, an
/// exact half the even one. Raises 11 for a step of 0.
wrappers::TwipsRectangle snapped(const wrappers::TwipsRectangle& rectangle, float gridSize);

/// What a press near a shape does to it.
enum class ShapeGrab : int { Move = 0, TopLeft = 1, TopRight = 3, BottomLeft = 6, BottomRight = 8 };

/// Whether a point counts as on a shape: inside it, or less than 100 twips outside.
bool hitsShape(const wrappers::TwipsRectangle& shape, float x, float y);
/// The corner that is less than 100 twips from the point both ways; Move when there is none.
ShapeGrab hitsCorner(const wrappers::TwipsRectangle& shape, float x, float y);

} // namespace zan::window
