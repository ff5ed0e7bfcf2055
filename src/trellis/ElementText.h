#pragma once

#include "document/Node.h"

#include <QString>

namespace zan::trellis {

/// True for a node that stands in its document, not only belongs to it.
bool isAttached(const document::Node& node) noexcept;

/// Says in the tree that the node's scheme has changed. Nothing for a node that stands in no tree: a record
/// that was made but never added must not ask anybody to save.
void markChanged(const document::Node& node);

/// Writes a child's text and marks the scheme changed; nothing when it reads so already. A missing child is
/// created unless the text equals what its absence means. An existing child is never removed: were there two
/// of the name, the second one would come to light.
void writeText(document::Node node, document::Name name, const QString& text, const QString& whenAbsent = {});

} // namespace zan::trellis
