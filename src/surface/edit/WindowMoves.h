#pragma once

#include "surface/Forward.h"
#include "surface/host/PointerLoop.h"
#include "values/Ref.h"

#include <QPointF>

#include <cstdint>
#include <optional>

namespace zan::surface {

/// Moves a window with the pointer until the button of the current press goes up: a control of a surface, or any
/// widget that has a handle. Esc puts it back. Places are whole pixels; what the pointer does not change stays exact.
/// Interrupted when nothing is pressed or the handle names nothing.
PointerEnd moveWindow(std::int32_t hWnd);

/// The same for a window's edges, a sum of HandleEdge values.
PointerEnd resizeWindow(std::int32_t hWnd, std::uint8_t edges);

/// Where a dragged control was let go.
struct Drop
{
    values::Ref<LiveControl> target; ///< null for the surface itself
    QPointF place;                   ///< pixels inside the target or the surface, as far as aligning moved it
};

/// Drags a picture of the control with the pointer until the button goes up. The control itself stays where it is;
/// what the drop does is the caller's. Nothing when it was let go outside the surface, or cancelled.
std::optional<Drop> dragControl(LiveControl& control);

} // namespace zan::surface
