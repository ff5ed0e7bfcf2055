#include "surface/intrinsic/ProgressBar.h"

#include "binding/MemberTable.h"
#include "surface/host/Frames.h"
#include "surface/host/VisiblePart.h"

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
    using binding::field;
    using binding::oneOf;
    using binding::property;
    using P = ProgressBar;
    return binding::table([] {
        return binding::MemberTable(
            "ProgressBar", &baseMembers(),
            {
                property<&P::value, &P::setValue>("Value").asDefault().keptIn<&P::m_value>(0),
                property<&P::minimum, &P::setMinimum>("Min").keptIn<&P::m_minimum>(0),
                property<&P::maximum, &P::setMaximum>("Max").keptIn<&P::m_maximum>(100),
                field<&P::m_orientation, &P::look>("Orientation", 0, oneOf(1)),
                field<&P::m_scrolling, &P::look>("Scrolling", 0, oneOf(1)),
                field<&P::m_borderStyle, &P::look>("BorderStyle", 0, oneOf(1)),
                field<&P::m_appearance, &P::look>("Appearance", 1, oneOf(1)),
            });
    });
}

void ProgressBar::setMinimum(float minimum)
{
    if (!(minimum < m_maximum))
        values::raise(ErrorNumber::InvalidPropertyValue);
    if (m_minimum == minimum)
        return;
    m_minimum = minimum;
    m_value = std::max(m_value, minimum);
    changed(Look);
}

void ProgressBar::setMaximum(float maximum)
{
    if (!(maximum > m_minimum))
        values::raise(ErrorNumber::InvalidPropertyValue);
    if (m_maximum == maximum)
        return;
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
    // Blocks that nobody sees are left out, before and behind what is visible.
    const QRect seen = inside & visiblePart(painter);
    const int from = vertical ? inside.bottom() - seen.bottom() : seen.left() - inside.left();
    const int to = seen.isEmpty() ? 0 : from + (vertical ? seen.height() : seen.width());
    const int step = block + BlockGap;
    for (int start = std::max(from, 0) / step * step; start < std::min(filled, to); start += step) {
        const int end = std::min(start + block, m_scrolling == 1 ? filled : length);
        const QRect part = vertical ? QRect(inside.left(), inside.bottom() + 1 - end, inside.width(), end - start)
                                    : QRect(inside.left() + start, inside.top(), end - start, inside.height());
        painter.fillRect(part, colour);
    }
}

std::optional<AccessibleRange> ProgressBar::accessibleRange() const
{
    return AccessibleRange{double(m_value), double(m_minimum), double(m_maximum)};
}

QString ProgressBar::accessibleText() const
{
    return QString::number(double(m_value));
}

} // namespace zan::surface
