#pragma once

#include "script/compiler/Slot.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace zan::script {

/// A long row of slots that never moves, all Empty at first: the machine's stack and the global variables, whose
/// addresses are passed by reference. Memory is taken page by page as it is used.
class SlotArena
{
public:
    explicit SlotArena(std::size_t count);
    ~SlotArena();
    SlotArena(const SlotArena&) = delete;
    SlotArena& operator=(const SlotArena&) = delete;

    Slot* begin() const noexcept { return m_slots; }
    Slot* end() const noexcept { return m_slots + m_count; }
    std::size_t count() const noexcept { return m_count; }
    /// Slots at and above this one were never touched; keeps clearing from walking over unused pages.
    void noteUse(std::size_t count) noexcept { m_used = count > m_used ? count : m_used; }
    std::size_t used() const noexcept { return m_used; }
    /// Makes every slot Empty again. What the slots held may run code that uses the arena meanwhile.
    void clear() noexcept;

private:
    Slot* m_slots;
    std::size_t m_count;
    std::size_t m_used = 0;
};

/// Arenas of engines that have ended, for those to come: a program that starts at every click of a button must not
/// pay for fresh memory each time, nor must the first click of every panel.
class ArenaPool
{
public:
    /// The one of this thread, which all its engines share.
    static ArenaPool& ofThread();
    /// An arena of so many slots, all Empty.
    std::unique_ptr<SlotArena> take(std::size_t count);
    /// Keeps an arena, unless there are enough or it has taken much memory.
    void give(std::unique_ptr<SlotArena> arena) noexcept;

private:
    std::vector<std::unique_ptr<SlotArena>> m_arenas;
};

} // namespace zan::script
