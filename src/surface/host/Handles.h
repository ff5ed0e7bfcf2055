#pragma once

#include "surface/Forward.h"

#include <cstdint>

namespace zan::surface {

/// The process-wide table of window handles: small numbers that stand for controls and surfaces where the classic
/// vocabulary asks for a handle. A number is never used twice; one whose owner has gone resolves to null.
class Handles
{
public:
    static std::int32_t allocate(LiveControl& control);
    static std::int32_t allocate(Surface& surface);
    static void release(std::int32_t handle) noexcept;
    static LiveControl* control(std::int32_t handle) noexcept;
    static Surface* surface(std::int32_t handle) noexcept;
    /// A number for something that is not looked up again.
    static std::int32_t next() noexcept;
};

} // namespace zan::surface
