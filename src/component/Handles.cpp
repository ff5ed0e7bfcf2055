#include "component/Handles.h"

#include "component/Boundary.h"
#include "component/Holder.h"

#include <limits>

namespace zan::component {

ZanHandle Handles::give(const Ref<Object>& object, std::shared_ptr<Holder> holder)
{
    if (!object)
        return 0;
    if (const auto known = m_byObject.find(object.get()); known != m_byObject.end()) {
        retain(known->second);
        return known->second;
    }
    const ZanHandle handle = m_last + 1;
    const auto entry = m_entries.emplace(handle, Entry{object, std::move(holder), 1}).first;
    try {
        m_byObject.emplace(object.get(), handle);
    } catch (...) {
        m_entries.erase(entry);
        throw;
    }
    return m_last = handle;
}

Handles::Entry& Handles::at(ZanHandle handle)
{
    const auto found = m_entries.find(handle);
    if (found == m_entries.end())
        fail(ZAN_E_HANDLE, "No living object has this handle.");
    return found->second;
}

void Handles::retain(ZanHandle handle)
{
    Entry& entry = at(handle);
    if (entry.references == std::numeric_limits<std::uint32_t>::max())
        values::raise(values::ErrorNumber::Overflow);
    ++entry.references;
}

void Handles::release(ZanHandle handle)
{
    Entry& entry = at(handle);
    if (--entry.references > 0)
        return;
    m_byObject.erase(entry.object.get());
    // Whatever the end of the object calls finds the handle gone already.
    const Entry last = std::move(entry);
    m_entries.erase(handle);
}

void Handles::clear()
{
    m_byObject.clear();
    const auto last = std::move(m_entries);
    m_entries.clear();
}

} // namespace zan::component
