#include "script/builtins/BuiltinSupport.h"
#include "script/machine/Engine.h"

#include "values/Arithmetic.h"

#include <QTime>

#include <bit>
#include <cmath>
#include <limits>

namespace zan::script {

namespace {

using values::Currency;
using values::Date;
using values::ErrorNumber;
using values::Kind;

constexpr std::int64_t CurrencyScale = 10000;

double finite(double value)
{
    if (!std::isfinite(value))
        values::raise(ErrorNumber::Overflow);
    return value;
}

/// The argument as a number that keeps its type: text becomes a Double, Boolean and Empty an Integer, an object
/// its default value.
Variant numberOf(const Variant& value)
{
    switch (value.kind()) {
    case Kind::String:
        return Variant(values::toDouble(value));
    case Kind::Boolean:
        return Variant(std::int16_t(value.boolean() ? -1 : 0));
    case Kind::Empty:
        return Variant(std::int16_t(0));
    case Kind::Object:
        if (!value.object())
            values::raise(ErrorNumber::ObjectNotSet);
        return numberOf(value.objectRef()->defaultValue());
    case Kind::Array:
    case Kind::Error:
        values::raise(ErrorNumber::TypeMismatch);
    default:
        return value;
    }
}

Variant absolute(Engine&, Arguments arguments)
{
    const Variant number = numberOf(arguments[0]);
    if (number.isNull() || number.is(Kind::Byte))
        return number;
    // COMPAT: the result keeps its kind, so the smallest Integer and the smallest Long have none.
    if ((number.is(Kind::Integer) && number.integer() == std::numeric_limits<std::int16_t>::min()) ||
        (number.is(Kind::Long) && number.longInteger() == std::numeric_limits<std::int32_t>::min()))
        values::raise(ErrorNumber::Overflow);
    return values::toDouble(number) < 0 ? values::negate(number) : number;
}

std::int64_t roundDown(std::int64_t scaled, bool towardsZero)
{
    std::int64_t whole = scaled / CurrencyScale;
    if (!towardsZero && scaled % CurrencyScale < 0)
        --whole;
    return whole * CurrencyScale;
}

Variant wholePart(const Variant& value, bool towardsZero)
{
    const Variant number = numberOf(value);
    const auto cut = [towardsZero](double real) { return towardsZero ? std::trunc(real) : std::floor(real); };
    switch (number.kind()) {
    case Kind::Single:
        return Variant(float(cut(double(number.single()))));
    case Kind::Double:
        return Variant(cut(number.real()));
    case Kind::Currency:
        return Variant(Currency{roundDown(number.currency().scaled, towardsZero)});
    case Kind::Date:
        return Variant(Date{cut(number.date().serial)});
    default:
        return number;
    }
}

Variant integerPart(Engine&, Arguments arguments)
{
    return wholePart(arguments[0], false);
}

Variant fix(Engine&, Arguments arguments)
{
    return wholePart(arguments[0], true);
}

Variant sign(Engine&, Arguments arguments)
{
    const double number = values::toDouble(arguments[0]);
    return Variant(std::int16_t(number > 0 ? 1 : number < 0 ? -1 : 0));
}

Variant round(Engine&, Arguments arguments)
{
    const std::int32_t digits = longOr(arguments, 1, 0);
    require(digits >= 0 && digits <= 22);
    if (arguments[0].is(Kind::Boolean))
        return arguments[0];
    const Variant number = numberOf(arguments[0]);
    const double scale = std::pow(10.0, digits);
    switch (number.kind()) {
    case Kind::Single:
        return Variant(float(std::nearbyint(double(number.single()) * scale) / scale));
    case Kind::Double: {
        const double scaled = number.real() * scale;
        return std::abs(scaled) < 1e15 ? Variant(std::nearbyint(scaled) / scale) : number;
    }
    case Kind::Currency: {
        if (digits >= 4)
            return number;
        const auto unit = std::int64_t(CurrencyScale / scale);
        const auto scaled = double(number.currency().scaled) / double(unit);
        return Variant(Currency{std::int64_t(std::nearbyint(scaled)) * unit});
    }
    case Kind::Date:
        return Variant(Date{std::nearbyint(number.date().serial * scale) / scale});
    default:
        return number;
    }
}

Variant arcTangent(Engine&, Arguments arguments)
{
    return Variant(std::atan(values::toDouble(arguments[0])));
}

Variant cosine(Engine&, Arguments arguments)
{
    return Variant(std::cos(values::toDouble(arguments[0])));
}

Variant sine(Engine&, Arguments arguments)
{
    return Variant(std::sin(values::toDouble(arguments[0])));
}

Variant tangent(Engine&, Arguments arguments)
{
    return Variant(finite(std::tan(values::toDouble(arguments[0]))));
}

Variant exponential(Engine&, Arguments arguments)
{
    return Variant(finite(std::exp(values::toDouble(arguments[0]))));
}

Variant logarithm(Engine&, Arguments arguments)
{
    const double number = values::toDouble(arguments[0]);
    require(number > 0);
    return Variant(std::log(number));
}

Variant squareRoot(Engine&, Arguments arguments)
{
    const double number = values::toDouble(arguments[0]);
    require(number >= 0);
    return Variant(std::sqrt(number));
}

/// A whole number's bit pattern in 16 or 32 bits; nothing for Null.
std::optional<std::uint32_t> pattern(const Variant& value)
{
    const Variant number = numberOf(value);
    switch (number.kind()) {
    case Kind::Null:
        return std::nullopt;
    case Kind::Integer:
        return std::uint16_t(number.integer());
    case Kind::Byte:
        return number.byte();
    default:
        return std::uint32_t(values::toLong(number));
    }
}

Variant hex(Engine&, Arguments arguments)
{
    const auto bits = pattern(arguments[0]);
    return bits ? Variant(QString::number(*bits, 16).toUpper()) : Variant::null();
}

Variant oct(Engine&, Arguments arguments)
{
    const auto bits = pattern(arguments[0]);
    return bits ? Variant(QString::number(*bits, 8)) : Variant::null();
}

constexpr std::uint32_t SeedMask = 0xffffff;

void nextSeed(std::uint32_t& seed) noexcept
{
    // The classic generator, 24 bits wide.
    seed = (seed * 0x43fd43fdu + 0xc39ec3u) & SeedMask;
}

Variant random(Engine& engine, Arguments arguments)
{
    const float argument = given(arguments, 0) ? values::toSingle(arguments[0]) : 1.0f;
    std::uint32_t& seed = engine.randomSeed;
    if (argument < 0) { // the same negative number starts the same sequence
        const auto bits = std::bit_cast<std::uint32_t>(argument);
        seed = (bits + (bits >> 24)) & SeedMask;
    }
    if (argument != 0) // 0 repeats the last number
        nextSeed(seed);
    return Variant(float(seed) / 16777216.0f);
}

Variant randomize(Engine& engine, Arguments arguments)
{
    const double start = given(arguments, 0) ? values::toDouble(arguments[0])
                                             : double(QTime::currentTime().msecsSinceStartOfDay()) / 1000.0;
    const auto high = std::uint32_t(std::bit_cast<std::uint64_t>(start) >> 32);
    const std::uint32_t mixed = (high & 0xffffu) ^ (high >> 16);
    engine.randomSeed = (engine.randomSeed & 0xffu) | (mixed << 8 & 0xffff00u);
    return {};
}

Variant rgb(Engine&, Arguments arguments)
{
    std::int32_t colour = 0;
    for (int part = 0; part < 3; ++part) {
        const std::int32_t value = values::toInteger(arguments[std::size_t(part)]);
        require(value >= 0);
        colour |= std::min(value, 255) << (8 * part);
    }
    return Variant(colour);
}

constexpr Builtin Functions[] = {
    {"Abs", 1, 1, absolute},        {"Atn", 1, 1, arcTangent}, {"Cos", 1, 1, cosine},
    {"Exp", 1, 1, exponential},     {"Fix", 1, 1, fix},        {"Hex", 1, 1, hex},
    {"Int", 1, 1, integerPart},     {"Log", 1, 1, logarithm},  {"Oct", 1, 1, oct},
    {"Randomize", 0, 1, randomize}, {"RGB", 3, 3, rgb},        {"Rnd", 0, 1, random},
    {"Round", 1, 2, round},         {"Sgn", 1, 1, sign},       {"Sin", 1, 1, sine},
    {"Sqr", 1, 1, squareRoot},      {"Tan", 1, 1, tangent},
};

} // namespace

std::span<const Builtin> numberFunctions() noexcept
{
    return Functions;
}

} // namespace zan::script
