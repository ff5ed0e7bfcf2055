#include "script/machine/EngineSettings.h"

#if defined(__SANITIZE_ADDRESS__)
#define ZAN_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZAN_ADDRESS_SANITIZER
#endif
#endif

#if defined(ZAN_ADDRESS_SANITIZER)
// The sanitizer keeps a heap of its own and counts it. Its header is not installed everywhere.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#elif defined(__GLIBC__)
#include <malloc.h>
#endif

namespace zan::script {

std::size_t UnitCache::Hash::operator()(const Key& key) const noexcept
{
    return qHashMulti(0, key.knowledge, key.text, int(key.mode), key.dynamicScope);
}

std::size_t UnitCache::Hash::operator()(const Step& step) const noexcept
{
    return qHashMulti(0, step.before, int(step.lesson.kind), step.lesson.about, step.lesson.number);
}

std::shared_ptr<const Unit> UnitCache::find(const Key& key) const
{
    const auto found = m_units.find(key);
    return found == m_units.end() ? nullptr : found->second;
}

void UnitCache::insert(const Key& key, std::shared_ptr<const Unit> unit)
{
    m_characters += key.text.size();
    if (m_characters > MostCharacters) { // rare, and what is in use comes back soon
        m_units.clear();
        m_characters = key.text.size();
    }
    m_units.insert_or_assign(key, std::move(unit));
}

Knowledge UnitCache::after(Knowledge before, const Lesson& lesson)
{
    if (m_steps.size() >= MostSteps)
        m_steps.clear();
    const auto [step, isNew] = m_steps.try_emplace({before, lesson}, m_last + 1);
    if (isNew)
        ++m_last;
    return step->second;
}

std::size_t heapInUse() noexcept
{
#if defined(ZAN_ADDRESS_SANITIZER)
    return __sanitizer_get_current_allocated_bytes();
#elif defined(__GLIBC__)
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return 0;
#endif
}

} // namespace zan::script
