#include "display/PixelPainter.h"

#include <QColor>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace zan::display {

int nearestPixel(double place) noexcept
{
    // Small enough that sums of two such places stay whole numbers.
    constexpr double Limit = 100'000'000.0;
    if (std::isnan(place))
        return 0;
    return int(std::nearbyint(std::clamp(place, -Limit, Limit)));
}

QRect PixelPainter::cut(int x1, int y1, int x2, int y2) const
{
    const QPoint topLeft(std::min(x1, x2), std::min(y1, y2));
    const QPoint bottomRight(std::max(x1, x2), std::max(y1, y2)); // QRect counts its corners in, as boxes here do
    return QRect(topLeft, bottomRight).translated(m_origin) & m_cutAt;
}

void PixelPainter::fill(int x1, int y1, int x2, int y2, const QColor& colour)
{
    const QRect box = cut(x1, y1, x2, y2);
    if (!box.isEmpty())
        m_painter.fillRect(box, colour);
}

void PixelPainter::outline(int x1, int y1, int x2, int y2, const QColor& colour)
{
    fill(x1, y1, x2, y1, colour);
    fill(x1, y2, x2, y2, colour);
    fill(x1, y1, x1, y2, colour);
    fill(x2, y1, x2, y2, colour);
}

void PixelPainter::collect(int x1, int y1, int x2, int y2)
{
    const QRect box = cut(x1, y1, x2, y2);
    if (!box.isEmpty())
        m_boxes.append(box);
}

void PixelPainter::drawCollected(const QColor& colour)
{
    if (m_boxes.isEmpty())
        return;
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(colour);
    m_painter.drawRects(m_boxes.constData(), int(m_boxes.size()));
    m_boxes.clear();
}

} // namespace zan::display
