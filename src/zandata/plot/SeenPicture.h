#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace zan::zandata {

/// What can be seen of a graph's curves and axes, in whole pixels: pictures of which these are equal look alike, and need
/// not be drawn again for a record that falls into a pixel which stays as it is.
struct SeenPicture
{
    std::vector<std::int64_t> numbers;
    std::vector<QString> texts;
    bool operator==(const SeenPicture&) const = default;
};

} // namespace zan::zandata
