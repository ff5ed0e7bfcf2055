#pragma once

#include "surface/Forward.h"

#include <QPoint>
#include <QRect>
#include <QRegion>

#include <cstdint>
#include <vector>

namespace zan::surface {

/// The painted controls of a surface in their stacking order, with a grid over their places so that painting a
/// small region and finding what is under the mouse cost little however many there are.
///
/// Two layers: the windowless controls, and above them the painted ones that have a handle. The list holds plain
/// pointers; a control is taken out before it goes.
class DisplayList
{
public:
    /// A new control in its layer, with its stacking rank set.
    void add(LiveControl& control);
    void remove(LiveControl& control);
    /// The stacking rank of a control has changed.
    void restacked() noexcept { m_sorted = false; }
    /// The control's bounds have changed.
    void moved(LiveControl& control, const QRect& from);

    std::size_t count() const noexcept { return m_count; }
    /// How many of the upper layer there are, shown or not.
    std::size_t upperCount() const noexcept { return m_layers[1].size() - m_holes[1]; }

    /// The visible controls that the surface itself draws and that touch the region, back to front.
    void collect(const QRegion& region, std::vector<LiveControl*>& found);
    /// The visible controls of the upper layer that touch the rectangle, hosted ones included, in no order.
    void collectUpper(const QRect& rectangle, std::vector<LiveControl*>& found);
    /// The topmost visible control drawn by the surface that is hit at this point and enabled, or null.
    LiveControl* topAt(QPoint point);
    /// Every control, back to front.
    template <class Call>
    void forEach(Call call)
    {
        sort();
        for (const auto& layer : m_layers) {
            for (LiveControl* control : layer) {
                if (control)
                    call(*control);
            }
        }
    }

private:
    using Cell = std::vector<LiveControl*>;
    using Layer = std::vector<LiveControl*>;

    Layer& layerOf(const LiveControl& control);
    void sort();
    void buildGrid();
    void dropGrid();
    QRect cellsOf(const QRect& bounds) const;
    void enter(LiveControl& control, const QRect& bounds);
    void leave(LiveControl& control, const QRect& bounds);
    template <class Call>
    void query(const QRect& rectangle, Call call);
    static bool isAbove(const LiveControl* a, const LiveControl* b);

    Layer m_layers[2]; // holes are null
    std::size_t m_holes[2]{};
    std::size_t m_count = 0;
    bool m_sorted = true;

    std::vector<Cell> m_cells;
    std::vector<LiveControl*> m_wide; // too large for cells to be worth it
    int m_columns = 0;
    int m_rows = 0;
    std::size_t m_countAtBuild = 0;
    std::uint32_t m_stamp = 0;
};

} // namespace zan::surface
