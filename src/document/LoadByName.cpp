#include "document/LoadByName.h"

#include "document/Record.h"

#include <QVarLengthArray>

#include <algorithm>

namespace zan::document {

namespace {

constexpr qsizetype UsualChildren = 48;

/// Children of one element, held while setters may edit the tree.
class HeldChildren
{
public:
    HeldChildren() = default;
    HeldChildren(const HeldChildren&) = delete;
    HeldChildren& operator=(const HeldChildren&) = delete;
    ~HeldChildren()
    {
        for (Node::Record* record : m_records)
            record->release();
    }
    void hold(Node::Record* record)
    {
        record->retain();
        m_records.push_back(record);
    }
    auto begin() const { return m_records.begin(); }
    auto end() const { return m_records.end(); }

private:
    QVarLengthArray<Node::Record*, UsualChildren> m_records;
};

void assign(Node::Record* child, binding::Object& target)
{
    const Name property = child->name.localPart();
    child->noteRead();
    if (child->first)
        target.tryPutText(property, Node(child).text());
    else
        target.tryPutText(property, child->text); // taken over before the setter can change it
}

} // namespace

void loadByName(const Node& parent, binding::Object& target, std::span<SpecialChild> special)
{
    if (!parent)
        return;
    const binding::Ref<binding::Object> alive(&target);
    const Node element = parent; // the caller's handle may change under a setter
    element.record()->noteRead();
    HeldChildren children;
    for (Node::Record* child = element.record()->first; child; child = child->next) {
        if (child->type != NodeType::Element)
            continue;
        const auto handled = std::find_if(special.begin(), special.end(),
                                          [&](const SpecialChild& one) { return one.name == child->name; });
        if (handled == special.end())
            children.hold(child);
        else if (!handled->node)
            handled->node = Node(child);
    }
    for (Node::Record* child : children) {
        if (child->attached && child->up == element.record())
            assign(child, target);
    }
}

} // namespace zan::document
