#include "values/Arithmetic.h"
#include "values/Convert.h"

namespace zan::values {

namespace {

/// The kind in which bits are combined; the wider of two operands counts.
enum class Width { Boolean, Byte, Integer, Long };

struct Bits
{
    std::int32_t value = 0;
    Width width = Width::Long;
    bool isNull = false;
};

/// A text counts as a Long where it is a number, as a Boolean where it is the word for one.
Bits bitsOfText(const Variant& text)
{
    std::int32_t whole = 0;
    bool word = false;
    const ErrorNumber error = tryToLong(text, whole);
    if (error == ErrorNumber::None)
        return {whole, Width::Long, false};
    if (error != ErrorNumber::TypeMismatch || tryToBoolean(text, word) != ErrorNumber::None)
        raise(error);
    return {word ? -1 : 0, Width::Boolean, false};
}

Bits bitsOf(const Variant& value)
{
    switch (value.kind()) {
    case Kind::Null:
        return {0, Width::Boolean, true};
    case Kind::Boolean:
        return {value.boolean() ? -1 : 0, Width::Boolean, false};
    case Kind::Byte:
        return {value.byte(), Width::Byte, false};
    case Kind::Integer:
        return {value.integer(), Width::Integer, false};
    case Kind::String:
        return bitsOfText(value);
    default:
        return {toLong(value), Width::Long, false}; // Empty too
    }
}

/// Null takes the width of its partner. A Boolean beside a Byte is an Integer, because true would not fit a
/// Byte.
Width commonWidth(const Bits& a, const Bits& b) noexcept
{
    if (a.isNull || b.isNull)
        return a.isNull ? b.width : a.width;
    if (a.width == b.width)
        return a.width;
    return std::max({a.width, b.width, Width::Integer});
}

Variant result(std::int32_t bits, Width width)
{
    switch (width) {
    case Width::Boolean:
        return bits != 0;
    case Width::Byte:
        return std::uint8_t(bits);
    case Width::Integer:
        return std::int16_t(bits);
    case Width::Long:
        break;
    }
    return bits;
}

struct BitsPair
{
    Bits left;
    Bits right;
    Width width;
};

BitsPair bitsPair(const Variant& a, const Variant& b)
{
    const Bits left = bitsOf(a.isObject() ? plainValue(a) : a);
    const Bits right = bitsOf(b.isObject() ? plainValue(b) : b);
    return {left, right, commonWidth(left, right)};
}

/// Or of two operands of which either may be Null: a value that is not 0 decides on its own.
Variant orOf(const Bits& left, const Bits& right, Width width)
{
    if (left.isNull && right.isNull)
        return Variant::null();
    if (left.isNull || right.isNull) {
        const std::int32_t known = left.isNull ? right.value : left.value;
        return known != 0 ? result(known, width) : Variant::null();
    }
    return result(left.value | right.value, width);
}

} // namespace

Variant logicalAnd(const Variant& a, const Variant& b)
{
    if (a.is(Kind::Boolean) && b.is(Kind::Boolean))
        return a.boolean() && b.boolean();
    const BitsPair pair = bitsPair(a, b);
    if (pair.left.isNull && pair.right.isNull)
        return Variant::null();
    if (pair.left.isNull || pair.right.isNull) {
        // 0 decides on its own.
        const std::int32_t known = pair.left.isNull ? pair.right.value : pair.left.value;
        return known == 0 ? result(0, pair.width) : Variant::null();
    }
    return result(pair.left.value & pair.right.value, pair.width);
}

Variant logicalOr(const Variant& a, const Variant& b)
{
    if (a.is(Kind::Boolean) && b.is(Kind::Boolean))
        return a.boolean() || b.boolean();
    const BitsPair pair = bitsPair(a, b);
    return orOf(pair.left, pair.right, pair.width);
}

Variant logicalXor(const Variant& a, const Variant& b)
{
    const BitsPair pair = bitsPair(a, b);
    if (pair.left.isNull || pair.right.isNull)
        return Variant::null();
    return result(pair.left.value ^ pair.right.value, pair.width);
}

Variant logicalEqv(const Variant& a, const Variant& b)
{
    const BitsPair pair = bitsPair(a, b);
    if (pair.left.isNull || pair.right.isNull)
        return Variant::null();
    return result(~(pair.left.value ^ pair.right.value), pair.width);
}

Variant logicalImp(const Variant& a, const Variant& b)
{
    BitsPair pair = bitsPair(a, b);
    pair.left.value = ~pair.left.value;
    return orOf(pair.left, pair.right, pair.width);
}

Variant logicalNot(const Variant& a)
{
    const Bits bits = bitsOf(a.isObject() ? plainValue(a) : a);
    return bits.isNull ? Variant::null() : result(~bits.value, bits.width);
}

} // namespace zan::values
