#pragma once

#include "display/DisplayControl.h"
#include "display/LimitMarker.h"

#include <QRect>

namespace zan::display {

/// A value bar on a surface: an upright bar filled in proportion to a value between Min and Max, in the colour of the
/// zone that the value lies in, with markers at two limits and, where asked for, a scale. It can flash outside the
/// limits. It knows nothing of loggers.
///
/// A property that shows in the picture raises 11 when it is set while the bar cannot be drawn: Max equal to Min, or
/// a scale of no ticks. The property has its new value then, and the picture ends where the drawing did.
class ValueBarControl : public DisplayControl
{
public:
    /// Length of a limit marker in pixels, and the room for it on both sides of the bar.
    static constexpr int MarkerSize = LimitMarker::Size;

    ValueBarControl();
    ~ValueBarControl() override;
    const binding::MemberTable& members() const override;

    /// Shares the font of the scale.
    void setFont(const Ref<FontObject>& font);
    /// Draws. Raises 11 when the bar cannot be drawn.
    void Refresh() override;

    /// Whether the flash timer runs.
    bool isFlashing() const noexcept { return m_flashTimer.isRunning(); }
    /// The inner picture with the bar itself, inside the border.
    const QRect& barRectangle() const noexcept { return m_bar; }

    void paint(surface::PaintContext& context, const QRect& rectangle) override;
    surface::AccessibleRole accessibleRole() const noexcept override { return surface::AccessibleRole::Level; }
    /// Value, range and zone, so that nobody depends on the colour.
    QString accessibleText() const override;
    std::optional<surface::AccessibleRange> accessibleRange() const override;
    void copyDesign(const LiveControl& source) override;

protected:
    Ref<FontObject> defaultFont(const Ref<FontObject>& ambientFont) const override;
    void resized() override;
    void flashTick() override;

private:
    enum class Zone { Low, Normal, High };
    void surfaceWritten(const binding::Written& write);
    void frameWritten(const binding::Written& write);
    void drawnWritten(const binding::Written& write);
    Zone zone() const noexcept;
    Colour zoneColour() const;
    bool hasTicks() const noexcept { return !m_showScale || m_tickCount != 0; }
    bool hasRange() const noexcept { return m_maximum != m_minimum; }
    double placeOf(double value) const noexcept;
    void layOut();
    void prepareDrawing();
    void paintScale(surface::PaintContext& context, const QRect& area) const;
    void paintMarkers(surface::PaintContext& context, const QRect& area, double limit) const;

    double m_value = 50;
    double m_highLimit = 75;
    double m_lowLimit = 25;
    double m_maximum = 100; // top of the bar
    double m_minimum = 0;   // bottom of the bar
    Colour m_highColour;
    Colour m_normalColour;
    Colour m_lowColour;
    QRect m_bar{MarkerSize, 0, 0, 0};
    std::int16_t m_tickCount = 10; // intervals of the scale
    bool m_flash = false;          // flashing outside the limits: half bright and bright in turn, a second each
    bool m_showScale = false;      // the bar makes room for the scale at the next change of size
};

} // namespace zan::display
