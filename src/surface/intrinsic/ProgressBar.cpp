#include "surface/intrinsic/ProgressBar.h"

#include "binding/MemberTable.h"
#include "surface/host/Choice.h"
#include "surface/host/Frames.h"

#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace zan::surface {

using values::ErrorNumber;

namespace {

constexpr int BlockGap = 2; // pixels

/// Blocks are two thirds as long as the bar is thick.
int blockLength(int thickness)
{
    return std::max(2, thickness * 2 / 3);
}

} // namespace

ProgressBar::ProgressBar() = default;

const binding::MemberTable& ProgressBar::members() const
{
    using binding::property;
    return binding::table([] {
        return binding::MemberTable(
            "ProgressBar", &baseMembers(),
            {
                property<&ProgressBar::value, &ProgressBar::setValue>("Value").asDefault(),
                property<&ProgressBar::minimum, &ProgressBar::setMinimum>("Min"),
                property<&ProgressBar::maximum, &ProgressBar::setMaximum>("Max"),
                property<&ProgressBar::orientation, &ProgressBar::setOrientation>("Orientation"),
                property<&ProgressBar::scrolling, &ProgressBar::setScrolling>("Scrolling"),
                property<&ProgressBar::borderStyle, &ProgressBar::setBorderStyle>("BorderStyle"),
                property<&ProgressBar::appearance, &ProgressBar::setAppearance>("Appearance"),
            });
    });
}

void ProgressBar::setMinimum(float minimum)
{
    if (!(minimum < m_maximum))
        values::raise(ErrorNumber::InvalidPropertyValue);
    m_minimum = minimum;
    m_value = std::max(m_value, minimum);
    changed(Look);
}

void ProgressBar::setMaximum(float maximum)
{
    if (!(maximum > m_minimum))
        values::raise(ErrorNumber::InvalidPropertyValue);
    m_maximum = maximum;
    m_value = std::min(m_value, maximum);
    changed(Look);
}

void ProgressBar::setValue(float value)
{
    if (!(value >= m_minimum && value <= m_maximum))
        values::raise(ErrorNumber::InvalidPropertyValue);
    if (m_value == value)
        return;
    m_value = value;
    changed(Look);
}

void ProgressBar::setOrientation(std::int16_t orientation)
{
    m_orientation = choice(orientation, 1);
    changed(Look);
}

void ProgressBar::setScrolling(std::int16_t scrolling)
{
    m_scrolling = choice(scrolling, 1);
    changed(Look);
}

void ProgressBar::setBorderStyle(std::int16_t style)
{
    m_borderStyle = choice(style, 1);
    changed(Look);
}

void ProgressBar::setAppearance(std::int16_t appearance)
{
    m_appearance = choice(appearance, 1);
    changed(Look);
}

double ProgressBar::fraction() const noexcept
{
    return (double(m_value) - double(m_minimum)) / (double(m_maximum) - double(m_minimum));
}

/// 1. The outer line, 2. the sunken edge, 3. the trough, 4. the filled part, from the left or from the bottom.
void ProgressBar::paint(PaintContext& context, const QRect& rectangle)
{
    QPainter& painter = context.painter;
    QRect inside = Frames::drawBorder(painter, rectangle, context.palette, m_borderStyle == 1, false);
    if (m_appearance == 1) {
        Frames::drawSunken(painter, inside, context.palette, 1);
        inside.adjust(1, 1, -1, -1);
    }
    if (inside.isEmpty())
        return;
    painter.fillRect(inside, context.palette.color(QPalette::Button));

    const bool vertical = m_orientation == 1;
    const int length = vertical ? inside.height() : inside.width();
    const int filled = int(std::lround(fraction() * length));
    const int block = m_scrolling == 1 ? length : blockLength(vertical ? inside.width() : inside.height());
    const QColor colour =
        context.palette.color(enabled() ? QPalette::Active : QPalette::Disabled, QPalette::Highlight);
    for (int start = 0; start < filled; start += block + BlockGap) {
        const int end = std::min(start + block, m_scrolling == 1 ? filled : length);
        const QRect part = vertical ? QRect(inside.left(), inside.bottom() + 1 - end, inside.width(), end - start)
                                    : QRect(inside.left() + start, inside.top(), end - start, inside.height());
        painter.fillRect(part, colour);
    }
}

QString ProgressBar::accessibleText() const
{
    return QString::number(double(m_value));
}

void ProgressBar::copyDesign(const LiveControl& source)
{
    LiveControl::copyDesign(source);
    const auto& other = static_cast<const ProgressBar&>(source);
    m_minimum = other.m_minimum;
    m_maximum = other.m_maximum;
    m_value = other.m_value;
    m_orientation = other.m_orientation;
    m_scrolling = other.m_scrolling;
    m_borderStyle = other.m_borderStyle;
    m_appearance = other.m_appearance;
    changed(Look);
}

} // namespace zan::surface
