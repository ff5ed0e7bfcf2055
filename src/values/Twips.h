#pragma once

#include <cmath>

namespace zan::values {

/// Twips in one logical pixel: 1440 to the inch at 96 logical pixels. Device scaling is the toolkit's business.
inline constexpr double TwipsPerPixel = 15.0;

/// Nearest pixel of a measure in twips. Far outside any screen it is clamped to +-16,000,000 pixels; NaN is 0.
inline int twipsToPixels(double twips) noexcept
{
    constexpr double Limit = 16'000'000.0;
    const double pixels = twips / TwipsPerPixel + 0.5;
    if (!(pixels > -Limit))
        return std::isnan(pixels) ? 0 : -int(Limit);
    if (!(pixels < Limit))
        return int(Limit);
    const int whole = int(pixels); // towards zero: cheaper by far than a call of floor, of which a load makes many
    return whole - int(double(whole) > pixels);
}

inline float pixelsToTwips(double pixels) noexcept
{
    return float(pixels * TwipsPerPixel);
}

} // namespace zan::values
