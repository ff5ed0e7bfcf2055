#pragma once

#include "binding/Marshal.h"
#include "surface/host/LiveControl.h"

namespace zan::surface {

/// A bar that shows a value between two limits. It has neither colours nor a font of its own.
class ProgressBar : public LiveControl
{
public:
    ProgressBar();
    Hosting hosting() const noexcept override { return Hosting::Painted; }
    const binding::MemberTable& members() const override;

    float minimum() const noexcept { return m_minimum; }
    /// Raises 380 unless below Max. A value that would lie outside moves to the limit.
    void setMinimum(float minimum);
    float maximum() const noexcept { return m_maximum; }
    /// Raises 380 unless above Min.
    void setMaximum(float maximum);
    float value() const noexcept { return m_value; }
    /// Raises 380 outside Min to Max; the bar then keeps its value.
    void setValue(float value);

    /// The part of the bar that is filled, 0 to 1.
    double fraction() const noexcept;
    void paint(PaintContext& context, const QRect& rectangle) override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::Progress; }
    QString accessibleText() const override;
    std::optional<AccessibleRange> accessibleRange() const override;

private:
    float m_minimum = 0;
    float m_maximum = 100;
    float m_value = 0;
    binding::Small m_orientation{0}; // 0 horizontal, 1 vertical
    binding::Small m_scrolling{0};   // 0 in blocks, 1 smooth
    binding::Small m_borderStyle{0}; // 0 none, 1 single line
    binding::Small m_appearance{1};  // 0 flat, 1 with depth
};

} // namespace zan::surface
