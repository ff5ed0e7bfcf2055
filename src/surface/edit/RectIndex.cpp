#include "surface/edit/RectIndex.h"

#include <algorithm>
#include <new>

namespace zan::surface {

QRect RectIndex::cellsOf(const QRect& rectangle)
{
    return {QPoint(rectangle.left() >> CellShift, rectangle.top() >> CellShift),
            QPoint(rectangle.right() >> CellShift, rectangle.bottom() >> CellShift)};
}

bool RectIndex::isWide(const QRect& cells)
{
    return std::int64_t(cells.width()) * cells.height() > MostCells;
}

void RectIndex::insert(std::uint32_t number, const QRect& rectangle)
{
    if (m_seen.size() <= number)
        m_seen.resize(number + 1);
    const QRect cells = cellsOf(rectangle);
    if (isWide(cells)) {
        m_wide.push_back(number);
        return;
    }
    try {
        for (int row = cells.top(); row <= cells.bottom(); ++row) {
            for (int column = cells.left(); column <= cells.right(); ++column)
                m_cells[keyOf(column, row)].push_back(number);
        }
    } catch (const std::bad_alloc&) {
        remove(number, rectangle); // it lies in all of its cells or in none
        throw;
    }
}

void RectIndex::remove(std::uint32_t number, const QRect& rectangle)
{
    const QRect cells = cellsOf(rectangle);
    if (isWide(cells)) {
        std::erase(m_wide, number);
        return;
    }
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column) {
            const auto cell = m_cells.find(keyOf(column, row));
            if (cell == m_cells.end())
                continue;
            std::erase(*cell, number);
            if (cell->empty())
                m_cells.erase(cell);
        }
    }
}

} // namespace zan::surface
