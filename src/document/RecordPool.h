#pragma once

#include "document/Record.h"

namespace zan::document {

/// Makes the records of one text that is being read, many to an allocation: a document of ten thousand controls has
/// a quarter of a million of them, made in one go and let go in one go as a rule.
///
/// Each record still lives and dies alone. Its memory goes back when the last record of its slab has gone; a slab is
/// small, so that one node which outlives its document keeps little of it.
class RecordPool
{
public:
    RecordPool() noexcept = default;
    ~RecordPool();
    RecordPool(const RecordPool&) = delete;
    RecordPool& operator=(const RecordPool&) = delete;

    Node::Record* make(NodeType type, Name name = {});
    /// Destroys a record, from a pool or made alone.
    static void destroy(Node::Record* record) noexcept;

private:
    struct Slab;
    void beginSlab();
    static void release(Slab* slab) noexcept;

    Slab* m_slab = nullptr; ///< the one being filled
};

} // namespace zan::document
