#pragma once

#include "binding/Object.h"
#include "document/Node.h"
#include "site/NodeObject.h"

#include <QSet>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace zan::display {

using values::Variant;

/// An ordered collection of document nodes, with optional unique keys that ignore case. Places count from 1.
class Sites : public binding::Object
{
public:
    /// Raises 6 when there are more than 32,767.
    std::int16_t Count() const;
    /// The node at a place (raises 9 outside) or of a key (raises 5 when there is none).
    document::Node Item(const Variant& index) const;
    /// Adds a node, before or after another one or else at the end. An empty key is no key. Raises 457 for a key that
    /// exists, 5 for both Before and After, and what Item raises for the place given.
    void Add(const document::Node& site, const std::optional<QString>& key = {},
             const std::optional<Variant>& before = {}, const std::optional<Variant>& after = {});
    /// Removes by place or key; raises what Item raises.
    void Remove(const Variant& index);
    void Clear();

    const binding::MemberTable& members() const override;
    std::unique_ptr<binding::Enumerator> enumerate() override;

private:
    struct Entry
    {
        document::Node node;
        QString foldedKey;
    };
    /// Position in m_entries.
    std::size_t find(const Variant& index) const;

    std::vector<Entry> m_entries;
    QSet<QString> m_keys;
};

} // namespace zan::display
