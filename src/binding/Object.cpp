#include "binding/Object.h"

#include "binding/MemberTable.h"
#include "values/Failure.h"

#include <cmath>
#include <limits>

namespace zan::binding {

namespace {

const Member& memberFor(const MemberTable& table, Name name)
{
    const Member* member = name.isEmpty() ? table.defaultMember() : table.find(name);
    if (!member)
        values::raise(ErrorNumber::NoSuchMember);
    return *member;
}

void checkArgumentCount(const Member& member, std::size_t count)
{
    if (count < member.requiredArguments || count > member.allowedArguments)
        values::raise(ErrorNumber::WrongArgumentCount);
}

template <class T>
std::optional<Variant> wholeNumber(double number)
{
    const double rounded = std::nearbyint(number); // half to even, the platform's rounding
    if (!(rounded >= double(std::numeric_limits<T>::min()) && rounded <= double(std::numeric_limits<T>::max())))
        return std::nullopt;
    return Variant(static_cast<T>(rounded));
}

/// The value that an element's text stands for, for a property of this type that is no text; nothing when it has no
/// place there.
std::optional<Variant> numberFromText(ValueType type, QStringView text)
{
    if (type == ValueType::Object || type == ValueType::None)
        return std::nullopt;
    const double number = values::val(text);
    if (!std::isfinite(number)) // more digits than any number has room for
        return std::nullopt;
    switch (type) {
    case ValueType::Boolean:
        return Variant(number != 0);
    case ValueType::Byte:
        return wholeNumber<std::uint8_t>(number);
    case ValueType::Integer:
        return wholeNumber<std::int16_t>(number);
    case ValueType::Long:
    case ValueType::Colour:
        return wholeNumber<std::int32_t>(number);
    default:
        return Variant(number);
    }
}

AccessStatus assign(Object& object, const Member& member, const Variant& value) noexcept
{
    if (member.requiredArguments > 0)
        return AccessStatus::Refused;
    try {
        const Ref<Object> alive(&object);
        member.put(member, object, {}, value);
        return AccessStatus::Ok;
    } catch (...) { // a member may call code of the host, which may throw anything
        return AccessStatus::Refused;
    }
}

} // namespace

QString Object::typeName() const
{
    return members().className();
}

Variant Object::defaultValue()
{
    const Member* member = members().defaultMember();
    if (!member || member->requiredArguments > 0 || !member->get)
        values::raise(ErrorNumber::NoSuchMember);
    return member->get(*this, {});
}

Variant Object::invoke(Name name, Access access, Arguments arguments)
{
    const Ref<Object> alive(this); // the member may let the last other reference go
    const Member& member = memberFor(members(), name);
    if (access == Access::Get) {
        if (!member.get)
            values::raise(ErrorNumber::WriteOnlyProperty);
        if (member.kind == Member::Kind::Property && member.allowedArguments == 0 && !arguments.empty())
            return objectOf(member.get(*this, {})).invoke(Name(), Access::Get, arguments);
        checkArgumentCount(member, arguments.size());
        return member.get(*this, arguments);
    }
    if (member.kind == Member::Kind::Method)
        values::raise(ErrorNumber::NoSuchMember);
    if (!member.put)
        values::raise(ErrorNumber::ReadOnlyProperty);
    if (arguments.empty())
        values::raise(ErrorNumber::WrongArgumentCount);
    checkArgumentCount(member, arguments.size() - 1);
    member.put(member, *this, arguments.first(arguments.size() - 1), arguments.back());
    return {};
}

std::unique_ptr<Enumerator> Object::enumerate()
{
    return nullptr;
}

AccessStatus Object::tryGet(Name name, Variant& result) noexcept
{
    const Member* member = members().find(name);
    if (!member)
        return AccessStatus::UnknownName;
    if (!member->get)
        return AccessStatus::WriteOnly;
    try {
        result = invoke(name, Access::Get, {});
        return AccessStatus::Ok;
    } catch (...) {
        return AccessStatus::Refused;
    }
}

AccessStatus Object::tryPut(Name name, const Variant& value) noexcept
{
    const Member* member = members().find(name);
    if (!member)
        return AccessStatus::UnknownName;
    return member->put ? assign(*this, *member, value) : AccessStatus::ReadOnly;
}

AccessStatus Object::tryPutText(Name name, const QString& text) noexcept
{
    const Member* member = members().find(name);
    return member ? tryPutText(*member, text) : AccessStatus::UnknownName;
}

AccessStatus Object::tryPutText(const Member& member, const QString& text) noexcept
{
    if (!member.put)
        return AccessStatus::ReadOnly;
    return member.takesText() ? assign(*this, member, Variant(text)) : tryPutText(member, QStringView(text));
}

AccessStatus Object::tryPutText(const Member& member, QStringView text) noexcept
{
    if (!member.put)
        return AccessStatus::ReadOnly;
    std::optional<Variant> value;
    static_cast<void>(values::attempt([&] { // it takes memory
        value = member.takesText() ? Variant(text.toString()) : numberFromText(member.type, text);
    }));
    return value ? assign(*this, member, *value) : AccessStatus::Refused;
}

Object& objectOf(const Variant& value)
{
    if (!value.isObject())
        values::raise(ErrorNumber::ObjectRequired);
    if (!value.object())
        values::raise(ErrorNumber::ObjectNotSet);
    return static_cast<Object&>(*value.object());
}

} // namespace zan::binding
