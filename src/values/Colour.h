#pragma once

#include <QColor>

#include <cstdint>

class QPalette;

namespace zan::values {

/// A 32-bit colour: red in the low byte, then green, then blue; with the high bit set the low byte names a system
/// colour instead. Stored in documents as signed decimal text.
struct Colour
{
    std::int32_t code = 0;
    friend bool operator==(Colour, Colour) = default;
    bool isSystem() const noexcept { return code < 0; }
};

constexpr Colour rgb(int red, int green, int blue) noexcept
{
    return {std::int32_t((red & 0xff) | (green & 0xff) << 8 | (blue & 0xff) << 16)};
}

/// System colour of this index (0 to 24).
constexpr Colour systemColour(int index) noexcept
{
    return {std::int32_t(0x80000000u | std::uint32_t(index))};
}

inline constexpr Colour WindowBackground = systemColour(5);
inline constexpr Colour WindowText = systemColour(8);
inline constexpr Colour ButtonFace = systemColour(15);
inline constexpr Colour ButtonText = systemColour(18);

/// Colour to paint with. System colours come from the palette; an unknown system index gives black.
QColor toQColor(Colour colour, const QPalette& palette);
Colour fromQColor(const QColor& colour) noexcept;

} // namespace zan::values
