#pragma once

#include "binding/Member.h"

#include <tuple>
#include <utility>

namespace zan::binding {

namespace detail {

template <class F>
struct Signature;
template <class R, class C, class... A>
struct Signature<R (C::*)(A...)>
{
    using Result = std::remove_cvref_t<R>;
    using Class = C;
    using Parameters = std::tuple<std::remove_cvref_t<A>...>;
};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...) const> : Signature<R (C::*)(A...)>
{};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...) noexcept> : Signature<R (C::*)(A...)>
{};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...) const noexcept> : Signature<R (C::*)(A...)>
{};

inline const Variant& argumentAt(Arguments arguments, std::size_t place)
{
    static const Variant missing = Variant::missing();
    return place < arguments.size() ? arguments[place] : missing;
}

template <class Parameters, std::size_t... I>
constexpr std::uint8_t countRequired(std::index_sequence<I...>)
{
    std::size_t required = 0;
    ((IsOptional<std::tuple_element_t<I, Parameters>> ? void() : void(required = I + 1)), ...);
    return std::uint8_t(required);
}

template <auto Function, class S, std::size_t... I>
Variant callMember(Object& object, Arguments arguments, std::index_sequence<I...>)
{
    auto& self = Self<typename S::Class>::of(object);
    if constexpr (std::is_void_v<typename S::Result>) {
        (self.*
         Function)(Marshal<std::tuple_element_t<I, typename S::Parameters>>::from(argumentAt(arguments, I))...);
        return {};
    } else {
        return Marshal<typename S::Result>::to((self.*Function)(
            Marshal<std::tuple_element_t<I, typename S::Parameters>>::from(argumentAt(arguments, I))...));
    }
}

template <auto Function, class S, std::size_t... I>
void putMember(Object& object, [[maybe_unused]] Arguments indices, const Variant& value, std::index_sequence<I...>)
{
    auto& self = Self<typename S::Class>::of(object);
    constexpr std::size_t last = sizeof...(I);
    (self.*Function)(Marshal<std::tuple_element_t<I, typename S::Parameters>>::from(argumentAt(indices, I))...,
                     Marshal<std::tuple_element_t<last, typename S::Parameters>>::from(value));
}

template <class R>
constexpr ValueType resultType()
{
    if constexpr (std::is_void_v<R>)
        return ValueType::None;
    else
        return Marshal<R>::type;
}

template <auto Function>
Member readMember(const char* name, Member::Kind kind)
{
    using S = Signature<decltype(Function)>;
    constexpr std::size_t count = std::tuple_size_v<typename S::Parameters>;
    Member member;
    member.name = Name(name);
    member.kind = kind;
    member.type = resultType<typename S::Result>();
    member.requiredArguments = countRequired<typename S::Parameters>(std::make_index_sequence<count>());
    member.allowedArguments = std::uint8_t(count);
    member.get = [](Object& object, Arguments arguments) {
        return callMember<Function, S>(object, arguments, std::make_index_sequence<count>());
    };
    return member;
}

template <auto Function>
Member::Setter setter()
{
    using S = Signature<decltype(Function)>;
    constexpr std::size_t indices = std::tuple_size_v<typename S::Parameters> - 1;
    return [](const Member&, Object& object, Arguments arguments, const Variant& value) {
        putMember<Function, S>(object, arguments, value, std::make_index_sequence<indices>());
    };
}

} // namespace detail

/// Takes a member of the base away from a derived class.
inline Member absent(const char* name)
{
    Member member;
    member.name = Name(name);
    return member;
}

/// A property that can be read and written. Index parameters come first, the value last.
template <auto Get, auto Put>
Member property(const char* name)
{
    Member member = detail::readMember<Get>(name, Member::Kind::Property);
    member.put = detail::setter<Put>();
    return member;
}

/// A property that can only be read.
template <auto Get>
Member readOnly(const char* name)
{
    return detail::readMember<Get>(name, Member::Kind::Property);
}

/// A property that can only be written.
template <auto Put>
Member writeOnly(const char* name)
{
    using S = detail::Signature<decltype(Put)>;
    constexpr std::size_t count = std::tuple_size_v<typename S::Parameters>;
    Member member;
    member.name = Name(name);
    member.type = Marshal<std::tuple_element_t<count - 1, typename S::Parameters>>::type;
    member.requiredArguments = member.allowedArguments = std::uint8_t(count - 1);
    member.put = detail::setter<Put>();
    return member;
}

/// A method. Parameters of type std::optional may be left out.
template <auto Function>
Member method(const char* name)
{
    return detail::readMember<Function>(name, Member::Kind::Method);
}

} // namespace zan::binding
