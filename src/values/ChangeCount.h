#pragma once

#include <cstdint>
#include <limits>

namespace zan::values {

/// How often something has changed. Whoever has looked at it at an equal count need not look again.
///
/// Never 0, so that a 0 can stand for what does not count. It starts over after four thousand million changes: a
/// reader that sleeps through exactly that many takes the thing for unchanged.
class ChangeCount
{
public:
    void add() noexcept { m_count += m_count == std::numeric_limits<std::uint32_t>::max() ? 2 : 1; }
    std::uint32_t value() const noexcept { return m_count; }

private:
    std::uint32_t m_count = 1;
};

} // namespace zan::values
