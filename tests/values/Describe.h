#pragma once

#include "values/Convert.h"

#include <functional>
#include <string>

namespace zan::values {

/// An Integer, which no plain literal is.
inline Variant whole(int value)
{
    return std::int16_t(value);
}

/// Kind and text of a value, as "Integer 300", for tests where both count.
inline std::string describe(const Variant& value)
{
    const auto with = [&value](const char* kind) { return std::string(kind) + ' ' + toText(value).toStdString(); };
    switch (value.kind()) {
    case Kind::Empty:
        return "Empty";
    case Kind::Null:
        return "Null";
    case Kind::Integer:
        return with("Integer");
    case Kind::Long:
        return with("Long");
    case Kind::Single:
        return with("Single");
    case Kind::Double:
        return with("Double");
    case Kind::Currency:
        return with("Currency");
    case Kind::Date:
        return with("Date");
    case Kind::String:
        return with("String");
    case Kind::Boolean:
        return with("Boolean");
    case Kind::Byte:
        return with("Byte");
    case Kind::Object:
        return "Object";
    case Kind::Error:
        return with("Error");
    case Kind::Array:
        return "Array";
    }
    return "?";
}

/// What a computation gives, or "error N" when it raises one.
inline std::string outcome(const std::function<Variant()>& computation)
{
    try {
        return describe(computation());
    } catch (const RuntimeError& error) {
        return "error " + std::to_string(error.number());
    }
}

} // namespace zan::values
