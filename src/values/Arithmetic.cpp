#include "values/Arithmetic.h"

#include "values/Calendar.h"
#include "values/Convert.h"

#include <cmath>
#include <limits>

namespace zan::values {

namespace {

/// What an operand counts as, in the order of growing precision.
enum class Level { Byte, Boolean, Integer, Long, Single, Double, Currency, Date };

/// An operand without objects, Null, Empty and text.
struct Term
{
    Level level = Level::Integer;
    std::int64_t whole = 0; ///< up to Long, and the ten-thousandths of a Currency
    double real = 0;        ///< the value, for every level

    bool isWhole() const noexcept { return level <= Level::Long; }
};

Term wholeTerm(Level level, std::int64_t value) noexcept
{
    return {level, value, double(value)};
}

Term termOf(const Variant& value)
{
    switch (value.kind()) {
    case Kind::Empty:
        return wholeTerm(Level::Integer, 0);
    case Kind::Boolean:
        return wholeTerm(Level::Boolean, value.boolean() ? -1 : 0);
    case Kind::Byte:
        return wholeTerm(Level::Byte, value.byte());
    case Kind::Integer:
        return wholeTerm(Level::Integer, value.integer());
    case Kind::Long:
        return wholeTerm(Level::Long, value.longInteger());
    case Kind::Single:
        return {Level::Single, 0, double(value.single())};
    case Kind::Double:
        return {Level::Double, 0, value.real()};
    case Kind::Currency:
        return {Level::Currency, value.currency().scaled, double(value.currency().scaled) / 10000};
    case Kind::Date:
        return {Level::Date, 0, value.real()};
    default:
        return {Level::Double, 0, toDouble(value)};
    }
}

Variant realResult(double value)
{
    if (!std::isfinite(value))
        raise(ErrorNumber::Overflow);
    return value;
}

Variant singleResult(double value)
{
    const bool fits = std::fabs(value) <= double(std::numeric_limits<float>::max());
    return fits ? Variant(float(value)) : realResult(value);
}

/// A whole result in the narrowest kind that the operands and the value ask for: Integer, Long, then Double.
Variant wholeResult(Level level, std::int64_t value)
{
    if (level == Level::Byte && value >= 0 && value <= 255)
        return std::uint8_t(value);
    if (level != Level::Long && value >= -32768 && value <= 32767)
        return std::int16_t(value);
    if (value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max())
        return std::int32_t(value);
    return double(value);
}

Variant dateResult(double serial)
{
    if (!isValidDate({serial}))
        return realResult(serial);
    return Date{serial};
}

/// The ten-thousandths of an operand as Currency. Raises 6 where it does not fit.
std::int64_t currencyUnits(const Term& term)
{
    return term.level == Level::Currency ? term.whole : toCurrency(term.real).scaled;
}

/// The product of two Currency values, exact to four decimals, half to even.
Variant currencyProduct(std::int64_t a, std::int64_t b)
{
    __extension__ using Wide = __int128; // a product of two 64-bit numbers always fits
    constexpr Wide Unit = 10000;
    const Wide product = Wide(a) * b;
    Wide result = product / Unit;
    const Wide rest = product % Unit < 0 ? -(product % Unit) : product % Unit;
    if (rest * 2 > Unit || (rest * 2 == Unit && result % 2 != 0))
        result += product < 0 ? -1 : 1;
    if (result < std::numeric_limits<std::int64_t>::min() || result > std::numeric_limits<std::int64_t>::max())
        raise(ErrorNumber::Overflow);
    return Currency{std::int64_t(result)};
}

bool propagatesNull(const Variant& a, const Variant& b)
{
    if (a.isArray() || b.isArray())
        raise(ErrorNumber::TypeMismatch);
    return a.isNull() || b.isNull();
}

/// The kind in which two operands are added, subtracted or multiplied. A Single keeps its kind beside an
/// Integer and gives way to a Double beside a Long, whose digits it could not hold.
Level commonLevel(const Term& a, const Term& b) noexcept
{
    const Level high = std::max(a.level, b.level);
    const Level low = std::min(a.level, b.level);
    if (high == Level::Single && low == Level::Long)
        return Level::Double;
    if (high == Level::Boolean)
        return Level::Integer;
    return high;
}

template <class Real, class Whole>
Variant sumOf(const Term& a, const Term& b, Level level, Real realOperation, Whole wholeOperation)
{
    switch (level) {
    case Level::Single:
        return singleResult(realOperation(a.real, b.real));
    case Level::Double:
        return realResult(realOperation(a.real, b.real));
    case Level::Date:
        return dateResult(realOperation(a.real, b.real));
    case Level::Currency: {
        const std::int64_t left = currencyUnits(a);
        const std::int64_t right = currencyUnits(b);
        std::int64_t result = 0;
        if (wholeOperation(left, right, &result))
            raise(ErrorNumber::Overflow);
        return Currency{result};
    }
    default:
        break;
    }
    std::int64_t result = 0;
    wholeOperation(a.whole, b.whole, &result); // 32-bit operands cannot overflow 64 bits
    return wholeResult(level, result);
}

Variant addNumbers(const Variant& a, const Variant& b)
{
    const Term left = termOf(a);
    const Term right = termOf(b);
    return sumOf(
        left, right, commonLevel(left, right), [](double x, double y) { return x + y; },
        [](std::int64_t x, std::int64_t y, std::int64_t* out) { return __builtin_add_overflow(x, y, out); });
}

/// Resolves objects, then runs the operator again.
Variant withoutObjects(const Variant& a, const Variant& b, Variant (*operation)(const Variant&, const Variant&))
{
    const Variant left = plainValue(a);
    const Variant right = plainValue(b);
    return operation(left, right);
}

/// Both sides of `\` and Mod as whole numbers, and the kind of their result.
struct WholePair
{
    std::int64_t left;
    std::int64_t right;
    Level level;
};

std::int32_t rounded(const Term& term)
{
    if (term.isWhole())
        return std::int32_t(term.whole);
    std::int32_t result = 0;
    if (roundToLong(term.real, result) != ErrorNumber::None)
        raise(ErrorNumber::Overflow);
    return result;
}

WholePair wholePair(const Variant& a, const Variant& b)
{
    const Term left = termOf(a);
    const Term right = termOf(b);
    WholePair pair{rounded(left), rounded(right), commonLevel(left, right)};
    if (pair.level > Level::Long)
        pair.level = Level::Long;
    if (pair.right == 0)
        raise(ErrorNumber::DivisionByZero);
    return pair;
}

} // namespace

Variant add(const Variant& a, const Variant& b)
{
    if (a.kind() == b.kind()) {
        if (a.is(Kind::Double))
            return realResult(a.real() + b.real());
        if (a.is(Kind::Integer))
            return wholeResult(Level::Integer, std::int64_t(a.integer()) + b.integer());
        if (a.is(Kind::Long))
            return wholeResult(Level::Long, std::int64_t(a.longInteger()) + b.longInteger());
        if (a.isText())
            return concatenate(a, b);
    }
    if (a.isObject() || b.isObject())
        return withoutObjects(a, b, add);
    if (propagatesNull(a, b))
        return Variant::null();
    if ((a.isText() && b.isEmpty()) || (a.isEmpty() && b.isText()))
        return a.isText() ? a : b;
    return addNumbers(a, b);
}

Variant subtract(const Variant& a, const Variant& b)
{
    if (a.kind() == b.kind()) {
        if (a.is(Kind::Double))
            return realResult(a.real() - b.real());
        if (a.is(Kind::Integer))
            return wholeResult(Level::Integer, std::int64_t(a.integer()) - b.integer());
        if (a.is(Kind::Long))
            return wholeResult(Level::Long, std::int64_t(a.longInteger()) - b.longInteger());
    }
    if (a.isObject() || b.isObject())
        return withoutObjects(a, b, subtract);
    if (propagatesNull(a, b))
        return Variant::null();
    const Term left = termOf(a);
    const Term right = termOf(b);
    Level level = commonLevel(left, right);
    if (left.level == Level::Date && right.level == Level::Date)
        level = Level::Double; // the time between two dates
    return sumOf(
        left, right, level, [](double x, double y) { return x - y; },
        [](std::int64_t x, std::int64_t y, std::int64_t* out) { return __builtin_sub_overflow(x, y, out); });
}

Variant multiply(const Variant& a, const Variant& b)
{
    if (a.kind() == b.kind()) {
        if (a.is(Kind::Double))
            return realResult(a.real() * b.real());
        if (a.is(Kind::Integer))
            return wholeResult(Level::Integer, std::int64_t(a.integer()) * b.integer());
        if (a.is(Kind::Long))
            return wholeResult(Level::Long, std::int64_t(a.longInteger()) * b.longInteger());
    }
    if (a.isObject() || b.isObject())
        return withoutObjects(a, b, multiply);
    if (propagatesNull(a, b))
        return Variant::null();
    const Term left = termOf(a);
    const Term right = termOf(b);
    const Level level = commonLevel(left, right);
    if (level <= Level::Long)
        return wholeResult(level, left.whole * right.whole);
    if (level == Level::Single)
        return singleResult(left.real * right.real);
    const Level low = std::min(left.level, right.level);
    if (level == Level::Currency && low != Level::Single && low != Level::Double)
        return currencyProduct(currencyUnits(left), currencyUnits(right));
    return realResult(left.real * right.real);
}

Variant divide(const Variant& a, const Variant& b)
{
    if (a.isObject() || b.isObject())
        return withoutObjects(a, b, divide);
    if (propagatesNull(a, b))
        return Variant::null();
    const Term left = termOf(a);
    const Term right = termOf(b);
    if (right.real == 0)
        raise(left.real == 0 ? ErrorNumber::Overflow : ErrorNumber::DivisionByZero);
    const double quotient = left.real / right.real;
    return commonLevel(left, right) == Level::Single ? singleResult(quotient) : realResult(quotient);
}

Variant integerDivide(const Variant& a, const Variant& b)
{
    if (a.isObject() || b.isObject())
        return withoutObjects(a, b, integerDivide);
    if (propagatesNull(a, b))
        return Variant::null();
    const WholePair pair = wholePair(a, b);
    const std::int64_t quotient = pair.left / pair.right;
    if (quotient > std::numeric_limits<std::int32_t>::max())
        raise(ErrorNumber::Overflow);
    return wholeResult(pair.level, quotient);
}

Variant modulo(const Variant& a, const Variant& b)
{
    if (a.isObject() || b.isObject())
        return withoutObjects(a, b, modulo);
    if (propagatesNull(a, b))
        return Variant::null();
    const WholePair pair = wholePair(a, b);
    return wholeResult(pair.level, pair.left % pair.right);
}

Variant power(const Variant& a, const Variant& b)
{
    if (a.isObject() || b.isObject())
        return withoutObjects(a, b, power);
    if (propagatesNull(a, b))
        return Variant::null();
    const double base = termOf(a).real;
    const double exponent = termOf(b).real;
    if ((base < 0 && std::isfinite(exponent) && exponent != std::floor(exponent)) || (base == 0 && exponent < 0))
        raise(ErrorNumber::InvalidCall);
    return realResult(std::pow(base, exponent));
}

Variant negate(const Variant& a)
{
    if (a.isObject())
        return negate(plainValue(a));
    if (propagatesNull(a, a))
        return Variant::null();
    const Term term = termOf(a);
    switch (term.level) {
    case Level::Single:
        return float(-term.real);
    case Level::Double:
        return -term.real;
    case Level::Date:
        return dateResult(-term.real);
    case Level::Currency:
        if (term.whole == std::numeric_limits<std::int64_t>::min())
            raise(ErrorNumber::Overflow);
        return Currency{-term.whole};
    default:
        return wholeResult(term.level == Level::Long ? Level::Long : Level::Integer, -term.whole);
    }
}

Variant plus(const Variant& a)
{
    if (a.isArray())
        raise(ErrorNumber::TypeMismatch);
    return a; // an object too: nothing asks for its value
}

Variant concatenate(const Variant& a, const Variant& b)
{
    if (a.isText() && b.isText())
        return a.text() + b.text();
    if (a.isObject() || b.isObject())
        return withoutObjects(a, b, concatenate);
    if (a.isNull() && b.isNull())
        return Variant::null();
    const QString left = a.isNull() ? QString() : toText(a);
    return left + (b.isNull() ? QString() : toText(b));
}

} // namespace zan::values
