#include "trellis/ElementText.h"

#include "document/XMLOps.h"

namespace zan::trellis {

using document::Node;
using document::NodeType;

bool isAttached(const Node& node) noexcept
{
    Node top = node;
    while (Node parent = top.parent())
        top = parent;
    return top.type() == NodeType::Document;
}

void markChanged(const Node& node)
{
    if (!isAttached(node))
        return;
    document::XMLOps::MarkChanged(node);
}

void writeText(Node node, document::Name name, const QString& text, const QString& whenAbsent)
{
    Node child = node.child(name);
    if (child ? child.text() == text : text == whenAbsent)
        return;
    if (child)
        child.setText(text);
    else
        node.appendChild(node.createElement(name, text));
    markChanged(node);
}

} // namespace zan::trellis
