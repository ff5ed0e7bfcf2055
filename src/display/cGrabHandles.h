#pragma once

#include "surface/edit/EditLayer.h"
#include "values/Colour.h"

#include <QRect>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>

namespace zan::display {

/// The eight resize handles of one window: a press on one of them sizes that window from there with the pointer. The
/// handles keep in place around the target, and the end of a resize is told.
///
/// Parent and target are window handles (surface::Handles): a surface and a control on it, or any widget and one
/// inside it. A target of 0 is a windowless control; it has no handles. Each target follows one owner, the first.
class cGrabHandles final : private surface::HandleFrame
{
public:
    static constexpr int DefaultSize = 5;
    static constexpr int HandleCount = 8;

    cGrabHandles() = default;
    /// Initialised at once.
    cGrabHandles(std::int32_t parent, std::int32_t target, bool show, values::Colour colour, int size);
    ~cGrabHandles() override = default;

    /// Makes the handles and has them follow the target. A size of -1 means the default of 5 pixels.
    void InitializeGrabHandles(std::int32_t parent, std::int32_t target, bool show, values::Colour colour,
                               int size = -1);
    /// Lets go of the target followed so far and follows this one, unless another owner follows it already.
    void SubClassTarget(std::int32_t target);

    bool ShowHandles() const noexcept { return m_show; }
    /// Nothing, not even a repaint, when it is so already.
    void setShowHandles(bool show);

    std::int32_t parent() const noexcept { return m_parent; }
    /// The window that is followed; 0 for none.
    std::int32_t target() const noexcept { return m_target; }
    values::Colour colour() const noexcept { return m_colour; }
    /// Side of a handle in pixels.
    int size() const noexcept { return m_size; }

    /// Rectangles of the handles 0 to 7 (clockwise from the top left) around a target, in pixels of one system; null
    /// for a handle that is hidden because the side is too short for it.
    std::array<QRect, HandleCount> rectangles(const QRect& target) const;

    /// The target has another size, with the handles in their new places.
    std::function<void()> TargetReSized;
    /// A resize by a handle has ended, or the left button went up over the target; may come more than once for one
    /// resize.
    std::function<void()> EndResize;

private:
    void handlePressed(std::size_t index) override;
    void targetMoved(bool sized) override;
    void targetReleased() override;

    std::int32_t m_parent = 0;
    std::int32_t m_target = 0;  ///< followed
    std::int32_t m_handled = 0; ///< the handles lie around this one
    values::Colour m_colour;
    int m_size = DefaultSize;
    bool m_show = false;
    std::shared_ptr<char> m_life = std::make_shared<char>(); ///< whoever calls out looks whether it is still there
};

} // namespace zan::display
