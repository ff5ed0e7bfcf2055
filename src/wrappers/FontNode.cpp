#include "wrappers/FontNode.h"

#include "document/Elements.h"
#include "document/LoadByName.h"
#include "document/XMLOps.h"
#include "wrappers/ValueText.h"

#include <array>

namespace zan::wrappers {

using document::Node;
namespace element = document::element;

Node findOrAppend(const Node& parent, values::Name name)
{
    Node child = document::specialChild(parent, name);
    if (!child) {
        child = document::XMLOps::CreateElement(name);
        parent.appendChild(child);
    }
    return child;
}

void applyFontNode(const Node& fontNode, binding::Object& font)
{
    document::loadByName(fontNode, font);
    binding::Variant size;
    if (font.tryGet(element::Size, size) == binding::AccessStatus::Ok)
        font.tryPut(element::Size, size);
}

void storeFontNode(const Node& fontNode, binding::Object& font)
{
    const std::array attributes = {element::Bold, element::Charset,       element::Italic,    element::FontName,
                                   element::Size, element::Strikethrough, element::Underline, element::Weight};
    for (const values::Name attribute : attributes) {
        binding::Variant value;
        if (font.tryGet(attribute, value) == binding::AccessStatus::Ok)
            document::XMLOps::SetAttribute(fontNode, attribute, storedText(value), false);
    }
}

} // namespace zan::wrappers
