#include "surface/edit/Alignment.h"

#include "surface/edit/HandleTable.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <optional>

namespace zan::surface {

namespace {

constexpr int Nowhere = std::numeric_limits<int>::max();

int centreOf(int from, int to)
{
    return from + to;
}

} // namespace

/// The shortest way to something that pulls; of two as short the one that was offered first.
class Alignment::Pull
{
public:
    void offer(int by)
    {
        if (std::abs(by) <= Reach && (!m_by || std::abs(by) < std::abs(*m_by)))
            m_by = by;
    }
    bool pulls() const { return m_by.has_value(); }
    int by() const { return m_by.value_or(0); }

private:
    std::optional<int> m_by;
};

Alignment::Alignment(std::vector<QRect> others)
    : m_others(std::move(others))
{
    for (std::uint32_t owner = 0; owner < m_others.size(); ++owner) {
        const QRect& other = m_others[owner];
        m_index.insert(owner, other);
        m_extent |= other;
        for (const bool isX : {true, false}) {
            const Span span = spanOf(other, isX);
            Axis& axis = m_axes[isX ? 0 : 1];
            axis.edges.push_back({span.from, owner});
            axis.edges.push_back({span.to, owner});
            axis.centres.push_back({centreOf(span.from, span.to), owner});
        }
    }
    const auto byPlace = [](const Line& a, const Line& b) { return a.place < b.place; };
    for (Axis& axis : m_axes) {
        std::sort(axis.edges.begin(), axis.edges.end(), byPlace);
        std::sort(axis.centres.begin(), axis.centres.end(), byPlace);
    }
}

Alignment::Span Alignment::spanOf(const QRect& rectangle, bool isX)
{
    return isX ? Span{rectangle.x(), rectangle.x() + rectangle.width()}
               : Span{rectangle.y(), rectangle.y() + rectangle.height()};
}

/// The stretches of those that lie beside the rectangle in this direction, in their order.
std::vector<Alignment::Span> Alignment::neighbours(const QRect& rectangle, bool isX) const
{
    const QRect band = isX ? QRect(m_extent.x(), rectangle.y(), m_extent.width(), rectangle.height())
                           : QRect(rectangle.x(), m_extent.y(), rectangle.width(), m_extent.height());
    std::vector<Span> found;
    if (band.isEmpty())
        return found;
    m_index.query(band, [&](std::uint32_t owner) {
        if (m_others[owner].intersects(band))
            found.push_back(spanOf(m_others[owner], isX));
    });
    std::sort(found.begin(), found.end(), [](const Span& a, const Span& b) { return a.from < b.from; });
    return found;
}

void Alignment::pullToLines(Pull& pull, const Span& span, bool isX, bool from, bool to) const
{
    const Axis& axis = m_axes[isX ? 0 : 1];
    const auto nearest = [](const std::vector<Line>& lines, int place) {
        const auto above = std::lower_bound(lines.begin(), lines.end(), place,
                                            [](const Line& line, int value) { return line.place < value; });
        int best = Nowhere;
        if (above != lines.end())
            best = above->place - place;
        if (above != lines.begin() && (best == Nowhere || place - std::prev(above)->place < best))
            best = std::prev(above)->place - place;
        return best;
    };
    const auto offer = [&](int by) {
        if (by != Nowhere)
            pull.offer(by);
    };
    if (from)
        offer(nearest(axis.edges, span.from));
    if (to)
        offer(nearest(axis.edges, span.to));
    if (from && to) {
        // Centres count double pixels: half a pixel off is as near as it gets.
        if (const int by = nearest(axis.centres, centreOf(span.from, span.to)); by != Nowhere && by % 2 == 0)
            pull.offer(by / 2);
    }
}

/// The gap to the next one may be like the gap behind that, on either side, and like the one on the other side.
void Alignment::pullToGaps(Pull& pull, const Span& span, const std::vector<Span>& neighbours)
{
    std::optional<Span> before;
    std::optional<Span> after;
    for (const Span& other : neighbours) {
        if (other.to <= span.from + Reach && (!before || other.to > before->to))
            before = other;
        if (other.from >= span.to - Reach && (!after || other.from < after->from))
            after = other;
    }
    for (const Span& other : neighbours) {
        if (before && other.to < before->from)
            pull.offer(before->to + (before->from - other.to) - span.from);
        if (after && other.from > after->to)
            pull.offer(after->from - (other.from - after->to) - span.to);
    }
    if (before && after && (after->from - before->to - span.size()) % 2 == 0)
        pull.offer(before->to + (after->from - before->to - span.size()) / 2 - span.from);
}

Alignment::Result Alignment::moved(const QRect& proposed) const
{
    Result result;
    result.place = proposed;
    std::array<Pull, 2> pulls;
    for (const bool isX : {true, false}) {
        Pull& pull = pulls[isX ? 0 : 1];
        const Span span = spanOf(proposed, isX);
        pullToLines(pull, span, isX, true, true);
        pullToGaps(pull, span, neighbours(proposed, isX));
    }
    result.isAlignedX = pulls[0].pulls();
    result.isAlignedY = pulls[1].pulls();
    result.place.translate(pulls[0].by(), pulls[1].by());
    for (const bool isX : {true, false}) {
        if (pulls[isX ? 0 : 1].pulls()) {
            addGuides(result.guides, result.place, isX);
            addGapGuides(result.guides, result.place, isX);
        }
    }
    return result;
}

Alignment::Result Alignment::sized(const QRect& proposed, std::uint8_t edges) const
{
    Result result;
    result.place = proposed;
    for (const bool isX : {true, false}) {
        const bool from = edges & (isX ? LeftEdge : TopEdge);
        const bool to = edges & (isX ? RightEdge : BottomEdge);
        if (!from && !to)
            continue;
        const Span span = spanOf(proposed, isX);
        Pull pull;
        pullToLines(pull, span, isX, from, to);
        // A side as long as that of a neighbour.
        for (const Span& other : neighbours(proposed, isX))
            pull.offer(to ? other.size() - span.size() : span.size() - other.size());
        if (!pull.pulls() || span.size() + (to ? pull.by() : -pull.by()) < 0)
            continue;
        if (isX)
            result.place.adjust(from ? pull.by() : 0, 0, to ? pull.by() : 0, 0);
        else
            result.place.adjust(0, from ? pull.by() : 0, 0, to ? pull.by() : 0);
        (isX ? result.isAlignedX : result.isAlignedY) = true;
        addGuides(result.guides, result.place, isX);
    }
    return result;
}

/// A line along each edge and centre that the rectangle has in common with others, as long as all of them together.
void Alignment::addGuides(QList<QLine>& guides, const QRect& place, bool isX) const
{
    const Axis& axis = m_axes[isX ? 0 : 1];
    const Span span = spanOf(place, isX);
    const auto add = [&](const std::vector<Line>& lines, int value, int drawnAt) {
        const auto [first, last] = std::equal_range(lines.begin(), lines.end(), Line{value, 0},
                                                    [](const Line& a, const Line& b) { return a.place < b.place; });
        if (first == last)
            return;
        Span along = spanOf(place, !isX);
        for (auto line = first; line != last; ++line) {
            const Span other = spanOf(m_others[line->owner], !isX);
            along = {std::min(along.from, other.from), std::max(along.to, other.to)};
        }
        guides << (isX ? QLine(drawnAt, along.from, drawnAt, along.to - 1)
                       : QLine(along.from, drawnAt, along.to - 1, drawnAt));
    };
    // The far edge is drawn on the last pixel inside.
    add(axis.edges, span.from, span.from);
    add(axis.edges, span.to, span.to - 1);
    add(axis.centres, centreOf(span.from, span.to), centreOf(span.from, span.to) / 2);
}

/// A line in each of the gaps around the rectangle that are as wide as another one.
void Alignment::addGapGuides(QList<QLine>& guides, const QRect& place, bool isX) const
{
    std::vector<Span> all = neighbours(place, isX);
    const Span span = spanOf(place, isX);
    const Span across = spanOf(place, !isX);
    const int middle = (across.from + across.to) / 2;
    const auto draw = [&](int from, int to) {
        guides << (isX ? QLine(from, middle, to - 1, middle) : QLine(middle, from, middle, to - 1));
    };
    std::optional<Span> before;
    std::optional<Span> after;
    for (const Span& other : all) {
        if (other.to <= span.from && (!before || other.to > before->to))
            before = other;
        if (other.from >= span.to && (!after || other.from < after->from))
            after = other;
    }
    const int gapBefore = before ? span.from - before->to : 0;
    const int gapAfter = after ? after->from - span.to : 0;
    if (gapBefore > 0 && gapBefore == gapAfter) {
        draw(before->to, span.from);
        draw(span.to, after->from);
    }
    for (const Span& other : all) {
        if (gapBefore > 0 && before->from - other.to == gapBefore) {
            draw(other.to, before->from);
            draw(before->to, span.from);
        }
        if (gapAfter > 0 && other.from - after->to == gapAfter) {
            draw(span.to, after->from);
            draw(after->to, other.from);
        }
    }
}

} // namespace zan::surface
