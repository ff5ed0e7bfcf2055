#pragma once

#include "values/Variant.h"

#include <vector>

namespace zan::values {

/// Frees the values of a container that goes away. Containers nest as deep as a script likes (an array in an array
/// in an array, a list of a million linked objects): the first levels are freed at once, deeper ones are queued and
/// freed in a loop, so that the native stack does not grow with the data.
void bury(std::vector<Variant>&& contents) noexcept;

} // namespace zan::values
