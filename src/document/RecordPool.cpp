#include "document/RecordPool.h"

#include "document/Tape.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) ((void)(address), (void)(size))
#endif

namespace zan::document {

/// Records lie behind the header; each knows its place, so that it finds the header again.
struct RecordPool::Slab
{
    std::uint32_t users;  ///< records that live, and the pool while it fills the slab
    std::uint16_t filled; ///< places taken, whether their records still live or not
    std::uint16_t capacity;
    const Tape* tape;

    std::byte* place(std::size_t slot) noexcept
    {
        return reinterpret_cast<std::byte*>(this) + HeaderSize + (slot - 1) * sizeof(Node::Record);
    }
    static constexpr std::size_t HeaderSize = 16;
};

namespace {

constexpr std::uint16_t FirstCapacity = 4; // a pasted control should not take up a page
constexpr std::uint16_t LargestCapacity = 128;
static_assert(LargestCapacity <= std::numeric_limits<decltype(Node::Record::slot)>::max());
static_assert(alignof(Node::Record) <= 16);

} // namespace

RecordPool::~RecordPool()
{
    if (m_slab)
        release(m_slab);
}

Node::Record* RecordPool::make(NodeType type, Name name)
{
    if (!m_slab || m_slab->filled == m_slab->capacity)
        beginSlab();
    const std::uint16_t slot = ++m_slab->filled;
    ++m_slab->users;
    auto* record = new (m_slab->place(slot)) Node::Record(type, name);
    record->slot = std::uint8_t(slot);
    return record;
}

void RecordPool::beginSlab()
{
    static_assert(sizeof(Slab) <= Slab::HeaderSize);
    const std::uint16_t capacity =
        m_slab ? std::min<std::uint16_t>(LargestCapacity, std::uint16_t(m_slab->capacity * 2)) : FirstCapacity;
    void* const memory = ::operator new(Slab::HeaderSize + capacity * sizeof(Node::Record));
    if (m_slab)
        release(m_slab);
    m_slab = new (memory) Slab{1, 0, capacity, &m_tape};
}

void RecordPool::destroy(Node::Record* record) noexcept
{
    if (record->slot == 0) {
        delete record;
        return;
    }
    Slab* const slab = slabOf(record);
    const Tape* const tape = slab->tape;
    record->~Record();
    ASAN_POISON_MEMORY_REGION(record, sizeof(Node::Record)); // its place is not used again
    release(slab);
    tape->release();
}

RecordPool::Slab* RecordPool::slabOf(const Node::Record* record) noexcept
{
    const auto* const bytes = reinterpret_cast<const std::byte*>(record);
    const std::size_t offset = Slab::HeaderSize + (record->slot - 1U) * sizeof(Node::Record);
    return reinterpret_cast<Slab*>(const_cast<std::byte*>(bytes - offset));
}

const Tape& RecordPool::tapeOf(const Node::Record* record) noexcept
{
    return *slabOf(record)->tape;
}

void RecordPool::release(Slab* slab) noexcept
{
    if (--slab->users == 0)
        ::operator delete(slab);
}

} // namespace zan::document
