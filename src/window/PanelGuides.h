#pragma once

#include "surface/edit/Alignment.h"
#include "values/Ref.h"

#include <QRect>

#include <cstdint>
#include <optional>

namespace zan::surface {
class LiveControl;
class Surface;
} // namespace zan::surface

namespace zan::window {

/// Help with aligning what is dragged on a panel: switched on by the host, or by Alt for as long as it is held. Edges,
/// centres and equal gaps pull, and are drawn over the panel.
class PanelGuides
{
public:
    explicit PanelGuides(surface::Surface& surface)
        : m_surface(surface)
    {}

    bool isOn() const noexcept { return m_isOn; }
    void setOn(bool on) noexcept { m_isOn = on; }

    /// A control is about to be dragged, from one press to its release.
    void begin();
    /// Where the control, which is proposed to lie there (pixels of the surface), lies best. `edges` says which of them
    /// follow the pointer; 0 moves it as a whole.
    QRect adjusted(const surface::LiveControl& control, const QRect& proposed, std::uint8_t edges, bool isAltHeld);
    /// In which directions the control is held by something as it lies at the end.
    struct Held
    {
        bool x = false;
        bool y = false;
    };
    Held end();

private:
    surface::Surface& m_surface;
    std::optional<surface::Alignment> m_alignment; // made when the first question of a drag comes
    Held m_held;
    bool m_isOn = false;
};

} // namespace zan::window
