#pragma once

#include "binding/Marshal.h"
#include "surface/host/LiveControl.h"

namespace zan::surface {

/// A figure on the surface. Windowless, and blind to the mouse: the surface gets its events.
class Shape : public LiveControl
{
public:
    Shape();
    Hosting hosting() const noexcept override { return Hosting::Windowless; }
    const binding::MemberTable& members() const override;

    void paint(PaintContext& context, const QRect& rectangle) override;
    bool hit(QPoint point) const override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::Shape; }

private:
    // Styles: 0 transparent, 1 solid, 2 dash, 3 dot, 4 dash-dot, 5 dash-dot-dot, 6 inside solid; a border wider than
    // one pixel is always solid.
    // Fills: 0 solid, 1 transparent, 2 horizontal lines, 3 vertical lines, 4 upward diagonal, 5 downward diagonal,
    // 6 cross, 7 diagonal cross.
    Colour m_borderColor = values::WindowText;
    Colour m_fillColor;
    Colour m_backColor = values::WindowBackground; // behind a pattern or a transparent fill, where BackStyle is 1
    std::int16_t m_borderWidth = 1;                // pixels
    binding::Small m_shape{0}; // 0 rectangle, 1 square, 2 oval, 3 circle, 4 rounded rectangle, 5 rounded square
    binding::Small m_borderStyle{1};
    binding::Small m_fillStyle{1};
    binding::Small m_backStyle{0}; // 0 transparent, 1 opaque
};

} // namespace zan::surface
