#pragma once

#include "document/Node.h"

namespace zan::document {

/// Whether an element holds what a read has stored because nothing stood there, and nobody has written to it since: it
/// says as much as its absence did. Not kept in files.
bool isStoredDefault(const Node& element) noexcept;
/// Notes that an element that has just been written is one of these, or is none.
void setStoredDefault(const Node& element, bool isDefault) noexcept;

} // namespace zan::document
