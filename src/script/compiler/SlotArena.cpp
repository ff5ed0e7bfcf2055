#include "script/compiler/SlotArena.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#if defined(__unix__)
#include <sys/mman.h>
#endif

namespace zan::script {

namespace {

/// Zeroed memory whose pages exist only once they are touched. An ordinary allocator zeroes what it hands out a second
/// time, which for a stack of megabytes takes longer than most scripts.
void* takePages(std::size_t bytes)
{
#if defined(__unix__)
    void* const memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : memory;
#else
    return std::calloc(bytes, 1);
#endif
}

void givePages(void* memory, std::size_t bytes) noexcept
{
#if defined(__unix__)
    munmap(memory, bytes);
#else
    static_cast<void>(bytes);
    std::free(memory);
#endif
}

} // namespace

// All-zero memory is a slot that holds Empty: its kind is 0 and nothing is counted.
SlotArena::SlotArena(std::size_t count)
    : m_slots(static_cast<Slot*>(takePages(count * sizeof(Slot))))
    , m_count(count)
{
    static_assert(static_cast<int>(values::Kind::Empty) == 0);
    if (!m_slots)
        throw std::bad_alloc();
}

SlotArena::~SlotArena()
{
    clear();
    givePages(m_slots, m_count * sizeof(Slot));
}

void SlotArena::clear() noexcept
{
    for (std::size_t place = 0; place < m_used; ++place)
        m_slots[place].clear();
}

ArenaPool& ArenaPool::ofThread()
{
    // Never destroyed: the last engine of a process may go after every other static.
    static thread_local ArenaPool* pool = new ArenaPool;
    return *pool;
}

std::unique_ptr<SlotArena> ArenaPool::take(std::size_t count)
{
    const auto found = std::find_if(m_arenas.begin(), m_arenas.end(),
                                    [count](const auto& arena) { return arena->count() == count; });
    if (found == m_arenas.end())
        return std::make_unique<SlotArena>(count);
    std::unique_ptr<SlotArena> arena = std::move(*found);
    m_arenas.erase(found);
    return arena;
}

void ArenaPool::give(std::unique_ptr<SlotArena> arena) noexcept
{
    constexpr std::size_t MostArenas = 4;
    constexpr std::size_t MostSlotsUsed = 1 << 14;
    if (m_arenas.size() >= MostArenas || arena->used() > MostSlotsUsed)
        return;
    arena->clear();
    if (m_arenas.capacity() < MostArenas)
        m_arenas.reserve(MostArenas);
    m_arenas.push_back(std::move(arena));
}

} // namespace zan::script
