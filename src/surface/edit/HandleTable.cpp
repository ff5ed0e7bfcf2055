#include "surface/edit/HandleTable.h"

#include <algorithm>

namespace zan::surface {

std::array<QRect, 8> handleRectangles(const QRect& target, int size)
{
    const int left = target.x();
    const int top = target.y();
    const int right = left + target.width();
    const int bottom = top + target.height();
    // COMPAT: the middle handles are centred with a fixed 2, whatever the handle size.
    const int midX = left + target.width() / 2 - 2;
    const int midY = top + target.height() / 2 - 2;
    std::array<QRect, 8> places;
    for (std::size_t index = 0; index < places.size(); ++index) {
        const std::uint8_t edges = handleTable[index].edges;
        const bool inRow = edges & (LeftEdge | RightEdge);
        const bool inColumn = edges & (TopEdge | BottomEdge);
        if ((!inRow && 1.5 * size >= target.width()) || (!inColumn && 1.5 * size >= target.height()))
            continue;
        const int x = edges & LeftEdge ? left - size : edges & RightEdge ? right : midX;
        const int y = edges & TopEdge ? top - size : edges & BottomEdge ? bottom : midY;
        places[index] = QRect(x, y, size, size);
    }
    return places;
}

QRect resized(const QRect& start, std::uint8_t edges, QPoint by)
{
    int left = start.x();
    int top = start.y();
    int right = left + start.width();
    int bottom = top + start.height();
    if (edges & LeftEdge)
        left = std::min(left + by.x(), right);
    if (edges & RightEdge)
        right = std::max(right + by.x(), left);
    if (edges & TopEdge)
        top = std::min(top + by.y(), bottom);
    if (edges & BottomEdge)
        bottom = std::max(bottom + by.y(), top);
    return {left, top, right - left, bottom - top};
}

} // namespace zan::surface
