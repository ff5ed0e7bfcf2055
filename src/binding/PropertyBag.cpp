#include "binding/PropertyBag.h"

#include "binding/Member.h"
#include "values/Convert.h"

#include <algorithm>

namespace zan::binding {

using values::Kind;
using values::Name;
using values::Variant;

namespace {

/// Whether two values are the same setting: numbers by value whatever their width, objects by identity. Kinds that
/// cannot be told apart safely (arrays, Null) count as different, so that they are stored.
bool sameSetting(const Variant& a, const Variant& b)
{
    if (a.isNumber() && b.isNumber())
        return values::toDouble(a) == values::toDouble(b);
    if (a.kind() != b.kind())
        return false;
    switch (a.kind()) {
    case Kind::Empty:
        return true;
    case Kind::String:
        return a.text() == b.text();
    case Kind::Object:
        return a.object() == b.object();
    case Kind::Date:
        return a.date() == b.date();
    default:
        return false;
    }
}

/// A bag shares nothing with a control: what is kept, and what is given, stays as it is whatever becomes of the other.
Variant unshared(const Variant& value)
{
    if (!value.isObject() || !value.object())
        return value;
    const Ref<Object> copy = objectOf(value).valueCopy();
    return copy ? Variant(copy) : value;
}

} // namespace

std::vector<PropertyBag::Entry>::iterator PropertyBag::find(Name name)
{
    return std::find_if(m_entries.begin(), m_entries.end(),
                        [&](const Entry& entry) { return entry.name.equalsIgnoringCase(name); });
}

bool PropertyBag::contains(Name name) const noexcept
{
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](const Entry& entry) { return entry.name.equalsIgnoringCase(name); });
}

Variant PropertyBag::ReadProperty(Name name, const Variant& defaultValue) const
{
    for (const Entry& entry : m_entries) {
        if (entry.name.equalsIgnoringCase(name))
            return unshared(entry.value);
    }
    return defaultValue;
}

void PropertyBag::WriteProperty(Name name, const Variant& value, const Variant& defaultValue)
{
    if (!sameSetting(value, defaultValue)) {
        WriteProperty(name, value);
        return;
    }
    if (const auto found = find(name); found != m_entries.end())
        m_entries.erase(found);
}

void PropertyBag::WriteProperty(Name name, const Variant& value)
{
    if (const auto found = find(name); found != m_entries.end())
        found->value = unshared(value);
    else
        m_entries.push_back({name, unshared(value)});
}

void readStored(Object& object, const Member& member, const PropertyBag* bag)
{
    const Variant value = bag ? bag->ReadProperty(member.name, member.fallback) : member.fallback;
    try {
        member.put(member, object, {}, value);
    } catch (const RuntimeError&) {
        member.put(member, object, {}, member.fallback);
    }
}

void writeStored(Object& object, const Member& member, PropertyBag& bag)
{
    bag.WriteProperty(member.name, member.get(object, {}), member.fallback);
}

} // namespace zan::binding
