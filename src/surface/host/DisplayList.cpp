#include "surface/host/DisplayList.h"

#include "surface/host/LiveControl.h"

#include <algorithm>

namespace zan::surface {

namespace {

constexpr int CellSide = 64;          // pixels
constexpr int MostCells = 64;         // in a row and in a column; what lies beyond counts to the last cell
constexpr int WideCells = 256;        // a control over more cells than this is kept apart
constexpr std::size_t SmallList = 64; // walked as a whole: a grid would not pay

} // namespace

DisplayList::Layer& DisplayList::layerOf(const LiveControl& control)
{
    return m_layers[control.hosting() == LiveControl::Hosting::Windowless ? 0 : 1];
}

bool DisplayList::isAbove(const LiveControl* a, const LiveControl* b)
{
    const bool aUpper = a->hosting() != LiveControl::Hosting::Windowless;
    const bool bUpper = b->hosting() != LiveControl::Hosting::Windowless;
    return aUpper != bUpper ? aUpper : a->m_rank > b->m_rank;
}

void DisplayList::add(LiveControl& control)
{
    Layer& layer = layerOf(control);
    control.m_slot = std::uint32_t(layer.size());
    layer.push_back(&control);
    ++m_count;
    if (m_columns == 0)
        return;
    if (m_count > 2 * m_countAtBuild)
        dropGrid(); // its cells no longer fit the panel
    else
        enter(control, control.bounds());
}

void DisplayList::remove(LiveControl& control)
{
    leave(control, control.bounds());
    Layer& layer = layerOf(control);
    std::size_t& holes = m_holes[&layer - m_layers];
    layer[control.m_slot] = nullptr;
    ++holes;
    --m_count;
    if (holes > 32 && holes > layer.size() / 2) {
        std::erase(layer, nullptr);
        holes = 0;
        for (std::size_t slot = 0; slot < layer.size(); ++slot)
            layer[slot]->m_slot = std::uint32_t(slot);
    }
}

void DisplayList::sort()
{
    if (m_sorted)
        return;
    for (std::size_t place = 0; place < 2; ++place) {
        Layer& layer = m_layers[place];
        std::erase(layer, nullptr);
        m_holes[place] = 0;
        std::sort(layer.begin(), layer.end(),
                  [](const LiveControl* a, const LiveControl* b) { return a->m_rank < b->m_rank; });
        for (std::size_t slot = 0; slot < layer.size(); ++slot)
            layer[slot]->m_slot = std::uint32_t(slot);
    }
    m_sorted = true;
}

void DisplayList::moved(LiveControl& control, const QRect& from)
{
    if (m_columns == 0)
        return;
    leave(control, from);
    enter(control, control.bounds());
}

void DisplayList::buildGrid()
{
    if (m_columns != 0)
        return;
    QRect extent(0, 0, 1, 1);
    forEach([&](const LiveControl& control) { extent |= control.bounds(); });
    m_columns = std::clamp(extent.right() / CellSide + 1, 1, MostCells);
    m_rows = std::clamp(extent.bottom() / CellSide + 1, 1, MostCells);
    m_cells.assign(std::size_t(m_columns) * std::size_t(m_rows), {});
    m_countAtBuild = std::max(m_count, SmallList);
    forEach([&](LiveControl& control) { enter(control, control.bounds()); });
}

void DisplayList::dropGrid()
{
    forEach([](LiveControl& control) { control.m_indexed = false; });
    m_cells.clear();
    m_wide.clear();
    m_columns = m_rows = 0;
}

/// The cells, as columns and rows, that a rectangle touches. What lies outside the grid counts to its border cells.
QRect DisplayList::cellsOf(const QRect& bounds) const
{
    const auto cell = [](int pixel, int cells) { return std::clamp(pixel / CellSide, 0, cells - 1); };
    return {QPoint(cell(bounds.left(), m_columns), cell(bounds.top(), m_rows)),
            QPoint(cell(bounds.right(), m_columns), cell(bounds.bottom(), m_rows))};
}

void DisplayList::enter(LiveControl& control, const QRect& bounds)
{
    if (control.m_indexed || bounds.isEmpty())
        return;
    control.m_indexed = true;
    const QRect cells = cellsOf(bounds);
    if (cells.width() * cells.height() > WideCells) {
        m_wide.push_back(&control);
        return;
    }
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column)
            m_cells[std::size_t(row * m_columns + column)].push_back(&control);
    }
}

