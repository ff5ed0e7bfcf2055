#pragma once

#include "wrappers/ScanMemo.h"

#include <QHash>

#include <vector>

namespace zan::wrappers {

/// One-based list of wrappers with optional unique keys, compared without regard to case.
class KeyedList
{
public:
    std::int32_t count() const noexcept { return std::int32_t(m_entries.size()); }
    /// Raises 9 for a place outside 1 to count.
    const Ref<iBenchControl>& at(std::int32_t place) const;
    /// What the scan remembers of the control at a place, which exists.
    ScanMemo& memoAt(std::int32_t place) { return m_entries[std::size_t(place) - 1].memo; }
    /// Forgets what the scan remembers.
    void clearMemos();
    /// Place of a list key; raises 5 when there is none.
    std::int32_t placeOf(const QString& key) const;
    /// Room for so many, before they are added.
    void reserve(std::size_t count);
    /// Raises 457 for a key that exists; an empty key is no key.
    void add(const Ref<iBenchControl>& control, const QString& key = {});
    /// The same, at a place from 1 to count + 1; what stands there moves up.
    void insert(std::int32_t place, const Ref<iBenchControl>& control, const QString& key);
    /// The list key at a place, which exists, without regard to case; empty for none.
    const QString& keyAt(std::int32_t place) const { return m_entries[std::size_t(place) - 1].foldedKey; }
    bool containsKey(const QString& key) const { return m_byKey.contains(key.toCaseFolded()); }
    void remove(std::int32_t place);

private:
    struct Entry
    {
        Ref<iBenchControl> control;
        QString foldedKey;
        ScanMemo memo = {};
    };
    std::vector<Entry> m_entries;
    QHash<QString, const iBenchControl*> m_byKey;
};

} // namespace zan::wrappers
