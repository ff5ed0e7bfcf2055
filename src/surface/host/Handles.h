#pragma once

#include "surface/Forward.h"

#include <cstdint>

class QWidget;

namespace zan::surface {

/// The process-wide table of window handles: small numbers that stand for controls and surfaces where the classic
/// vocabulary asks for a handle. A number is never used twice; one whose owner has gone resolves to null.
class Handles
{
public:
    static std::int32_t allocate(LiveControl& control);
    static std::int32_t allocate(Surface& surface);
    /// The number of a widget of a host's own, given when it is first asked for; it goes with the widget.
    static std::int32_t of(QWidget& widget);
    static void release(std::int32_t handle) noexcept;
    static LiveControl* control(std::int32_t handle) noexcept;
    static Surface* surface(std::int32_t handle) noexcept;
    /// The widget that a handle names: a host's own, or a surface; null for others.
    static QWidget* widget(std::int32_t handle) noexcept;
    /// A number for something that is not looked up again.
    static std::int32_t next() noexcept;
};

} // namespace zan::surface
