#pragma once

#include "binding/Object.h"
#include "values/Colour.h"
#include "values/Convert.h"

#include <limits>
#include <optional>
#include <type_traits>

namespace zan::binding {

/// Type of a property or of a method's result, as member tables publish it.
enum class ValueType : std::uint8_t {
    None, ///< a method without a result
    Variant,
    Boolean,
    Byte,
    Integer,
    Long,
    Single,
    Double,
    Currency,
    Date,
    String,
    Colour,
    Object,
};

/// How one C++ type travels through a Variant: `from` converts with the classic rules and raises where they do.
template <class T>
struct Marshal;

template <>
struct Marshal<Variant>
{
    static constexpr ValueType type = ValueType::Variant;
    static Variant from(const Variant& value) { return value; }
    static Variant to(Variant value) { return value; }
};

template <class T, ValueType Type, T (*Convert)(const Variant&)>
struct PlainMarshal
{
    static constexpr ValueType type = Type;
    static T from(const Variant& value) { return Convert(value); }
    static Variant to(T value) { return Variant(std::move(value)); }
};

template <>
struct Marshal<bool> : PlainMarshal<bool, ValueType::Boolean, values::toBoolean>
{};
template <>
struct Marshal<std::uint8_t> : PlainMarshal<std::uint8_t, ValueType::Byte, values::toByte>
{};
template <>
struct Marshal<std::int16_t> : PlainMarshal<std::int16_t, ValueType::Integer, values::toInteger>
{};
template <>
struct Marshal<std::int32_t> : PlainMarshal<std::int32_t, ValueType::Long, values::toLong>
{};
template <>
struct Marshal<float> : PlainMarshal<float, ValueType::Single, values::toSingle>
{};
template <>
struct Marshal<double> : PlainMarshal<double, ValueType::Double, values::toDouble>
{};
template <>
struct Marshal<values::Currency> : PlainMarshal<values::Currency, ValueType::Currency, values::toCurrency>
{};
template <>
struct Marshal<values::Date> : PlainMarshal<values::Date, ValueType::Date, values::toDate>
{};
template <>
struct Marshal<QString> : PlainMarshal<QString, ValueType::String, values::toText>
{};

template <>
struct Marshal<values::Colour>
{
    static constexpr ValueType type = ValueType::Colour;
    static values::Colour from(const Variant& value) { return {values::toLong(value)}; }
    static Variant to(values::Colour value) { return Variant(value.code); }
};

/// A whole number from 0 to 255 that travels as an Integer: most choices and counts of a control. Others raise 380.
enum Small : std::uint8_t {};

template <>
struct Marshal<Small>
{
    static constexpr ValueType type = ValueType::Integer;
    static Small from(const Variant& value)
    {
        const std::int16_t number = values::toInteger(value);
        if (number < 0 || number > std::numeric_limits<std::uint8_t>::max())
            values::raise(ErrorNumber::InvalidPropertyValue);
        return Small(number);
    }
    static Variant to(Small value) { return Variant(std::int16_t(value)); }
};

/// Enumerations travel as Long.
template <class T>
requires std::is_enum_v<T>
struct Marshal<T>
{
    static constexpr ValueType type = ValueType::Long;
    static T from(const Variant& value) { return static_cast<T>(values::toLong(value)); }
    static Variant to(T value) { return Variant(static_cast<std::int32_t>(value)); }
};

/// Objects: Nothing is the empty reference, an object of another class raises 13, a plain value 424.
template <class T>
struct Marshal<Ref<T>>
{
    static constexpr ValueType type = ValueType::Object;
    static Ref<T> from(const Variant& value)
    {
        if (!value.isObject())
            values::raise(ErrorNumber::ObjectRequired);
        if (!value.object())
            return {};
        T* object = dynamic_cast<T*>(value.object());
        if (!object)
            values::raise(ErrorNumber::TypeMismatch);
        return Ref<T>(object);
    }
    static Variant to(const Ref<T>& value) { return Variant(value); }
};

/// An argument that may be left out.
template <class T>
struct Marshal<std::optional<T>>
{
    static constexpr ValueType type = Marshal<T>::type;
    static std::optional<T> from(const Variant& value)
    {
        if (value.isMissing())
            return std::nullopt;
        return Marshal<T>::from(value);
    }
    static Variant to(const std::optional<T>& value) { return value ? Marshal<T>::to(*value) : Variant(); }
};

template <class T>
inline constexpr bool IsOptional = false;
template <class T>
inline constexpr bool IsOptional<std::optional<T>> = true;

} // namespace zan::binding
