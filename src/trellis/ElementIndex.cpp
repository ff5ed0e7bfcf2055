#include "trellis/ElementIndex.h"

#include "trellis/Elements.h"
#include "values/Convert.h"

#include <unordered_map>

namespace zan::trellis {

using document::Node;

ElementIndex::ElementIndex(Node parent, document::Name elementName)
    : m_parent(std::move(parent))
    , m_elementName(elementName)
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
    const auto found = m_places.constFind(key.toCaseFolded());
    return found == m_places.constEnd() ? nullptr : &m_entries[*found];
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
    m_builtAt = Node::watchedChanges(); // nobody else has had a turn in between
    return m_entries.back();
}

void ElementIndex::bringUpToDate()
{
    if (m_builtAt != Node::watchedChanges())
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
    m_places.clear();
    m_parent.watch();
    for (const Node& node : m_parent.children(m_elementName)) {
        const auto known = objects.find(node.record());
        enter(node, known == objects.end() ? nullptr : known->second);
    }
    m_builtAt = Node::watchedChanges();
}

void ElementIndex::enter(const Node& node, values::Ref<binding::Object> object)
{
    const Node key = node.child(element::Key);
    (key ? key : node).watch(); // without a KEY, the element that may get one
    const QString folded = key.text().toCaseFolded();
    if (!m_places.contains(folded))
        m_places.insert(folded, m_entries.size());
    m_entries.push_back({node, std::move(object)});
}

} // namespace zan::trellis
