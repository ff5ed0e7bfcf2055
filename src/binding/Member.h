#pragma once

#include "binding/Marshal.h"

#include <limits>
#include <type_traits>
#include <utility>

namespace zan::binding {

/// The numbers that a property takes; the rest is refused with 380. Without ends: every number.
struct Range
{
    double least = -std::numeric_limits<double>::infinity();
    double most = std::numeric_limits<double>::infinity();

    bool isBounded() const noexcept
    {
        return least > -std::numeric_limits<double>::infinity() || most < std::numeric_limits<double>::infinity();
    }
    /// False for what is no number, where there are ends.
    bool holds(double number) const noexcept { return !isBounded() || (number >= least && number <= most); }
};

/// One of the numbers from 0 to this one.
inline Range oneOf(int highest)
{
    return {0, double(highest)};
}

inline Range between(double least, double most)
{
    return {least, most};
}

inline Range atLeast(double least)
{
    return {least, std::numeric_limits<double>::infinity()};
}

struct Member;

namespace detail {

template <class F>
struct FieldOf;
template <class T, class C>
struct FieldOf<T C::*>
{
    using Type = T;
    using Class = C;
};

template <class T>
struct LiteralOf
{
    using Type = T;
};
template <>
struct LiteralOf<Small>
{
    using Type = std::uint8_t;
};

/// What stands for a value of the field's type in a row of a table.
template <auto Field>
using Literal = typename LiteralOf<typename FieldOf<decltype(Field)>::Type>::Type;

template <auto Field>
void layField(Member& member, const Literal<Field>& defaultValue);

} // namespace detail

/// One late-bound member of a class. A property may take index arguments; a method has no setter.
struct Member
{
    enum class Kind : std::uint8_t { Property, Method };
    using Getter = Variant (*)(Object& object, Arguments arguments);
    using Setter = void (*)(const Member& member, Object& object, Arguments indices, const Variant& value);
    using Copier = void (*)(Object& object, const Object& source);

    Name name;
    Kind kind = Kind::Property;
    ValueType type = ValueType::Variant;
    bool isDefault = false; ///< the member that stands for the object where a plain value is needed
    std::uint8_t requiredArguments = 0;
    std::uint8_t allowedArguments = 0;
    Getter get = nullptr; ///< null for a property that can only be written
    Setter put = nullptr; ///< null for a method and for a property that can only be read
    /// Takes the value over from another object of the class, untold; null for what a copy of a design leaves alone.
    Copier copy = nullptr;
    Range range;      ///< the numbers that it takes
    Variant fallback; ///< of a property that has a field: the value of an object that nobody has changed
    bool hasField = false;
    bool isStored = false; ///< a design value: it belongs into a property bag

    /// Whether the text of a document element is the value itself, not a number to be read from it.
    bool takesText() const noexcept { return type == ValueType::String || type == ValueType::Variant; }
    /// The same member, as the class's default member.
    Member asDefault() const
    {
        Member member = *this;
        member.isDefault = true;
        return member;
    }
    /// The same hand-written property, as a design value without a default: whoever reads and writes bags knows what
    /// to do with it.
    Member stored() const
    {
        Member member = *this;
        member.isStored = true;
        return member;
    }
    /// The same property, but copied only: no bag keeps it.
    Member notStored() const
    {
        Member member = *this;
        member.isStored = false;
        return member;
    }
    /// The same property, but each object's own: neither copied nor kept.
    Member notDesign() const
    {
        Member member = notStored();
        member.copy = nullptr;
        return member;
    }
    /// The same hand-written property, whose value lies in a field: a design value with this default.
    template <auto Field>
    Member keptIn(const detail::Literal<Field>& defaultValue) const
    {
        Member member = *this;
        detail::layField<Field>(member, defaultValue);
        return member;
    }
};

/// A write to a field, for a hook that has to know more than that the value has changed.
struct Written
{
    const Member& member;
    bool isChanged;
};

/// The C++ object that a late-bound object stands for. Objects that are only a face of something else, a widget
/// say, specialise it; they raise 91 when that is gone.
template <class C>
struct Self
{
    static C& of(Object& object) { return static_cast<C&>(object); }
};

namespace detail {

template <auto Field>
auto& fieldOf(Object& object)
{
    return Self<typename FieldOf<decltype(Field)>::Class>::of(object).*Field;
}

template <auto Field>
void layField(Member& member, const Literal<Field>& defaultValue)
{
    using T = typename FieldOf<decltype(Field)>::Type;
    member.hasField = member.isStored = true;
    member.fallback = Marshal<T>::to(T(defaultValue));
    member.copy = [](Object& object, const Object& source) {
        fieldOf<Field>(object) = fieldOf<Field>(const_cast<Object&>(source)); // Self knows no const objects
    };
}

template <class F>
struct HookOf;
template <class C>
struct HookOf<void (C::*)()>
{
    using Class = C;
    static constexpr bool WantsWrite = false;
};
template <class C>
struct HookOf<void (C::*)(const Written&)>
{
    using Class = C;
    static constexpr bool WantsWrite = true;
};

template <auto Hook>
void callHook(Object& object, [[maybe_unused]] const Written& written)
{
    using H = HookOf<decltype(Hook)>;
    auto& self = Self<typename H::Class>::of(object);
    if constexpr (H::WantsWrite)
        (self.*Hook)(written);
    else if (written.isChanged)
        (self.*Hook)();
}

template <auto Field, auto Hook>
void putField(const Member& member, Object& object, const Variant& value)
{
    using T = typename FieldOf<decltype(Field)>::Type;
    T next = Marshal<T>::from(value);
    if constexpr (std::is_arithmetic_v<T> || std::is_same_v<T, Small>) {
        if (!member.range.holds(double(next)))
            values::raise(ErrorNumber::InvalidPropertyValue);
    }
    T& field = fieldOf<Field>(object);
    const bool isChanged = !(field == next);
    if (isChanged)
        field = std::move(next);
    if constexpr (!std::is_null_pointer_v<decltype(Hook)>)
        callHook<Hook>(object, {member, isChanged});
}

} // namespace detail

/// A property that is a field and nothing more: written, it checks the range, compares, stores and calls the hook,
/// `void hook()`, after a change. A `void hook(const Written&)` is called after every write, for properties whose write
/// itself acts. It is a design value: copied and kept in a bag.
template <auto Field, auto Hook = nullptr>
Member field(const char* name, const detail::Literal<Field>& defaultValue = {}, Range range = {})
{
    using F = detail::FieldOf<decltype(Field)>;
    Member member;
    member.name = Name(name);
    member.type = Marshal<typename F::Type>::type;
    member.range = range;
    detail::layField<Field>(member, defaultValue);
    member.get = [](Object& object, Arguments) {
        return Marshal<typename F::Type>::to(detail::fieldOf<Field>(object));
    };
    member.put = [](const Member& row, Object& object, Arguments, const Variant& value) {
        detail::putField<Field, Hook>(row, object, value);
    };
    return member;
}

} // namespace zan::binding
