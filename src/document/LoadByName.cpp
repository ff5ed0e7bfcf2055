#include "document/LoadByName.h"

#include "binding/MemberTable.h"
#include "document/Place.h"

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

bool isPlainChild(Name local, std::span<const SpecialChild> special)
{
    return std::none_of(special.begin(), special.end(), [&](const SpecialChild& one) { return one.name == local; });
}

/// The last child of this name, a prefix left out, made a record if it is none yet; null when there is none.
Node::Record* lastChildNamed(Node::Record* element, Name name)
{
    if (!element->folded) {
        for (Node::Record* child = element->last; child; child = child->previous) {
            if (child->type == NodeType::Element && child->name.localPart() == name)
                return child;
        }
        return nullptr;
    }
    const Tape& tape = element->tape();
    const std::uint32_t end = tape.end(element->entry);
    std::uint32_t found = 0;
    for (std::uint32_t entry = tape.firstChild(element->entry); entry != end; entry = tape.next(entry)) {
        if (tape.isElement(entry) && tape.localName(entry) == name)
            found = entry;
    }
    return found == 0 ? nullptr : element->childAt(found);
}

void pickOut(Node::Record* element, std::span<SpecialChild> special)
{
    for (SpecialChild& one : special)
        one.node = Node(lastChildNamed(element, one.name));
}

void assign(const Place& child, Name local, binding::Object& target)
{
    child.noteRead();
    const binding::Member* const member = target.members().find(local);
    if (!member || !member->put) // as for most children: their text is not looked at
        return;
    Place::Room room;
    if (const auto number = member->takesText() ? std::nullopt : child.trivialText(room))
        target.tryPutText(*member, *number);
    else
        target.tryPutText(*member, child.text());
}

/// Assigns the children of an element that is unfolded, those behind an entry of its tape.
void assignRecords(Node::Record* element, std::uint32_t behind, binding::Object& target,
                   std::span<const SpecialChild> special)
{
    HeldChildren children;
    const auto isStillToCome = [&](const Node::Record* child) {
        return behind == 0 || (child->isOfTape(element->tape()) && child->entry > behind &&
                               child->entry < element->tape().end(element->entry));
    };
    for (Node::Record* child = element->firstChild(); child; child = child->next) {
        if (child->type == NodeType::Element && isStillToCome(child) &&
            isPlainChild(child->name.localPart(), special))
            children.hold(child);
    }
    for (Node::Record* child : children) {
        if (child->attached && child->up == element)
            assign(Place(child), child->name.localPart(), target);
    }
}

/// Assigns the children of an element that is folded, for as long as it is.
void assignEntries(Node::Record* element, binding::Object& target, std::span<const SpecialChild> special)
{
    const Tape& tape = element->tape();
    const std::uint32_t end = tape.end(element->entry);
    for (std::uint32_t entry = tape.firstChild(element->entry); entry != end; entry = tape.next(entry)) {
        const Name local = tape.localName(entry);
        if (!tape.isElement(entry) || !isPlainChild(local, special))
            continue;
        Node::Record* const made = element->madeChildAt(entry);
        assign(made ? Place(made) : Place(tape, entry), local, target);
        if (!element->folded) { // the setter has edited the list of children
            assignRecords(element, entry, target, special);
            return;
        }
    }
}

} // namespace

Node specialChild(const Node& parent, Name name)
{
    if (!parent || !parent.record()->canHaveChildren())
        return {};
    parent.record()->noteRead();
    return Node(lastChildNamed(parent.record(), name));
}

void loadByName(const Node& parent, binding::Object& target, std::span<SpecialChild> special)
{
    if (!parent)
        return;
    const binding::Ref<binding::Object> alive(&target);
    const Node held = parent; // the caller's handle may change under a setter
    Node::Record* const element = held.record();
    element->noteRead();
    pickOut(element, special);
    if (element->folded)
        assignEntries(element, target, special);
    else
        assignRecords(element, 0, target, special);
}

} // namespace zan::document
