#include "document/Record.h"

#include "document/RecordPool.h"
#include "document/Tape.h"

namespace zan::document {

void Node::Record::retain() noexcept
{
    for (Record* record = this; record && record->references++ == 0;)
        record = record->up;
}

void Node::Record::release() noexcept
{
    Record* record = this;
    while (record && --record->references == 0) {
        Record* above = record->up;
        if (!record->attached)
            record->destroy();
        record = above;
    }
}

void Node::Record::link(Record* child) noexcept
{
    unfold();
    child->attached = true;
    child->up = this;
    child->next = nullptr;
    child->previous = last;
    (last ? last->next : first) = child;
    last = child;
    isDefault = false;
    noteChange(watchers | child->watchers);
}

void Node::Record::linkBefore(Record* child, Record* before) noexcept
{
    child->next = before;
    child->previous = before->previous;
    (before->previous ? before->previous->next : first) = child;
    before->previous = child;
    child->up = this;
    child->attached = true;
    isDefault = false;
    noteChange(watchers | child->watchers);
}

void Node::Record::unlink(Record* child) noexcept
{
    unfold();
    (child->previous ? child->previous->next : first) = child->next;
    (child->next ? child->next->previous : last) = child->previous;
    child->next = child->previous = nullptr;
    isDefault = false;
    child->attached = false;
    noteChange(watchers | child->watchers);
}

Node::Record* Node::Record::add(NodeType childType, Name childName)
{
    auto* child = new Record(childType, childName);
    link(child);
    return child;
}

void Node::Record::separateText()
{
    unfold();
    if (text.isEmpty() || type != NodeType::Element)
        return;
    add(NodeType::Text)->text = std::move(text);
    text = QString();
}

Node::Record* Node::Record::top() noexcept
{
    Record* record = this;
    while (record->up)
        record = record->up;
    return record;
}

const Tape& Node::Record::tape() const noexcept
{
    return RecordPool::tapeOf(this);
}

void Node::Record::takeContent()
{
    takeAttributes();
    const Tape& source = tape();
    text = source.text(entry);
    const std::uint32_t end = source.end(entry);
    Record* made = first;
    first = last = nullptr;
    for (std::uint32_t child = source.firstChild(entry); child != end; child = source.next(child)) {
        Record* record = made;
        if (made && made->entry == child)
            made = made->next;
        else
            record = source.makeRecord(child);
        record->up = this;
        record->attached = true;
        record->next = nullptr;
        record->previous = last;
        (last ? last->next : first) = record;
        last = record;
    }
    folded = false;
}

void Node::Record::takeAttributes()
{
    const Tape& source = tape();
    const std::uint32_t end = source.firstChild(entry);
    if (end == entry + 1)
        return;
    attributes = std::make_unique<std::vector<Attribute>>();
    for (std::uint32_t attribute = entry + 1; attribute != end; ++attribute)
        attributes->push_back({source.name(attribute).text(), source.text(attribute)});
}

void Node::Record::dropContent()
{
    if (!folded)
        return;
    takeAttributes();
    folded = false;
    // Children that are records leave one by one; the others have gone here, and somebody may watch them.
    const Tape& source = tape();
    const std::uint32_t end = source.end(entry);
    unsigned gone = 0;
    for (std::uint32_t child = source.firstChild(entry); child != end; child = source.next(child))
        gone |= source.at(child).watchers;
    noteChange(gone);
}

Node::Record* Node::Record::child(Name childName)
{
    if (!folded) {
        for (Record* record = first; record; record = record->next) {
            if (record->name == childName && record->type == NodeType::Element)
                return record;
        }
        return nullptr;
    }
    const std::uint32_t found = tape().child(entry, childName);
    return found == 0 ? nullptr : childAt(found);
}

bool Node::Record::watchChild(Name childName, std::uint8_t watcher)
{
    const std::uint32_t place = folded ? tape().child(entry, childName) : 0;
    if (folded && place == 0)
        return false;
    Record* const made = folded ? madeChildAt(place) : child(childName);
    if (made)
        made->watchers |= watcher;
    else if (folded)
        tape().watch(place, watcher);
    return folded || made;
}

Node::Record* Node::Record::madeChildAt(std::uint32_t childEntry) const noexcept
{
    Record* made = first;
    while (made && made->entry < childEntry)
        made = made->next;
    return made && made->entry == childEntry ? made : nullptr;
}

Node::Record* Node::Record::childAt(std::uint32_t childEntry)
{
    if (Record* made = madeChildAt(childEntry))
        return made;
    Record* const made = tape().makeRecord(childEntry);
    insertInOrder(made);
    return made;
}

void Node::Record::insertInOrder(Record* made) noexcept
{
    Record* before = last;
    while (before && before->entry > made->entry)
        before = before->previous;
    made->up = this;
    made->attached = true;
    made->previous = before;
    made->next = before ? before->next : first;
    (before ? before->next : first) = made;
    (made->next ? made->next->previous : last) = made;
}

void Node::Record::destroy() noexcept
{
    // Leaves first; a record whose last child is gone is a leaf itself. No recursion: trees may be of any depth.
    Record* record = this;
    for (;;) {
        while (record->first)
            record = record->first;
        Record* const sibling = record->next;
        Record* const above = record->up;
        const bool done = record == this;
        RecordPool::destroy(record);
        if (done)
            return;
        above->first = sibling;
        record = sibling ? sibling : above;
    }
}

} // namespace zan::document
