#include "document/LoadByName.h"

#include "binding/MemberTable.h"
#include "document/Place.h"

#include <QVarLengthArray>

#include <algorithm>

namespace zan::document {

namespace {

constexpr qsizetype UsualChildren = 48;
constexpr qsizetype UsualSpecials = 4;

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

/// Sets each node to the last child of its name, made a record if it is none yet; to null when there is none.
void pickOut(Node::Record* element, std::span<SpecialChild> special)
{
    for (SpecialChild& one : special)
        one.node = Node();
    if (!element->folded) {
        for (Node::Record* child = element->first; child; child = child->next) {
            for (SpecialChild& one : special) {
                if (child->type == NodeType::Element && child->name.localPart() == one.name)
                    one.node = Node(child);
            }
        }
        return;
    }
    const Tape& tape = element->tape();
    const std::uint32_t end = tape.end(element->entry);
    QVarLengthArray<std::uint32_t, UsualSpecials> found(qsizetype(special.size()), 0);
    for (std::uint32_t entry = tape.firstChild(element->entry); entry != end; entry = tape.next(entry)) {
        const Name local = tape.localName(entry);
        for (std::size_t i = 0; i < special.size(); ++i) {
            if (local == special[i].name && tape.isElement(entry))
                found[qsizetype(i)] = entry;
        }
    }
    for (std::size_t i = 0; i < special.size(); ++i) {
        if (const std::uint32_t entry = found[qsizetype(i)])
            special[i].node = Node(element->childAt(entry));
    }
}

/// Puts the texts of children into properties of the target.
class Assignment
{
public:
    explicit Assignment(binding::Object& target)
        : m_target(target)
        , m_members(target.members())
        , m_isRecorded(ReadRecorder::activeBit() != 0)
    {}
    void operator()(const Place& child, Name local) const
    {
        if (m_isRecorded)
            child.noteRead();
        const binding::Member* const member = m_members.find(local);
        if (!member || !member->put) // as for most children: their text is not looked at
            return;
        Place::Room room;
        if (const auto number = member->takesText() ? std::nullopt : child.trivialText(room))
            m_target.tryPutText(*member, *number);
        else
            m_target.tryPutText(*member, child.text());
    }

private:
    binding::Object& m_target;
    const binding::MemberTable& m_members;
    bool m_isRecorded; ///< somebody notes what is read, from before the first child to after the last
};

/// Assigns the children of an element that is unfolded, those behind an entry of its tape.
void assignRecords(Node::Record* element, std::uint32_t behind, const Assignment& assign,
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
            assign(Place(child), child->name.localPart());
    }
}

/// Assigns the children of an element that is folded, for as long as it is.
void assignEntries(Node::Record* element, const Assignment& assign, std::span<const SpecialChild> special)
{
    const Tape& tape = element->tape();
    const std::uint32_t end = tape.end(element->entry);
    for (std::uint32_t entry = tape.firstChild(element->entry); entry != end; entry = tape.next(entry)) {
        const Name local = tape.localName(entry);
        if (!tape.isElement(entry) || !isPlainChild(local, special))
            continue;
        Node::Record* const made = element->madeChildAt(entry);
        assign(made ? Place(made) : Place(tape, entry), local);
        if (!element->folded) { // the setter has edited the list of children
            assignRecords(element, entry, assign, special);
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
    SpecialChild only{name, {}};
    pickOut(parent.record(), {&only, 1});
    return only.node;
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
    const Assignment assign(target);
    if (element->folded)
        assignEntries(element, assign, special);
    else
        assignRecords(element, 0, assign, special);
}

} // namespace zan::document
