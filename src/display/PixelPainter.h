#pragma once

#include <QRect>
#include <QVarLengthArray>

class QColor;
class QPainter;

namespace zan::display {

/// Whole pixel of a place, half to even. Places far outside any screen are clamped, what is no number is 0.
int nearestPixel(double place) noexcept;

/// Draws boxes and upright lines in whole logical pixels, end points included, cut at a rectangle. Corners may come in
/// any order.
class PixelPainter
{
public:
    /// Coordinates count from the origin; origin and rectangle are given in the painter's coordinates.
    PixelPainter(QPainter& painter, QPoint origin, const QRect& cutAt)
        : m_painter(painter)
        , m_origin(origin)
        , m_cutAt(cutAt)
    {}

    void fill(int x1, int y1, int x2, int y2, const QColor& colour);
    void outline(int x1, int y1, int x2, int y2, const QColor& colour);
    /// Collects a box for the next drawCollected().
    void collect(int x1, int y1, int x2, int y2);
    /// Draws what was collected in one go.
    void drawCollected(const QColor& colour);

private:
    QRect cut(int x1, int y1, int x2, int y2) const;

    QPainter& m_painter;
    QPoint m_origin;
    QRect m_cutAt;
    QVarLengthArray<QRect, 64> m_boxes;
};

} // namespace zan::display