void DisplayList::leave(LiveControl& control, const QRect& bounds)
{
    if (!control.m_indexed)
        return;
    control.m_indexed = false;
    const auto takeFrom = [&](Cell& cell) {
        const auto found = std::find(cell.begin(), cell.end(), &control);
        if (found != cell.end()) {
            *found = cell.back();
            cell.pop_back();
        }
    };
    const QRect cells = cellsOf(bounds);
    if (cells.width() * cells.height() > WideCells) {
        takeFrom(m_wide);
        return;
    }
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column)
            takeFrom(m_cells[std::size_t(row * m_columns + column)]);
    }
}

/// Calls for each visible control that touches the rectangle; more than once for one that lies in several cells
/// is prevented by the stamp of the running query.
template <class Call>
void DisplayList::query(const QRect& rectangle, Call call)
{
    const auto visit = [&](LiveControl* control) {
        if (control->m_stamp == m_stamp || !control->m_visible || !control->bounds().intersects(rectangle))
            return;
        control->m_stamp = m_stamp;
        call(control);
    };
    const QRect cells = cellsOf(rectangle);
    for (LiveControl* control : m_wide)
        visit(control);
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column) {
            for (LiveControl* control : m_cells[std::size_t(row * m_columns + column)])
                visit(control);
        }
    }
}

void DisplayList::collect(const QRegion& region, std::vector<LiveControl*>& found)
{
    const QRect outline = region.boundingRect();
    const bool simple = region.rectCount() == 1;
    const auto walkAll = [&] {
        forEach([&](LiveControl& control) {
            if (control.m_visible && !control.m_hosted && control.bounds().intersects(outline) &&
                (simple || region.intersects(control.bounds())))
                found.push_back(&control);
        });
    };
    if (m_count <= SmallList) {
        walkAll();
        return;
    }
    buildGrid();
    const QRect cells = cellsOf(outline);
    if (simple && cells.width() * cells.height() * 2 > m_columns * m_rows) {
        walkAll();
        return;
    }
    ++m_stamp;
    for (const QRect& part : region) {
        query(part, [&](LiveControl* control) {
            if (!control->m_hosted)
                found.push_back(control);
        });
    }
    std::sort(found.begin(), found.end(), [](const LiveControl* a, const LiveControl* b) { return isAbove(b, a); });
}

void DisplayList::collectUpper(const QRect& rectangle, std::vector<LiveControl*>& found)
{
    if (upperCount() == 0)
        return;
    if (upperCount() <= SmallList) {
        for (LiveControl* control : m_layers[1]) {
            if (control && control->m_visible && control->bounds().intersects(rectangle))
                found.push_back(control);
        }
        return;
    }
    buildGrid();
    ++m_stamp;
    query(rectangle, [&](LiveControl* control) {
        if (control->hosting() != LiveControl::Hosting::Windowless)
            found.push_back(control);
    });
}

LiveControl* DisplayList::topAt(QPoint point)
{
    LiveControl* top = nullptr;
    const auto consider = [&](LiveControl* control) {
        if (!control->m_hosted && control->m_enabled && control->bounds().contains(point) && control->hit(point) &&
            (!top || isAbove(control, top)))
            top = control;
    };
    if (m_count <= SmallList) {
        forEach([&](LiveControl& control) {
            if (control.m_visible)
                consider(&control);
        });
        return top;
    }
    buildGrid();
    ++m_stamp;
    query(QRect(point, QSize(1, 1)), consider);
    return top;
}

} // namespace zan::surface
