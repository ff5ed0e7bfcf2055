#pragma once

#include <QRect>

#include <array>
#include <cstdint>

namespace zan::surface {

/// The edges of a rectangle that a resize moves.
enum HandleEdge : std::uint8_t { LeftEdge = 1, TopEdge = 2, RightEdge = 4, BottomEdge = 8 };

/// One of the eight handles around a target.
struct HandleRow
{
    std::uint8_t edges;   ///< what it moves
    std::int16_t cursor;  ///< number of the system's cursor over it
    std::uint8_t hitCode; ///< number of that edge or corner in the system's sizing
};

/// From the top left corner clockwise.
inline constexpr std::array<HandleRow, 8> handleTable{{
    {LeftEdge | TopEdge, 32642, 13},
    {TopEdge, 32645, 12},
    {RightEdge | TopEdge, 32643, 14},
    {RightEdge, 32644, 11},
    {RightEdge | BottomEdge, 32642, 17},
    {BottomEdge, 32645, 15},
    {LeftEdge | BottomEdge, 32643, 16},
    {LeftEdge, 32644, 10},
}};

/// Places of the handles around a target, in pixels of one system. Handles in the middle of a side are null where
/// the side is too short: 1.5 times the handle size must be less than the side.
std::array<QRect, 8> handleRectangles(const QRect& target, int size);

/// A rectangle whose edges follow the pointer: by so many pixels from where it started. No side gets negative, and
/// the edge on the other side stays where it is.
QRect resized(const QRect& start, std::uint8_t edges, QPoint by);

} // namespace zan::surface
