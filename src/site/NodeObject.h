#pragma once

#include "binding/Marshal.h"
#include "document/Node.h"

#include <vector>

namespace zan::site {

using binding::Ref;
using binding::Variant;

/// A node of a document as scripts see it, with the vocabulary that they know for XML. Two objects may stand for one
/// node; what is written through one is read through the other.
class NodeObject : public binding::Object
{
public:
    explicit NodeObject(document::Node node)
        : m_node(std::move(node))
    {}
    const document::Node& node() const noexcept { return m_node; }

    /// 1 element, 3 text, 7 processing instruction, 8 comment, 9 document.
    std::int16_t nodeType() const;
    QString baseName() const { return m_node.name().text(); }
    QString text() const { return m_node.text(); }
    void setText(const QString& text) { m_node.setText(text); }
    QString xml() const { return m_node.xml(); }
    document::Node parentNode() const { return m_node.parent(); }
    document::Node ownerDocument() const;
    document::Node documentElement() const { return m_node.documentElement(); }
    Variant childNodes() const;
    /// The first child element of this name, or Nothing. Names are plain: no paths.
    document::Node selectSingleNode(const QString& name) const;
    Variant selectNodes(const QString& name) const;
    /// Moves a node to the end of this one and returns it. Raises 91 for Nothing, 5 where it cannot stand.
    document::Node appendChild(const document::Node& child);
    /// Takes a child out and returns it. Raises 5 for what is no child.
    document::Node removeChild(const document::Node& child);
    /// A new element of the same document. Raises 5 for a name that XML does not allow.
    document::Node createElement(const QString& name) const;

    const binding::MemberTable& members() const override;

private:
    document::Node m_node;
};

/// Nodes in document order as they were when the list was made.
class NodeListObject : public binding::Object
{
public:
    explicit NodeListObject(std::vector<document::Node> nodes)
        : m_nodes(std::move(nodes))
    {}
    std::int32_t length() const { return std::int32_t(m_nodes.size()); }
    /// Node by index from 0; Nothing outside.
    document::Node item(std::int32_t index) const;

    const binding::MemberTable& members() const override;
    std::unique_ptr<binding::Enumerator> enumerate() override;

private:
    std::vector<document::Node> m_nodes;
};

} // namespace zan::site

/// Nodes travel as objects, the null node as Nothing. What is no node raises 424 or 13.
template <>
struct zan::binding::Marshal<zan::document::Node>
{
    static constexpr ValueType type = ValueType::Object;
    static document::Node from(const Variant& value)
    {
        const auto object = Marshal<Ref<site::NodeObject>>::from(value);
        return object ? object->node() : document::Node();
    }
    static Variant to(const document::Node& node)
    {
        return node ? Variant(values::make<site::NodeObject>(node)) : Variant::nothing();
    }
};
