#include "trellis/ElementIndex.h"

#include "document/WatchedChild.h"
#include "trellis/Elements.h"
#include "values/Convert.h"

#include <algorithm>
#include <bit>
#include <unordered_map>

namespace zan::trellis {

using document::Node;

namespace {

// Keys are compared without regard to case. Nearly all are ASCII: they are kept and looked up as they stand, so that
// resolving ten thousand bindings makes no folded copies. Any other key is folded first; what folding leaves may be
// ASCII again, so that both kinds lie in one table.

bool isAscii(QStringView text) noexcept
{
    char16_t all = 0;
    for (const QChar unit : text)
        all |= unit.unicode();
    return all < 0x80;
}

QString comparable(const QString& key)
{
    return isAscii(key) ? key : key.toCaseFolded();
}

constexpr char16_t lower(char16_t unit) noexcept
{
    return unit >= u'A' && unit <= u'Z' ? char16_t(unit | 0x20) : unit;
}

std::size_t hashOf(QStringView key) noexcept
{
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const QChar unit : key)
        hash = (hash ^ lower(unit.unicode())) * 0x100000001B3u;
    return std::size_t(hash ^ (hash >> 29));
}

bool isSameKey(QStringView a, QStringView b) noexcept
{
    return a.size() == b.size() && std::equal(a.utf16(), a.utf16() + a.size(), b.utf16(),
                                              [](char16_t x, char16_t y) { return lower(x) == lower(y); });
}

/// Slots for so many entries, of which half stay free.
std::size_t slotsFor(std::size_t entries)
{
    constexpr std::size_t Fewest = 16;
    return std::max(Fewest, std::bit_ceil(2 * entries));
}

} // namespace

ElementIndex::ElementIndex(Node parent, document::Name elementName, const document::ChangeCounter& changes)
    : m_parent(std::move(parent))
    , m_elementName(elementName)
    , m_changes(changes)
{}

std::size_t ElementIndex::count()
{
    bringUpToDate();
    return m_entries.size();
}

ElementIndex::Entry* ElementIndex::at(std::size_t place)
{
    bringUpToDate();
    return place < m_entries.size() ? &m_entries[place] : nullptr;
}

ElementIndex::Entry* ElementIndex::find(const QString& key)
{
    bringUpToDate();
    if (m_slots.empty())
        return nullptr;
    const std::uint32_t found = m_slots[slotOf(comparable(key))];
    return found == 0 ? nullptr : &m_entries[found - 1];
}

/// The slot of a key that is comparable, or the free one where it would stand.
std::size_t ElementIndex::slotOf(const QString& key) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = hashOf(key) & mask;
    while (m_slots[slot] != 0 && !isSameKey(m_entries[m_slots[slot] - 1].key, key))
        slot = (slot + 1) & mask;
    return slot;
}

void ElementIndex::resizeSlots()
{
    const std::vector<std::uint32_t> former = std::move(m_slots);
    m_slots.assign(slotsFor(former.size()), 0);
    for (const std::uint32_t taken : former) {
        if (taken != 0)
            m_slots[slotOf(m_entries[taken - 1].key)] = taken;
    }
}

ElementIndex::Entry* ElementIndex::item(const binding::Variant& indexOrKey)
{
    if (indexOrKey.isText())
        return find(indexOrKey.text());
    const std::int32_t index = values::toLong(indexOrKey);
    if (index < 1 || std::size_t(index) > count())
        values::raise(values::ErrorNumber::SubscriptOutOfRange);
    return &m_entries[std::size_t(index) - 1];
}

ElementIndex::Entry& ElementIndex::append(const Node& node, values::Ref<binding::Object> object)
{
    bringUpToDate();
    m_parent.appendChild(node);
    enter(node, std::move(object));
    m_builtAt = m_changes.value(); // nobody else has had a turn in between
    return m_entries.back();
}

void ElementIndex::bringUpToDate()
{
    if (m_builtAt != m_changes.value())
        rebuild();
}

void ElementIndex::rebuild()
{
    // Elements that are still there keep their objects; those of the others live on with whoever holds them.
    std::unordered_map<const Node::Record*, values::Ref<binding::Object>> objects;
    for (Entry& entry : m_entries)
        if (entry.object)
            objects.emplace(entry.node.record(), std::move(entry.object));
    m_entries.clear();
    m_slotsTaken = 0;
    m_parent.watch(m_changes);
    const std::vector<Node> nodes = m_parent.children(m_elementName);
    m_entries.reserve(nodes.size());
    m_slots.assign(std::max(m_slots.size(), slotsFor(nodes.size())), 0);
    for (const Node& node : nodes) {
        const auto known = objects.find(node.record());
        enter(node, known == objects.end() ? nullptr : known->second);
    }
    m_builtAt = m_changes.value();
}

void ElementIndex::enter(const Node& node, values::Ref<binding::Object> object)
{
    QString key;
    if (!document::watchedChildText(node, element::Key, m_changes, key))
        node.watch(m_changes); // without a KEY, the element that may get one
    if (2 * (m_slotsTaken + 1) > m_slots.size())
        resizeSlots();
    m_entries.push_back({node, std::move(object), comparable(key)});
    std::uint32_t& slot = m_slots[slotOf(m_entries.back().key)];
    if (slot == 0) { // the first one of a key is the one that is found
        slot = std::uint32_t(m_entries.size());
        ++m_slotsTaken;
    }
}

} // namespace zan::trellis
