#include "window/Placement.h"

#include "values/RuntimeError.h"

#include <cmath>

namespace zan::window {

using wrappers::TwipsRectangle;

namespace {

/// Twips within which a point is near an edge.
constexpr float Reach = 100;

bool isNear(float value, float edge)
{
    return value > edge - Reach && value < edge + Reach;
}

} // namespace

TwipsRectangle snapped(const TwipsRectangle& rectangle, float gridSize)
{
    if (gridSize == 0)
        values::raise(values::ErrorNumber::DivisionByZero);
    const auto toGrid = [gridSize](float value) {
        // nearbyint rounds halves to even: the process never changes the rounding mode.
        return float(std::nearbyint(double(value) / double(gridSize)) * double(gridSize));
    };
    return {toGrid(rectangle.left), toGrid(rectangle.top), toGrid(rectangle.width), toGrid(rectangle.height)};
}

bool hitsShape(const TwipsRectangle& shape, float x, float y)
{
    return x > shape.left - Reach && x < shape.left + shape.width + Reach && y > shape.top - Reach &&
           y < shape.top + shape.height + Reach;
}

ShapeGrab hitsCorner(const TwipsRectangle& shape, float x, float y)
{
    const bool top = isNear(y, shape.top);
    const bool bottom = isNear(y, shape.top + shape.height);
    // The left edge is asked first and the top one first: on a small shape they win.
    if (isNear(x, shape.left))
        return top ? ShapeGrab::TopLeft : bottom ? ShapeGrab::BottomLeft : ShapeGrab::Move;
    if (isNear(x, shape.left + shape.width))
        return top ? ShapeGrab::TopRight : bottom ? ShapeGrab::BottomRight : ShapeGrab::Move;
    return ShapeGrab::Move;
}

} // namespace zan::window
