#pragma once

#include "values/RuntimeError.h"

#include <cstdint>

namespace zan::surface {

/// The value of a property that is one of a few numbers from 0; raises 380 for others.
inline std::uint8_t choice(std::int16_t value, std::int16_t highest)
{
    if (value < 0 || value > highest)
        values::raise(values::ErrorNumber::InvalidPropertyValue);
    return std::uint8_t(value);
}

} // namespace zan::surface
