#pragma once

// Integers, Longs and Doubles, which nearly all operations of a script are about, without a call to the general rules.
// Each of these functions is made part of the operation that uses it.

#include "script/compiler/Slot.h"
#include "script/syntax/Ast.h"

#include <cmath>
#include <cstdint>
#include <type_traits>

namespace zan::script {

/// Stores a plain value; the usual slot holds a plain value before, too.
template <class Place, class T>
inline void put(Place& slot, T value)
{
    if (!slot.isCounted())
        new (&slot) Place(value);
    else
        slot = values::Variant(value);
}

inline const values::Variant& valueOf(const values::Variant& value) noexcept
{
    return value;
}
inline const values::Variant& valueOf(const Slot& slot) noexcept
{
    return slot.value();
}

/// The kind is looked at first: what is no number need not be a value.
template <class Place>
inline bool integral(const Place& place, std::int32_t& result) noexcept
{
    switch (place.kind()) {
    case values::Kind::Integer:
        result = valueOf(place).integer();
        return true;
    case values::Kind::Long:
        result = valueOf(place).longInteger();
        return true;
    default:
        return false;
    }
}

template <class Place>
inline bool numeric(const Place& place, double& result) noexcept
{
    switch (place.kind()) {
    case values::Kind::Double:
        result = valueOf(place).real();
        return true;
    case values::Kind::Integer:
        result = valueOf(place).integer();
        return true;
    case values::Kind::Long:
        result = valueOf(place).longInteger();
        return true;
    default:
        return false;
    }
}

/// A sum or product of two Integers stays one while it fits, then is a Long, then a Double.
template <class Place>
inline void putWhole(Place& slot, std::int64_t value, bool narrow)
{
    if (narrow && value == std::int16_t(value))
        put(slot, std::int16_t(value));
    else if (value == std::int32_t(value))
        put(slot, std::int32_t(value));
    else
        put(slot, double(value));
}

inline bool bothIntegers(const Slot& left, const Slot& right) noexcept
{
    return left.kind() == values::Kind::Integer && right.kind() == values::Kind::Integer;
}

/// Division always gives a Double; by zero it is no finite one, which the general rules turn into their error.
struct Quotient
{
    double operator()(double left, double right) const noexcept { return left / right; }
};

/// result := left and right, put together; false for anything but two of these numbers with a finite result.
template <class Step>
inline bool calculate(Slot& result, const Slot& left, const Slot& right, Step step) noexcept
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    double p = 0;
    double q = 0;
    if constexpr (!std::is_same_v<Step, Quotient>) {
        if (integral(left, x) && integral(right, y)) {
            putWhole(result, step(std::int64_t(x), std::int64_t(y)), bothIntegers(left, right));
            return true;
        }
    }
    if (!numeric(left, p) || !numeric(right, q) || !std::isfinite(p = step(p, q)))
        return false;
    put(result, p);
    return true;
}

/// result := left And right, left Or right for conditions and masks: two Booleans, or two whole numbers of these; false
/// for anything else.
inline bool combineBits(Operator op, Slot& result, const Slot& left, const Slot& right) noexcept
{
    if (op != Operator::And && op != Operator::Or)
        return false;
    const bool both = op == Operator::And;
    std::int32_t x = 0;
    std::int32_t y = 0;
    if (integral(left, x) && integral(right, y)) {
        putWhole(result, both ? x & y : x | y, bothIntegers(left, right));
        return true;
    }
    if (!left.is(values::Kind::Boolean) || !right.is(values::Kind::Boolean))
        return false;
    const bool first = left.value().boolean();
    const bool second = right.value().boolean();
    put(result, both ? first && second : first || second);
    return true;
}

/// Whether the comparison holds between two of these numbers; false for anything else.
template <class Comparison>
inline bool compareNumbers(const Slot& left, const Slot& right, Comparison comparison, bool& holds) noexcept
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    double p = 0;
    double q = 0;
    if (integral(left, x) && integral(right, y))
        holds = comparison(x, y);
    else if (numeric(left, p) && numeric(right, q))
        holds = comparison(p, q);
    else
        return false;
    return true;
}

/// The whole step of one Integer, the loop that nearly every script writes; false for any other. The state is the
/// loop's limit and its step.
inline bool stepWhole(values::Variant& variable, const Slot* state, bool& again)
{
    std::int32_t number = 0;
    std::int32_t limit = 0;
    if (state[1].kind() != values::Kind::Integer || !integral(variable, number) || !integral(state[0], limit))
        return false;
    const std::int32_t step = state[1].value().integer();
    const std::int64_t sum = std::int64_t(number) + step;
    putWhole(variable, sum, variable.kind() == values::Kind::Integer);
    again = step >= 0 ? sum <= limit : sum >= limit;
    return true;
}

} // namespace zan::script
