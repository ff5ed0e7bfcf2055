#include "document/Record.h"

#include "document/RecordPool.h"

namespace zan::document {

namespace {

struct ChangeCounts
{
    std::uint64_t keys = 0;
    std::uint64_t display = 0;
};
thread_local ChangeCounts changeCounts;

} // namespace

void Node::Record::countChange(unsigned watchers) noexcept
{
    ChangeCounts& counts = changeCounts;
    counts.keys += (watchers & unsigned(Watch::Keys)) != 0;
    counts.display += (watchers & unsigned(Watch::Display)) != 0;
}

std::uint64_t Node::Record::changesSeenBy(Watch watcher) noexcept
{
    return watcher == Watch::Keys ? changeCounts.keys : changeCounts.display;
}

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
