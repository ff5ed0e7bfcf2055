#pragma once

#include "surface/edit/RectIndex.h"

#include <QLine>
#include <QList>
#include <QRect>

#include <array>
#include <cstdint>
#include <vector>

namespace zan::surface {

/// What a rectangle that is being moved or sized is nearly aligned with among others: their edges and centres, equal
/// gaps between neighbours, equal sides. What is less than a few pixels off is pulled there.
///
/// Made once for a drag, out of the rectangles as they lie then. Each question costs what lies in the rows and columns
/// of the rectangle asked about, however many others there are.
class Alignment
{
public:
    /// Pixels within which a line pulls.
    static constexpr int Reach = 5;

    explicit Alignment(std::vector<QRect> others);

    struct Result
    {
        QRect place;
        bool isAlignedX = false; ///< something holds the rectangle sideways
        bool isAlignedY = false;
        QList<QLine> guides;
    };
    /// For a rectangle that keeps its size.
    Result moved(const QRect& proposed) const;
    /// For one whose edges (a sum of HandleEdge) follow the pointer; the others stay.
    Result sized(const QRect& proposed, std::uint8_t edges) const;

private:
    /// One direction: the lines there are, by place, with the rectangles that they belong to. Centres count double
    /// pixels, so that none lies between two.
    struct Line
    {
        int place;
        std::uint32_t owner;
    };
    struct Axis
    {
        std::vector<Line> edges;
        std::vector<Line> centres;
    };
    /// A stretch of one direction: from its first to behind its last pixel.
    struct Span
    {
        int from;
        int to;
        int size() const { return to - from; }
    };
    class Pull;

    static Span spanOf(const QRect& rectangle, bool isX);
    std::vector<Span> neighbours(const QRect& rectangle, bool isX) const;
    void pullToLines(Pull& pull, const Span& span, bool isX, bool from, bool to) const;
    static void pullToGaps(Pull& pull, const Span& span, const std::vector<Span>& neighbours);
    void addGuides(QList<QLine>& guides, const QRect& place, bool isX) const;
    void addGapGuides(QList<QLine>& guides, const QRect& place, bool isX) const;

    std::vector<QRect> m_others;
    std::array<Axis, 2> m_axes; // across, down
    RectIndex m_index;
    QRect m_extent;
};

} // namespace zan::surface
