#pragma once

#include "binding/Object.h"
#include "document/Node.h"

namespace zan::wrappers {

/// The child of this name that a load takes, made at the end where there is none; a detached one for no parent.
document::Node findOrAppend(const document::Node& parent, values::Name name);

/// Sets each child of a FONT element by name on a font object, then assigns the font's size to itself, which makes
/// the size that the font really took its own. Failures are ignored, per name.
void applyFontNode(const document::Node& fontNode, binding::Object& font);
/// Writes the font's eight attributes into a FONT element, without force: false and zero are stored by absence.
void storeFontNode(const document::Node& fontNode, binding::Object& font);

} // namespace zan::wrappers
