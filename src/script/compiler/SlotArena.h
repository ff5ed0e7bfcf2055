#pragma once

#include "values/Variant.h"

#include <cstddef>

namespace zan::script {

/// A long row of Variants that never moves, all Empty at first: the machine's stack and the global variables, whose
/// addresses are passed by reference. Memory is taken page by page as it is used.
class SlotArena
{
public:
    explicit SlotArena(std::size_t count);
    ~SlotArena();
    SlotArena(const SlotArena&) = delete;
    SlotArena& operator=(const SlotArena&) = delete;

    values::Variant* begin() const noexcept { return m_slots; }
    values::Variant* end() const noexcept { return m_slots + m_count; }
    std::size_t count() const noexcept { return m_count; }
    /// Slots at and above this one were never touched; keeps destruction from walking over unused pages.
    void noteUse(std::size_t count) noexcept { m_used = count > m_used ? count : m_used; }
    std::size_t used() const noexcept { return m_used; }

private:
    values::Variant* m_slots;
    std::size_t m_count;
    std::size_t m_used = 0;
};

} // namespace zan::script
