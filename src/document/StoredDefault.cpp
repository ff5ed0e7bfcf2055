#include "document/StoredDefault.h"

#include "document/Record.h"

namespace zan::document {

bool isStoredDefault(const Node& element) noexcept
{
    return element && element.record()->isDefault;
}

void setStoredDefault(const Node& element, bool isDefault) noexcept
{
    if (element)
        element.record()->isDefault = isDefault;
}

} // namespace zan::document
