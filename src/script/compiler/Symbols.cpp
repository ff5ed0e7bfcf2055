#include "script/compiler/Symbols.h"

#include "values/RuntimeError.h"

namespace zan::script {

std::uint32_t Symbols::intern(values::Name name)
{
    const auto [entry, isNew] = m_numbers.emplace(name.folded(), std::uint32_t(m_symbols.size()));
    if (isNew) {
        if (m_symbols.size() >= Maximum) {
            m_numbers.erase(entry);
            values::raise(values::ErrorNumber::OutOfMemory);
        }
        m_symbols.push_back({.name = name});
    }
    m_values.noteUse(m_symbols.size());
    return entry->second;
}

Symbol* Symbols::find(values::Name name) noexcept
{
    const auto found = m_numbers.find(name.folded());
    return found == m_numbers.end() ? nullptr : &m_symbols[found->second];
}

} // namespace zan::script
