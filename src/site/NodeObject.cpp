#include "site/NodeObject.h"

#include "binding/MemberTable.h"

namespace zan::site {

using binding::MemberTable;
using binding::method;
using binding::property;
using binding::readOnly;
using document::Node;
using document::NodeType;
using values::ErrorNumber;

namespace {

class ListWalk : public binding::Enumerator
{
public:
    explicit ListWalk(NodeListObject& list)
        : m_list(&list)
    {}
    std::optional<Variant> next() override
    {
        if (m_place >= m_list->length())
            return std::nullopt;
        return binding::Marshal<Node>::to(m_list->item(m_place++));
    }

private:
    Ref<NodeListObject> m_list;
    std::int32_t m_place = 0;
};

} // namespace

std::int16_t NodeObject::nodeType() const
{
    switch (m_node.type()) {
    case NodeType::Element:
        return 1;
    case NodeType::Text:
        return 3;
    case NodeType::ProcessingInstruction:
        return 7;
    case NodeType::Comment:
        return 8;
    case NodeType::Document:
        return 9;
    case NodeType::None:
        break;
    }
    return 0;
}

Node NodeObject::ownerDocument() const
{
    return m_node.type() == NodeType::Document ? Node() : m_node.ownerDocument();
}

Variant NodeObject::childNodes() const
{
    std::vector<Node> nodes;
    for (Node child = m_node.firstChild(); child; child = child.nextSibling())
        nodes.push_back(child);
    return Variant(values::make<NodeListObject>(std::move(nodes)));
}

Node NodeObject::selectSingleNode(const QString& name) const
{
    return m_node.child(document::Name(name));
}

Variant NodeObject::selectNodes(const QString& name) const
{
    return Variant(values::make<NodeListObject>(m_node.children(document::Name(name))));
}

Node NodeObject::appendChild(const Node& child)
{
    if (!child)
        values::raise(ErrorNumber::ObjectNotSet);
    if (!m_node.appendChild(child))
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("The node cannot stand there."));
    return child;
}

Node NodeObject::removeChild(const Node& child)
{
    if (!m_node.removeChild(child))
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("The node is no child of this one."));
    return child;
}

Node NodeObject::createElement(const QString& name) const
{
    const Node element = m_node.createElement(document::Name(name));
    if (!element)
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("\"%1\" is no name of an element.").arg(name));
    return element;
}

const MemberTable& NodeObject::members() const
{
    return binding::table([] {
        return MemberTable("XMLNode", nullptr,
                           {
                               property<&NodeObject::text, &NodeObject::setText>("text").asDefault(),
                               readOnly<&NodeObject::nodeType>("nodeType"),
                               readOnly<&NodeObject::baseName>("baseName"),
                               readOnly<&NodeObject::baseName>("nodeName"),
                               readOnly<&NodeObject::xml>("xml"),
                               readOnly<&NodeObject::parentNode>("parentNode"),
                               readOnly<&NodeObject::ownerDocument>("ownerDocument"),
                               readOnly<&NodeObject::documentElement>("documentElement"),
                               readOnly<&NodeObject::childNodes>("childNodes"),
                               method<&NodeObject::selectSingleNode>("selectSingleNode"),
                               method<&NodeObject::selectNodes>("selectNodes"),
                               method<&NodeObject::appendChild>("appendChild"),
                               method<&NodeObject::removeChild>("removeChild"),
                               method<&NodeObject::createElement>("createElement"),
                           });
    });
}

Node NodeListObject::item(std::int32_t index) const
{
    return index >= 0 && index < length() ? m_nodes[std::size_t(index)] : Node();
}

const MemberTable& NodeListObject::members() const
{
    return binding::table([] {
        return MemberTable("XMLNodeList", nullptr,
                           {
                               readOnly<&NodeListObject::length>("length"),
                               readOnly<&NodeListObject::item>("item").asDefault(),
                           });
    });
}

std::unique_ptr<binding::Enumerator> NodeListObject::enumerate()
{
    return std::make_unique<ListWalk>(*this);
}

} // namespace zan::site
