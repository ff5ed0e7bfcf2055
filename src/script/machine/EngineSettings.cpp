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

std::shared_ptr<const Unit> UnitCache::find(const QString& key) const
{
    const auto found = m_units.find(key);
    return found == m_units.end() ? nullptr : found->second;
}

void UnitCache::insert(const QString& key, std::shared_ptr<const Unit> unit)
{
    m_characters += key.size();
    if (m_characters > MostCharacters) { // rare, and what is in use comes back soon
        m_units.clear();
        m_characters = key.size();
    }
    m_units.insert_or_assign(key, std::move(unit));
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
