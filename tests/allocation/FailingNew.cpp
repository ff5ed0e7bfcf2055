#include "FailingNew.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <dlfcn.h>
#include <execinfo.h>
#include <new>

namespace {

struct Plan
{
    bool isOn = false;
    std::uint64_t count = 0;
    std::uint64_t failing = 0;
    zan::test::Shortage shortage = zan::test::Shortage::Once;
};

thread_local constinit Plan plan;
thread_local constinit void* asker = nullptr;

/// Notes the first place outside of this program that is on the way to the allocation.
void noteAsker() noexcept
{
    std::array<void*, 8> frames{};
    const int count = backtrace(frames.data(), int(frames.size()));
    Dl_info here{};
    dladdr(reinterpret_cast<void*>(&noteAsker), &here);
    for (int place = 0; place < count; ++place) {
        Dl_info frame{};
        asker = frames[std::size_t(place)];
        if (dladdr(asker, &frame) != 0 && frame.dli_fbase != here.dli_fbase)
            return;
    }
}

bool fails() noexcept
{
    if (!plan.isOn)
        return false;
    ++plan.count;
    return plan.count == plan.failing ||
           (plan.shortage == zan::test::Shortage::ForGood && plan.failing != 0 && plan.count > plan.failing);
}

void* take(std::size_t size, std::size_t alignment) noexcept
{
    if (fails())
        return nullptr;
    if (size == 0)
        size = 1;
    return alignment > alignof(std::max_align_t)
               ? std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment)
               : std::malloc(size);
}

void* takeOrThrow(std::size_t size, std::size_t alignment = 1)
{
    if (void* memory = take(size, alignment))
        return memory;
    noteAsker();
    throw std::bad_alloc();
}

} // namespace

// Every form that a program may replace; libraries that it is linked with use these too.
void* operator new(std::size_t size)
{
    return takeOrThrow(size);
}
void* operator new[](std::size_t size)
{
    return takeOrThrow(size);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return takeOrThrow(size, std::size_t(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return takeOrThrow(size, std::size_t(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return take(size, 1);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return take(size, 1);
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept
{
    std::free(memory);
}

namespace zan::test {

FailingNew::FailingNew(std::uint64_t failing, Shortage shortage)
{
    plan = {.isOn = true, .count = 0, .failing = failing, .shortage = shortage};
}

FailingNew::~FailingNew()
{
    end();
}

void FailingNew::end() noexcept
{
    plan.isOn = false;
}

void* FailingNew::lastAsker() noexcept
{
    return asker;
}

std::uint64_t FailingNew::count() const
{
    return plan.count;
}

bool FailingNew::hasFailed() const
{
    return plan.failing != 0 && plan.count >= plan.failing;
}

} // namespace zan::test
