#pragma once

#include "values/Colour.h"

#include <QRect>

#include <array>
#include <cstdint>
#include <functional>

namespace zan::display {

/// The eight resize handles of one placed control: whether they are shown, in which colour, and where they lie
/// around the target. Whoever draws the panel's editing layer asks for the rectangles and reports the end of a
/// resize. Window handles are the control host's; a target of 0 is a windowless control.
class cGrabHandles
{
public:
    static constexpr int DefaultSize = 5;
    static constexpr int HandleCount = 8;

    /// A size of -1 means the default of 5 pixels.
    cGrabHandles(std::int32_t parent, std::int32_t target, bool show, values::Colour colour, int size);

    bool ShowHandles() const noexcept { return m_show; }
    void setShowHandles(bool show);
    std::int32_t parent() const noexcept { return m_parent; }
    std::int32_t target() const noexcept { return m_target; }
    values::Colour colour() const noexcept { return m_colour; }

    /// Rectangles of the handles 0 to 7 (top left, top, top right, right, bottom right, bottom, bottom left, left)
    /// around a target, all in pixels of the same system. A handle for which the side is too short is null: 1.5
    /// times the handle size must be less than the side.
    std::array<QRect, HandleCount> rectangles(const QRect& target) const;

    /// Called when ShowHandles has changed.
    std::function<void()> shownChanged;
    /// Called when a resize by a handle has ended; may come more than once for one resize.
    std::function<void()> EndResize;

private:
    std::int32_t m_parent;
    std::int32_t m_target;
    values::Colour m_colour;
    int m_size;
    bool m_show;
};

} // namespace zan::display
