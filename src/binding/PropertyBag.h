#pragma once

#include "values/Name.h"
#include "values/Variant.h"

#include <QString>

#include <optional>
#include <vector>

namespace zan::binding {

class Object;
struct Member;

/// A host's store for the design values of one control: named values in the order they were written. Names ignore
/// case. A value that equals its default is left out, so that a bag holds only what somebody changed. Of an object that
/// stands for a value (a font) the bag keeps a copy, and gives copies.
class PropertyBag
{
public:
    struct Entry
    {
        values::Name name;
        values::Variant value;
    };

    /// The stored value, or the default when the bag has none of that name.
    values::Variant ReadProperty(values::Name name, const values::Variant& defaultValue = {}) const;
    /// Stores the value, or leaves it out (and forgets an earlier one) when it equals the default.
    void WriteProperty(values::Name name, const values::Variant& value, const values::Variant& defaultValue);
    /// Stores the value whatever it is: a property that is written without a default.
    void WriteProperty(values::Name name, const values::Variant& value);

    bool contains(values::Name name) const noexcept;
    const std::vector<Entry>& entries() const noexcept { return m_entries; }
    void clear() { m_entries.clear(); }

private:
    std::vector<Entry>::iterator find(values::Name name);
    std::vector<Entry> m_entries;
};

/// Gives one design value of an object the value in the bag, or its default without a bag or where the bag has none. A
/// value that the property does not accept counts as its default: whoever wrote the bag, it is no value of this property.
void readStored(Object& object, const Member& member, const PropertyBag* bag);
/// Stores one design value, unless it is the default.
void writeStored(Object& object, const Member& member, PropertyBag& bag);

} // namespace zan::binding
