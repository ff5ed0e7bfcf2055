#include "display/ScaleColour.h"

#include <algorithm>
#include <cmath>

namespace zan::display {

namespace {

/// A channel's number at this percentage, limited to what a channel holds. Rounds half to even, as the platform does.
int scaled(double channel, int percent)
{
    return int(std::clamp(std::nearbyint(channel * (percent / 100.0)), 0.0, 255.0));
}

} // namespace

values::Colour ScaleColour(values::Colour colour, int percent)
{
    const double red = colour.code & 0xff;
    const double green = std::nearbyint((colour.code & ~0xff) / 255.0);
    const double blue = std::nearbyint((colour.code & 0xff0000) / -256.0);
    return values::rgb(scaled(red, percent), scaled(green, percent), scaled(blue, percent));
}

} // namespace zan::display
