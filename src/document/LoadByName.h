#pragma once

#include "binding/Object.h"
#include "document/Node.h"

#include <span>

namespace zan::document {

/// A child that the caller of loadByName handles itself.
struct SpecialChild
{
    Name name; ///< element name, case counts; a prefix before a colon is no part of it
    Node node; ///< set to the last child of that name, the one that counts; null when there is none
};

/// The child of this name that counts: the last one, a prefix before a colon left out. Null when there is none.
Node specialChild(const Node& parent, Name name);

/// Assigns the text of each child element to the target's property of that name, in document order, a prefix before
/// a colon left out. Names are compared without regard to case. A child that names no property, or whose text the
/// property refuses, is passed over. Children named in `special` are not assigned, whatever their number.
///
/// A setter may edit the very element: children that it takes out are not assigned any more, children that it adds
/// are not assigned either.
void loadByName(const Node& parent, binding::Object& target, std::span<SpecialChild> special = {});

} // namespace zan::document
