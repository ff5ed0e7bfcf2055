#include "surface/host/Frames.h"

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <QRect>

namespace zan::surface::Frames {

namespace {

/// Two edges of a frame: top and left in one colour, bottom and right in the other.
void drawEdges(QPainter& painter, const QRect& area, const QColor& topLeft, const QColor& bottomRight)
{
    if (area.width() < 1 || area.height() < 1)
        return;
    painter.fillRect(area.left(), area.top(), area.width(), 1, topLeft);
    painter.fillRect(area.left(), area.top(), 1, area.height(), topLeft);
    painter.fillRect(area.left(), area.bottom(), area.width(), 1, bottomRight);
    painter.fillRect(area.right(), area.top(), 1, area.height(), bottomRight);
}

} // namespace

void drawLine(QPainter& painter, const QRect& rectangle, const QColor& colour)
{
    drawEdges(painter, rectangle, colour, colour);
}

void drawSunken(QPainter& painter, const QRect& rectangle, const QPalette& palette, int width)
{
    drawEdges(painter, rectangle, palette.color(QPalette::Dark), palette.color(QPalette::Light));
    if (width > 1)
        drawEdges(painter, rectangle.adjusted(1, 1, -1, -1), palette.color(QPalette::Shadow),
                  palette.color(QPalette::Midlight));
}

QRect drawBorder(QPainter& painter, const QRect& rectangle, const QPalette& palette, bool border, bool withDepth)
{
    if (!border)
        return rectangle;
    const int width = borderWidth(border, withDepth);
    if (withDepth)
        drawSunken(painter, rectangle, palette, width);
    else
        drawLine(painter, rectangle, palette.color(QPalette::WindowText));
    return rectangle.adjusted(width, width, -width, -width);
}

int borderWidth(bool border, bool withDepth)
{
    if (!border)
        return 0;
    return withDepth ? 2 : 1;
}

} // namespace zan::surface::Frames
