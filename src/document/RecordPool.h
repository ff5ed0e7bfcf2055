#pragma once

#include "document/Record.h"

namespace zan::document {

class Tape;

/// Makes the records of one tape, many to an allocation: a document of ten thousand controls has as many at least,
/// made in one go and let go in one go as a rule.
///
/// Each record still lives and dies alone, and is counted by its tape. Its memory goes back when the last record of its slab has gone; a slab is
/// small, so that one node which outlives its document keeps little of it.
class RecordPool
{
public:
    explicit RecordPool(const Tape& tape) noexcept
        : m_tape(tape)
    {}
    ~RecordPool();
    RecordPool(const RecordPool&) = delete;
    RecordPool& operator=(const RecordPool&) = delete;

    Node::Record* make(NodeType type, Name name = {});
    /// The tape of a record from a pool.
    static const Tape& tapeOf(const Node::Record* record) noexcept;
    /// Destroys a record, from a pool or made alone. May take the tape along.
    static void destroy(Node::Record* record) noexcept;

private:
    struct Slab;
    static Slab* slabOf(const Node::Record* record) noexcept;
    void beginSlab();
    static void release(Slab* slab) noexcept;

    const Tape& m_tape;
    Slab* m_slab = nullptr; ///< the one being filled
};

} // namespace zan::document
