#include "script/compiler/SlotArena.h"

#include <cstdlib>
#include <new>

namespace zan::script {

// All-zero memory is an Empty Variant: its kind is 0 and nothing is counted.
SlotArena::SlotArena(std::size_t count)
    : m_slots(static_cast<values::Variant*>(std::calloc(count, sizeof(values::Variant))))
    , m_count(count)
{
    static_assert(static_cast<int>(values::Kind::Empty) == 0);
    if (!m_slots)
        throw std::bad_alloc();
}

SlotArena::~SlotArena()
{
    for (std::size_t place = 0; place < m_used; ++place)
        m_slots[place].~Variant();
    std::free(m_slots);
}

} // namespace zan::script
