#pragma once

#include <QRect>

class QColor;
class QPainter;

namespace zan::display {

/// The marks of a limit beside a bar: two triangles, one on each side, tips at the bar, with a grey edge of one
/// pixel above and below.
namespace LimitMarker {

/// Length in pixels, and height at the far end.
inline constexpr int Size = 10;

/// Draws both at the upright place `y`, cut at `area`. The bar reaches from column `left` up to before column `right`;
/// the tips stand at these two. Places count from the top left corner of the area.
void draw(QPainter& painter, const QRect& area, int left, int right, int y, const QColor& colour);

} // namespace LimitMarker

} // namespace zan::display
