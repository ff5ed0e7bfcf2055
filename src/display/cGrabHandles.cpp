#include "display/cGrabHandles.h"

namespace zan::display {

cGrabHandles::cGrabHandles(std::int32_t parent, std::int32_t target, bool show, values::Colour colour, int size)
    : m_parent(parent)
    , m_target(target)
    , m_colour(colour)
    , m_size(size == -1 ? DefaultSize : size)
    , m_show(show)
{}

void cGrabHandles::setShowHandles(bool show)
{
    if (m_show == show)
        return;
    m_show = show;
    if (shownChanged)
        shownChanged();
}

std::array<QRect, cGrabHandles::HandleCount> cGrabHandles::rectangles(const QRect& target) const
{
    const int left = target.x();
    const int top = target.y();
    const int right = left + target.width();
    const int bottom = top + target.height();
    // COMPAT: the middle handles are centred with a fixed 2, whatever the handle size.
    const int midX = left + target.width() / 2 - 2;
    const int midY = top + target.height() / 2 - 2;
    const bool wide = 1.5 * m_size < target.width();
    const bool high = 1.5 * m_size < target.height();
    const auto at = [this](int x, int y) { return QRect(x, y, m_size, m_size); };
    return {
        at(left - m_size, top - m_size),
        wide ? at(midX, top - m_size) : QRect(),
        at(right, top - m_size),
        high ? at(right, midY) : QRect(),
        at(right, bottom),
        wide ? at(midX, bottom) : QRect(),
        at(left - m_size, bottom),
        high ? at(left - m_size, midY) : QRect(),
    };
}

} // namespace zan::display
