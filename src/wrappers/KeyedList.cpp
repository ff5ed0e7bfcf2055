#include "wrappers/KeyedList.h"

#include "values/RuntimeError.h"

#include <algorithm>

namespace zan::wrappers {

using values::ErrorNumber;

const Ref<iBenchControl>& KeyedList::at(std::int32_t place) const
{
    if (place < 1 || place > count())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    return m_entries[std::size_t(place) - 1].control;
}

std::int32_t KeyedList::placeOf(const QString& key) const
{
    const auto found = m_byKey.constFind(key.toCaseFolded());
    if (found == m_byKey.constEnd())
        values::raise(ErrorNumber::InvalidCall);
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& candidate) { return candidate.control.get() == *found; });
    return std::int32_t(entry - m_entries.begin()) + 1;
}

void KeyedList::clearMemos()
{
    for (Entry& entry : m_entries)
        entry.memo = {};
}

void KeyedList::reserve(std::size_t count)
{
    m_entries.reserve(count);
    m_byKey.reserve(qsizetype(count));
}

void KeyedList::add(const Ref<iBenchControl>& control, const QString& key)
{
    insert(count() + 1, control, key);
}

void KeyedList::insert(std::int32_t place, const Ref<iBenchControl>& control, const QString& key)
{
    const QString folded = key.toCaseFolded();
    if (!folded.isEmpty()) {
        const qsizetype count = m_byKey.size();
        const iBenchControl*& found = m_byKey[folded];
        if (m_byKey.size() == count)
            values::raise(ErrorNumber::DuplicateKey);
        found = control.get();
    }
    m_entries.insert(m_entries.begin() + (place - 1), Entry{control, folded});
}

void KeyedList::remove(std::int32_t place)
{
    const Entry entry = m_entries.at(std::size_t(place) - 1); // held until the list is whole again
    if (!entry.foldedKey.isEmpty())
        m_byKey.remove(entry.foldedKey);
    m_entries.erase(m_entries.begin() + (place - 1));
}

} // namespace zan::wrappers
