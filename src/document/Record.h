#pragma once

#include "document/ChangeCounter.h"
#include "document/Node.h"

#include <cstdint>
#include <memory>

namespace zan::document {

class Tape;

/// What stands behind a Node: one record per node, linked to its neighbours.
///
/// Life. `references` counts the handles to the record, plus every record that names this one in `up` and has
/// references itself. So a record with references holds exactly one reference on the record above it, a handle
/// keeps everything above it alive, and retaining stops climbing at the first record that is referenced already.
/// A document or a detached root whose count falls to nothing is destroyed with all that is below it: nothing
/// down there can have references then.
///
/// Content. What is below a record that was made of a tape stays there, `folded`, until somebody edits it or walks
/// through it; of its children only those are records that somebody has asked for. They stand in the list in their
/// order, as if the others were not there: `first`, `last`, `next` and `previous` say the truth of an unfolded
/// parent only. Whoever follows them goes through the functions, which unfold.
struct Node::Record
{
    explicit Record(NodeType nodeType, Name nodeName = {}) noexcept
        : type(nodeType)
        , name(nodeName)
    {}
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    std::uint32_t references = 0;
    NodeType type;
    bool attached : 1 = false;  ///< `up` is the parent; otherwise `up` is the document the node belongs to
    bool folded : 1 = false;    ///< text, attributes and children are those of the entry
    bool isDefault : 1 = false; ///< stored by a read, and written by nobody since
    std::uint8_t watchers = 0;  ///< bits of the counters whose owners keep something derived from the record
    std::uint8_t slot = 0;      ///< place in its slab, from 1; 0 for a record that was made alone
    Name name;                  ///< of an element or an instruction
    Record* up = nullptr;       ///< null for a document only
    Record* first = nullptr;
    Record* last = nullptr;
    Record* next = nullptr;
    Record* previous = nullptr;
    QString text;                                       ///< of a leaf element, a text, a comment, an instruction
    std::unique_ptr<std::vector<Attribute>> attributes; ///< rare, hence behind a pointer
    std::uint32_t entry = 0;                            ///< on the tape of its slab

    /// The tape that the record was made of; only where it was.
    const Tape& tape() const noexcept;
    bool isOfTape(const Tape& other) const noexcept { return slot != 0 && &tape() == &other; }
    /// Takes text, attributes and children off the tape.
    void unfold()
    {
        if (folded)
            takeContent();
    }
    /// Takes the attributes off the tape, and forgets what else the record had there. Children that are records
    /// already stay.
    void dropContent();
    Record* firstChild()
    {
        unfold();
        return first;
    }
    Record* lastChild()
    {
        unfold();
        return last;
    }
    Record* nextSibling()
    {
        if (attached)
            up->unfold();
        return next;
    }
    Record* previousSibling()
    {
        if (attached)
            up->unfold();
        return previous;
    }
    /// The first child element of this name, made a record if it is none yet; null when there is none.
    Record* child(Name childName);
    /// The child that stands at this entry while the record is folded.
    Record* childAt(std::uint32_t childEntry);
    /// The same if it is a record already; null when it is none.
    Record* madeChildAt(std::uint32_t childEntry) const noexcept;

    /// Has the first child element of this name watched, a record or not; false when there is none.
    bool watchChild(Name childName, std::uint8_t watcher);

    bool canHaveChildren() const noexcept { return type == NodeType::Element || type == NodeType::Document; }

    void retain() noexcept;
    /// May destroy the record and others above it.
    void release() noexcept;

    /// Puts an unlinked child at the end. Counts are the caller's business.
    void link(Record* child) noexcept;
    /// Puts an unlinked child before one of the list. Counts are the caller's business.
    void linkBefore(Record* child, Record* before) noexcept;
    /// Takes a child out of the list of its siblings. Counts and `up` are the caller's business.
    void unlink(Record* child) noexcept;
    /// A new last child without references.
    Record* add(NodeType childType, Name childName = {});
    /// Makes the text of a leaf element a node of its own, so that it can have siblings.
    void separateText();

    /// Counts a change of the text, if anybody watches.
    void noteChange() const noexcept
    {
        noteChange(watchers | (type == NodeType::Text && attached ? up->watchers : 0));
    }
    /// Counts a change for these watchers.
    static void noteChange(unsigned watchers) noexcept
    {
        if (watchers != 0)
            ChangeCounter::count(watchers);
    }
    /// Tells the recorder that is at work, if one is, that this record is read.
    void noteRead() noexcept { watchers |= ReadRecorder::activeBit(); }

    /// The top of what the record stands in: a document, as a rule.
    Record* top() noexcept;

    /// Frees this record and everything below it, whatever its depth.
    void destroy() noexcept;

private:
    void takeContent();
    void takeAttributes();
    void insertInOrder(Record* made) noexcept;
};

static_assert(sizeof(void*) != 8 || sizeof(Node::Record) == 96);

} // namespace zan::document
