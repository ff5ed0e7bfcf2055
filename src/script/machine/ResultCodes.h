#pragma once

#include <cstdint>

namespace zan::script {

/// The number that Err shows for one that a script or a component raised: a result code of the component model that
/// stands for an error of the language becomes the number of that error; any other number stays as it is.
std::int32_t errorNumberOf(std::int32_t raised) noexcept;

} // namespace zan::script
