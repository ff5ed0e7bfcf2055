#pragma once

#include "document/ChangeCounter.h"
#include "document/Node.h"
#include "values/Ref.h"

#include <unordered_map>

namespace zan::trellis {

/// Which object stands for which node, for as long as the object lives. Shared by everything of one scheme,
/// so that a node that is taken out of its window and put into another is still the object that somebody
/// holds. The objects are not kept alive: each takes itself off when it ends.
class ObjectRegistry : public values::Shared
{
public:
    template <class T>
    values::Ref<T> find(const document::Node& node) const
    {
        const auto found = m_objects.find(node.record());
        return found == m_objects.end() ? nullptr : values::Ref<T>(dynamic_cast<T*>(found->second));
    }
    void add(const document::Node& node, values::Shared* object) { m_objects[node.record()] = object; }
    void remove(const document::Node& node) noexcept { m_objects.erase(node.record()); }

    /// Counts the changes that the scheme's indices by key are built anew for.
    const document::ChangeCounter& keyChanges() const noexcept { return m_keyChanges; }

private:
    // The address of a record stays its own while the object lives, because the object holds the node.
    std::unordered_map<const document::Node::Record*, values::Shared*> m_objects;
    document::ChangeCounter m_keyChanges;
};

} // namespace zan::trellis
