#pragma once

#include <QHash>
#include <QRect>

#include <cstdint>
#include <vector>

namespace zan::surface {

/// Rectangles by number, found by place: a grid of cells that come into being where something lies. Adding, removing
/// and asking cost what they touch, however many there are.
class RectIndex
{
public:
    void insert(std::uint32_t number, const QRect& rectangle);
    void remove(std::uint32_t number, const QRect& rectangle);
    /// Calls once for each number whose rectangle may touch this one; nothing may be changed meanwhile.
    template <class Call>
    void query(const QRect& rectangle, Call call) const
    {
        ++m_stamp;
        const auto visit = [&](const std::vector<std::uint32_t>& numbers) {
            for (const std::uint32_t number : numbers) {
                if (m_seen[number] != m_stamp) {
                    m_seen[number] = m_stamp;
                    call(number);
                }
            }
        };
        visit(m_wide);
        const QRect cells = cellsOf(rectangle);
        if (std::int64_t(cells.width()) * cells.height() > m_cells.size()) {
            for (const auto& cell : m_cells)
                visit(cell);
            return;
        }
        for (int row = cells.top(); row <= cells.bottom(); ++row) {
            for (int column = cells.left(); column <= cells.right(); ++column) {
                if (const auto cell = m_cells.constFind(keyOf(column, row)); cell != m_cells.cend())
                    visit(*cell);
            }
        }
    }

private:
    static constexpr int CellShift = 6;  // cells of 64 pixels
    static constexpr int MostCells = 64; // what touches more of them lies in the list of the wide
    static QRect cellsOf(const QRect& rectangle);
    static std::uint64_t keyOf(int column, int row)
    {
        return std::uint64_t(std::uint32_t(column)) << 32 | std::uint32_t(row);
    }
    static bool isWide(const QRect& cells);

    QHash<std::uint64_t, std::vector<std::uint32_t>> m_cells;
    std::vector<std::uint32_t> m_wide;
    mutable std::vector<std::uint32_t> m_seen; // by number: the last query that met it
    mutable std::uint32_t m_stamp = 0;
};

} // namespace zan::surface
