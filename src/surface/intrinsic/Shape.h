#pragma once

#include "surface/host/LiveControl.h"

namespace zan::surface {

/// A figure on the surface. Windowless, and blind to the mouse: the surface gets its events.
class Shape : public LiveControl
{
public:
    Shape();
    Hosting hosting() const noexcept override { return Hosting::Windowless; }
    const binding::MemberTable& members() const override;

    /// 0 rectangle, 1 square, 2 oval, 3 circle, 4 rounded rectangle, 5 rounded square. Raises 380 for others, as
    /// every choice below does.
    std::int16_t shape() const noexcept { return m_shape; }
    void setShape(std::int16_t shape);
    /// 0 transparent, 1 solid, 2 dash, 3 dot, 4 dash-dot, 5 dash-dot-dot, 6 inside solid.
    std::int16_t borderStyle() const noexcept { return m_borderStyle; }
    void setBorderStyle(std::int16_t style);
    Colour borderColor() const noexcept { return m_borderColor; }
    void setBorderColor(Colour colour);
    /// Pixels, 1 to 8192. A border wider than one is always solid.
    std::int16_t borderWidth() const noexcept { return m_borderWidth; }
    void setBorderWidth(std::int16_t width);
    /// 0 solid, 1 transparent, 2 horizontal lines, 3 vertical lines, 4 upward diagonal, 5 downward diagonal,
    /// 6 cross, 7 diagonal cross.
    std::int16_t fillStyle() const noexcept { return m_fillStyle; }
    void setFillStyle(std::int16_t style);
    Colour fillColor() const noexcept { return m_fillColor; }
    void setFillColor(Colour colour);
    /// 0 transparent, 1 opaque: BackColor shows behind a pattern or a transparent fill.
    std::int16_t backStyle() const noexcept { return m_backStyle; }
    void setBackStyle(std::int16_t style);
    Colour backColor() const noexcept { return m_backColor; }
    void setBackColor(Colour colour);

    void paint(PaintContext& context, const QRect& rectangle) override;
    bool hit(QPoint point) const override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::Shape; }
    void copyDesign(const LiveControl& source) override;

private:
    Colour m_borderColor = values::WindowText;
    Colour m_fillColor;
    Colour m_backColor = values::WindowBackground;
    std::int16_t m_borderWidth = 1;
    std::uint8_t m_shape = 0;
    std::uint8_t m_borderStyle = 1;
    std::uint8_t m_fillStyle = 1;
    std::uint8_t m_backStyle = 0;
};

} // namespace zan::surface
