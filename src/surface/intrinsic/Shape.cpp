#include "surface/intrinsic/Shape.h"

#include "binding/MemberTable.h"
#include "surface/host/VisiblePart.h"

#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <array>
#include <cmath>

namespace zan::surface {

namespace {

enum class Figure { Rectangle, Square, Oval, Circle, RoundedRectangle, RoundedSquare };

constexpr std::int16_t WidestBorder = 8192;
constexpr double LargestWhole = 4096; // pixels; larger figures are drawn in part

constexpr std::array BorderPens{Qt::NoPen,       Qt::SolidLine,      Qt::DashLine, Qt::DotLine,
                                Qt::DashDotLine, Qt::DashDotDotLine, Qt::SolidLine};
constexpr std::array FillBrushes{Qt::SolidPattern, Qt::NoBrush,      Qt::HorPattern,   Qt::VerPattern,
                                 Qt::BDiagPattern, Qt::FDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};

bool isEqualSided(Figure figure)
{
    return figure == Figure::Square || figure == Figure::Circle || figure == Figure::RoundedSquare;
}

QRect figureBounds(Figure figure, const QRect& rectangle)
{
    if (!isEqualSided(figure))
        return rectangle;
    const int side = std::min(rectangle.width(), rectangle.height());
    return {rectangle.left() + (rectangle.width() - side) / 2, rectangle.top() + (rectangle.height() - side) / 2,
            side, side};
}

/// How far the outline of a figure with round corners (radii `across` and `down`) lies inside its left and right edge at
/// this height.
double insetAt(double y, const QRectF& area, double across, double down)
{
    const double depth = std::min(y - area.top(), area.bottom() - y); // below the top or above the bottom
    if (depth >= down)
        return 0;
    const double part = 1 - std::max(depth, 0.0) / down;
    return across * (1 - std::sqrt(1 - part * part));
}

/// The part of a figure with round corners that passes the visible rectangle, which has room for the pen. The toolkit
/// flattens a curve as a whole, however little of it is seen.
QPolygonF partialOutline(const QRectF& area, double across, double down, const QRectF& visible)
{
    constexpr double Step = 0.25; // pixels: where the outline runs flat, a row is a long way
    const double top = std::max(area.top(), visible.top());
    const double bottom = std::min(area.bottom(), visible.bottom());
    QPolygonF right;
    QPolygonF left;
    const auto add = [&](double y) {
        const double inset = insetAt(y, area, across, down);
        left.append({std::clamp(area.left() + inset, visible.left(), visible.right()), y});
        right.append({std::clamp(area.right() - inset, visible.left(), visible.right()), y});
    };
    for (double y = top; y < bottom; y += Step)
        add(y);
    if (top <= bottom)
        add(bottom);
    std::reverse(left.begin(), left.end());
    QPolygonF outline = right + left;
    if (!outline.isEmpty())
        outline.append(outline.first());
    return outline;
}

/// The rectangle without what lies far outside the visible one. Edges move by whole dash patterns, so that dashes stay
/// where they are.
QRectF visibleRectangle(const QRectF& area, const QRectF& visible)
{
    constexpr double Dashes = 36; // a multiple of the length of every pattern, in pen widths of 1
    const auto cut = [](double beyond) { return std::max(0.0, std::floor(beyond / Dashes) * Dashes); };
    return area.adjusted(cut(visible.left() - area.left()), cut(visible.top() - area.top()),
                         -cut(area.right() - visible.right()), -cut(area.bottom() - visible.bottom()));
}

/// A figure too large to be seen as a whole: only what is near the visible rectangle is drawn.
void drawLargeFigure(QPainter& painter, Figure figure, const QRectF& area, const QRectF& visible)
{
    const double radius = std::min(area.width(), area.height()) / 6;
    switch (figure) {
    case Figure::Rectangle:
    case Figure::Square:
        painter.drawRect(visibleRectangle(area, visible));
        break;
    case Figure::Oval:
    case Figure::Circle:
        painter.drawPolygon(partialOutline(area, area.width() / 2, area.height() / 2, visible));
        break;
    case Figure::RoundedRectangle:
    case Figure::RoundedSquare:
        painter.drawPolygon(partialOutline(area, radius, radius, visible));
        break;
    }
}

void drawFigure(QPainter& painter, Figure figure, const QRectF& area)
{
    if (std::max(area.width(), area.height()) > LargestWhole) {
        const double pen = painter.pen().style() == Qt::NoPen ? 0 : painter.pen().widthF();
        const double room = 2 * pen + 2; // mitres reach farther than half a pen
        drawLargeFigure(painter, figure, area, QRectF(visiblePart(painter)).adjusted(-room, -room, room, room));
        return;
    }
    switch (figure) {
    case Figure::Rectangle:
    case Figure::Square:
        painter.drawRect(area);
        break;
    case Figure::Oval:
    case Figure::Circle:
        painter.drawEllipse(area);
        break;
    case Figure::RoundedRectangle:
    case Figure::RoundedSquare: {
        const double radius = std::min(area.width(), area.height()) / 6;
        painter.drawRoundedRect(area, radius, radius);
        break;
    }
    }
}

} // namespace

Shape::Shape() = default;

const binding::MemberTable& Shape::members() const
{
    using binding::field;
    using binding::oneOf;
    return binding::table([] {
        return binding::MemberTable(
            "Shape", &baseMembers(),
            {
                field<&Shape::m_shape, &Shape::look>("Shape", 0, oneOf(5)).asDefault(),
                field<&Shape::m_borderStyle, &Shape::look>("BorderStyle", 1, oneOf(6)),
                field<&Shape::m_borderColor, &Shape::look>("BorderColor", values::WindowText),
                field<&Shape::m_borderWidth, &Shape::look>("BorderWidth", 1, binding::between(1, WidestBorder)),
                field<&Shape::m_fillStyle, &Shape::look>("FillStyle", 1, oneOf(7)),
                field<&Shape::m_fillColor, &Shape::look>("FillColor"),
                field<&Shape::m_backStyle, &Shape::look>("BackStyle", 0, oneOf(1)),
                field<&Shape::m_backColor, &Shape::look>("BackColor", values::WindowBackground),
            });
    });
}

/// 1. What is behind the pattern, 2. the fill, 3. the border, which lies inside the rectangle as a whole.
void Shape::paint(PaintContext& context, const QRect& rectangle)
{
    const auto figure = Figure(m_shape);
    const QRect area = figureBounds(figure, rectangle);
    if (area.width() < 1 || area.height() < 1 || !area.intersects(visiblePart(context.painter)))
        return;
    QPainter& painter = context.painter;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, figure != Figure::Rectangle && figure != Figure::Square);

    const int border = m_borderStyle == 0 ? 0 : std::min({int(m_borderWidth), area.width(), area.height()});
    const double half = border / 2.0;
    const QRectF outline = QRectF(area).adjusted(half, half, -half, -half);
    painter.setPen(Qt::NoPen);
    if (m_backStyle == 1) {
        painter.setBrush(values::toQColor(m_backColor, context.palette));
        drawFigure(painter, figure, outline);
    }
    if (const Qt::BrushStyle fill = FillBrushes[m_fillStyle]; fill != Qt::NoBrush) {
        painter.setBrush(QBrush(values::toQColor(m_fillColor, context.palette), fill));
        drawFigure(painter, figure, outline);
    }
    if (border > 0) {
        const Qt::PenStyle line = border == 1 ? BorderPens[m_borderStyle] : Qt::SolidLine;
        painter.setPen(
            QPen(values::toQColor(m_borderColor, context.palette), border, line, Qt::FlatCap, Qt::MiterJoin));
        painter.setBrush(Qt::NoBrush);
        drawFigure(painter, figure, outline);
    }
    painter.restore();
}

bool Shape::hit(QPoint) const
{
    return false;
}

} // namespace zan::surface
