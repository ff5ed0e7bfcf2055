#pragma once

#include "document/ChangeCounter.h"
#include "document/Node.h"

namespace zan::document {

/// Reads the text of the first child element of this name and has that child watched, without making a handle to
/// it. Nothing, and false, when there is none.
bool watchedChildText(const Node& parent, Name name, const ChangeCounter& counter, QString& text);

} // namespace zan::document
