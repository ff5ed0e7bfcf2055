#pragma once

#include <QPaintDevice>
#include <QPainter>
#include <QRect>

namespace zan::surface {

/// What can be seen at most of what a painter paints, in its own coordinates. A control may be larger than any screen:
/// what it paints must not cost more than what is visible.
inline QRect visiblePart(const QPainter& painter)
{
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    const QRectF whole = painter.transform().inverted().mapRect(device);
    return (painter.hasClipping() ? whole & painter.clipBoundingRect() : whole).toAlignedRect();
}

} // namespace zan::surface
