#include "surface/intrinsic/Shape.h"

#include "binding/MemberTable.h"

#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <array>

namespace zan::surface {

namespace {

enum class Figure { Rectangle, Square, Oval, Circle, RoundedRectangle, RoundedSquare };

constexpr std::int16_t WidestBorder = 8192;

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

void drawFigure(QPainter& painter, Figure figure, const QRectF& area)
{
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
    if (area.width() < 1 || area.height() < 1)
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
