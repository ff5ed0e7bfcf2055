#include "document/LoadByName.h"

#include <QVarLengthArray>

#include <algorithm>

namespace zan::document {

namespace {

constexpr qsizetype UsualChildren = 48;

/// The property that an element name stands for: the part after a prefix.
Name propertyName(Name element)
{
    const qsizetype colon = element.text().lastIndexOf(u':');
    return colon < 0 ? element : Name(QStringView(element.text()).sliced(colon + 1));
}

} // namespace

void loadByName(const Node& parent, binding::Object& target, std::span<SpecialChild> special)
{
    const binding::Ref<binding::Object> alive(&target);
    const Node element = parent;                   // the caller's handle may change under a setter
    QVarLengthArray<Node, UsualChildren> children; // held, because setters may edit the tree
    for (Node child = element.firstChildElement(); child; child = child.nextSiblingElement()) {
        const Name name = child.name();
        const auto handled =
            std::find_if(special.begin(), special.end(), [&](const SpecialChild& one) { return one.name == name; });
        if (handled == special.end())
            children.push_back(child);
        else if (!handled->node)
            handled->node = child;
    }
    for (const Node& child : children) {
        if (child.parent() == element)
            target.tryPutText(propertyName(child.name()), child.text());
    }
}

} // namespace zan::document
