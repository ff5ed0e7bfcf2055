#pragma once

#include "binding/Object.h"
#include "document/ChangeCounter.h"
#include "document/Node.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace zan::trellis {

/// The child elements of one name, by place and by the text of their KEY, each with the object that stands
/// for it.
///
/// The tree is the truth and anybody may edit it; the index is built when it is first needed and again after
/// a change that could matter: of the parent's children, or of a KEY. Other edits of the tree, such as those
/// of ten thousand controls while their bindings are resolved, leave it standing.
class ElementIndex
{
public:
    struct Entry
    {
        document::Node node;
        values::Ref<binding::Object> object; ///< empty until somebody asked for it
        QString key;                         ///< as it stands when it is ASCII, folded otherwise
    };

    /// The counter outlives the index, and may serve others of the same scheme.
    ElementIndex(document::Node parent, document::Name elementName, const document::ChangeCounter& changes);

    std::size_t count();
    /// The entry at a place from 0, or nothing.
    Entry* at(std::size_t place);
    /// The first entry of this key, case ignored. An element without KEY has the empty key.
    Entry* find(const QString& key);
    /// Entry by an index from 1 or by a key. Nothing for an unknown key; raises 9 for an index outside and
    /// whatever the conversion of a value that is neither raises.
    Entry* item(const binding::Variant& indexOrKey);
    /// Puts an element, with its KEY in it, behind all others.
    Entry& append(const document::Node& node, values::Ref<binding::Object> object);

private:
    void bringUpToDate();
    void rebuild();
    void enter(const document::Node& node, values::Ref<binding::Object> object);
    std::size_t slotOf(const QString& key) const;
    void resizeSlots();

    document::Node m_parent;
    document::Name m_elementName;
    std::vector<Entry> m_entries;
    std::vector<std::uint32_t> m_slots; // open addressing by key: place + 1 of its first entry; size a power of two
    std::size_t m_slotsTaken = 0;
    const document::ChangeCounter& m_changes;
    std::uint32_t m_builtAt = 0; ///< count of the changes by then; 0 before
};

} // namespace zan::trellis
