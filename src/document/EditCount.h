#pragma once

#include <cstdint>

namespace zan::document {

/// How many writes of this thread were somebody's edit: those that mark their document (see XMLOps::MarkChanged), and
/// what takes something away, which leaves no mark. For who keeps a copy of a document that is marked already: at an
/// equal count the copy still holds. Writes to the nodes themselves are not counted.
std::uint64_t editCount() noexcept;
/// Counts one more, unless writes do not count now (see XMLOps::Marking).
void countEdit() noexcept;

} // namespace zan::document
