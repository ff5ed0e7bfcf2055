#include "halyard/BlockPlan.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace zan::halyard {

namespace {

/// Blocks under construction, in wide numbers.
class Planner
{
public:
    explicit Planner(const BlockLimits& limits)
        : m_alignment(std::max(limits.alignment, 1))
        , m_longest(std::max<std::int64_t>(down(limits.longest), std::max<std::int64_t>(up(8), m_alignment)))
        , m_gap(std::max(limits.widestGap, 0))
    {}

    void add(const MemoryField& field)
    {
        const std::int64_t from = down(field.address);
        const std::int64_t to = up(std::int64_t(field.address) + field.length);
        if (field.address < 0 || field.length <= 0 || to > End)
            return;
        if (m_to > m_from && from <= m_to + m_gap && std::max(m_to, to) - m_from <= m_longest) {
            m_to = std::max(m_to, to);
            return;
        }
        finish();
        m_from = from;
        m_to = to;
    }

    void finish()
    {
        for (std::int64_t at = m_from; at < m_to; at += m_longest)
            m_blocks.push_back({std::int32_t(at), std::int32_t(std::min(m_longest, m_to - at))});
        m_from = m_to = 0;
    }

    std::vector<MemoryBlock> take() { return std::move(m_blocks); }

private:
    static constexpr std::int64_t End = std::int64_t(std::numeric_limits<std::int32_t>::max()) + 1;
    std::int64_t down(std::int64_t address) const { return address - address % m_alignment; }
    std::int64_t up(std::int64_t address) const { return down(address + m_alignment - 1); }

    std::int64_t m_alignment;
    std::int64_t m_longest;
    std::int64_t m_gap;
    std::int64_t m_from = 0;
    std::int64_t m_to = 0;
    std::vector<MemoryBlock> m_blocks;
};

} // namespace

void sortLayout(MemoryLayout& layout)
{
    const auto order = [](const MemoryField& field) {
        return std::tuple(field.address, -std::int64_t(field.length), field.type);
    };
    std::sort(layout.begin(), layout.end(), [&](const auto& a, const auto& b) { return order(a) < order(b); });
    layout.erase(std::unique(layout.begin(), layout.end()), layout.end());
}

std::vector<MemoryBlock> planBlocks(const MemoryLayout& layout, const BlockLimits& limits)
{
    Planner planner(limits);
    for (const MemoryField& field : layout)
        planner.add(field);
    planner.finish();
    return planner.take();
}

} // namespace zan::halyard
