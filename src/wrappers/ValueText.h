#pragma once

#include "values/Variant.h"

#include <QString>

namespace zan::wrappers {

/// A property's value as a document stores it: Boolean as -1 or 0, numbers as the shortest decimal that reads back
/// to the same value, text verbatim; empty for what has no text.
QString storedText(const values::Variant& value);
inline QString storedText(bool value)
{
    return value ? QStringLiteral("-1") : QStringLiteral("0");
}

} // namespace zan::wrappers
