#pragma once

#include "binding/Member.h"
#include "binding/MemberTable.h"
#include "values/Colour.h"
#include "values/Convert.h"

#include <QString>

/// Properties by the rows of their classes: what a script writes and reads, also where no script gets, on the controls
/// that hold a design.
namespace zan::test {

inline const binding::Member& rowOf(const binding::Object& object, const char* name)
{
    const binding::Member* row = object.members().find(values::Name(name));
    if (!row)
        values::raise(values::ErrorNumber::NoSuchMember);
    return *row;
}

inline void put(binding::Object& object, const char* name, const values::Variant& value)
{
    const binding::Member& row = rowOf(object, name);
    row.put(row, object, {}, value);
}

inline void put(binding::Object& object, const char* name, values::Colour colour)
{
    put(object, name, values::Variant(colour.code));
}

inline values::Variant get(binding::Object& object, const char* name)
{
    return rowOf(object, name).get(object, {});
}

inline double numberOf(binding::Object& object, const char* name)
{
    return values::toDouble(get(object, name));
}

inline bool flagOf(binding::Object& object, const char* name)
{
    return values::toBoolean(get(object, name));
}

inline values::Colour colourOf(binding::Object& object, const char* name)
{
    return {values::toLong(get(object, name))};
}

} // namespace zan::test
