#pragma once

#include <cstdint>

namespace zan::surface::WindowOps {

/// Stops repainting of the surface that the handle names, until UnlockUpdates. One surface at a time: false when
/// another is locked or the handle names none.
bool LockUpdates(std::int32_t hWnd);
void UnlockUpdates();

/// Rectangle of a control or surface in pixels of the screen.
struct Bounds
{
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
};

/// COMPAT: Left is the window's own place on the screen, not reduced by the parent's; only Top is measured from the
/// parent. Callers depend on it. All 0 when the first handle names nothing.
Bounds GetWindowBounds(std::int32_t hWnd, std::int32_t parent);

} // namespace zan::surface::WindowOps
