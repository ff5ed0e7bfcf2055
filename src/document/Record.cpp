#include "document/Record.h"

#include "document/RecordPool.h"

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
    child->attached = true;
    child->up = this;
    child->next = nullptr;
    child->previous = last;
    (last ? last->next : first) = child;
    last = child;
    noteChange(watchers | child->watchers);
}

void Node::Record::unlink(Record* child) noexcept
{
    (child->previous ? child->previous->next : first) = child->next;
    (child->next ? child->next->previous : last) = child->previous;
    child->next = child->previous = nullptr;
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

Node::Record* Node::Record::nextOutside(const Record* root) noexcept
{
    for (Record* record = this; record != root; record = record->up) {
        if (record->next)
            return record->next;
    }
    return nullptr;
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
