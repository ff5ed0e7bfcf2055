#include "values/Convert.h"

#include "values/Array.h"
#include "values/Calendar.h"
#include "values/DateText.h"
#include "values/NumberParser.h"
#include "values/NumberText.h"

#include <cmath>
#include <limits>

namespace zan::values {

namespace {

constexpr int DeepestDefaultValue = 32;
constexpr double CurrencyLimit = 9223372036854775808.0; // in units of a ten-thousandth

/// Follows objects to their default value without letting an error out.
ErrorNumber tryPlainValue(const Variant& value, Variant& result)
{
    try {
        result = plainValue(value);
        return ErrorNumber::None;
    } catch (const RuntimeError& error) {
        return static_cast<ErrorNumber>(error.number());
    }
}

/// Runs a conversion on the default value of an object.
template <class Result>
ErrorNumber viaDefault(const Variant& value, Result& result, ErrorNumber (*convert)(const Variant&, Result&))
{
    Variant plain;
    if (const ErrorNumber error = tryPlainValue(value, plain); error != ErrorNumber::None)
        return error;
    return convert(plain, result);
}

template <class Result>
Result orRaise(const Variant& value, ErrorNumber (*convert)(const Variant&, Result&))
{
    Result result{};
    // An object is followed here, so that the error of its default member arrives with its own text.
    const ErrorNumber error = value.isObject() ? convert(plainValue(value), result) : convert(value, result);
    if (error != ErrorNumber::None)
        raise(error);
    return result;
}

/// Reads text as a whole number of so many bits: `&H` digits that fill the bits are negative.
ErrorNumber wholeFromText(QStringView text, int bits, std::int64_t& result)
{
    const auto number = parseNumber(text);
    if (!number)
        return ErrorNumber::TypeMismatch;
    if (number->isBits) {
        if (number->bits >> bits != 0)
            return ErrorNumber::Overflow;
        result = std::int64_t(number->bits);
        if (number->bits >> (bits - 1) != 0)
            result -= std::int64_t(1) << bits;
        return ErrorNumber::None;
    }
    std::int32_t rounded = 0;
    const ErrorNumber error = roundToLong(number->value, rounded);
    if (error == ErrorNumber::None)
        result = rounded;
    return error;
}

/// Value of a kind without text as Double; the kinds that are no number give their error.
ErrorNumber plainNumber(const Variant& value, double& result)
{
    switch (value.kind()) {
    case Kind::Empty:
        result = 0;
        return ErrorNumber::None;
    case Kind::Integer:
        result = value.integer();
        return ErrorNumber::None;
    case Kind::Long:
        result = value.longInteger();
        return ErrorNumber::None;
    case Kind::Single:
        result = double(value.single());
        return ErrorNumber::None;
    case Kind::Double:
    case Kind::Date:
        result = value.real();
        return ErrorNumber::None;
    case Kind::Currency:
        result = double(value.currency().scaled) / 10000;
        return ErrorNumber::None;
    case Kind::Boolean:
        result = value.boolean() ? -1 : 0;
        return ErrorNumber::None;
    case Kind::Byte:
        result = value.byte();
        return ErrorNumber::None;
    case Kind::Null:
        return ErrorNumber::InvalidNull;
    default:
        return ErrorNumber::TypeMismatch;
    }
}

/// Any value as a whole number of at most 32 bits.
ErrorNumber toWhole(const Variant& value, int bits, std::int64_t& result)
{
    switch (value.kind()) {
    case Kind::Integer:
        result = value.integer();
        return ErrorNumber::None;
    case Kind::Long:
        result = value.longInteger();
        return ErrorNumber::None;
    case Kind::Byte:
        result = value.byte();
        return ErrorNumber::None;
    case Kind::String:
        return wholeFromText(value.text(), bits, result);
    case Kind::Object: {
        Variant plain;
        const ErrorNumber error = tryPlainValue(value, plain);
        return error == ErrorNumber::None ? toWhole(plain, bits, result) : error;
    }
    default:
        break;
    }
    double number = 0;
    if (const ErrorNumber error = plainNumber(value, number); error != ErrorNumber::None)
        return error;
    std::int32_t rounded = 0;
    const ErrorNumber error = roundToLong(number, rounded);
    if (error == ErrorNumber::None)
        result = rounded;
    return error;
}

template <class Whole>
ErrorNumber toWholeOf(const Variant& value, int bits, Whole& result)
{
    std::int64_t whole = 0;
    if (const ErrorNumber error = toWhole(value, bits, whole); error != ErrorNumber::None)
        return error;
    if (whole < std::numeric_limits<Whole>::min() || whole > std::numeric_limits<Whole>::max())
        return ErrorNumber::Overflow;
    result = Whole(whole);
    return ErrorNumber::None;
}

/// Exact decimal text, where the digits fit; half to even beyond the fourth decimal.
ErrorNumber currencyFromDecimal(const ParsedNumber& number, Currency& result)
{
    std::int64_t scaled = number.decimal;
    int shift = 4 - number.decimals;
    for (; shift > 0 && scaled != 0; --shift) {
        if (scaled > std::numeric_limits<std::int64_t>::max() / 10 ||
            scaled < std::numeric_limits<std::int64_t>::min() / 10)
            return ErrorNumber::Overflow;
        scaled *= 10;
    }
    if (shift < -18) {
        scaled = 0;
    } else if (shift < 0) {
        std::int64_t divisor = 1;
        for (; shift < 0; ++shift)
            divisor *= 10;
        const std::int64_t rest = scaled % divisor;
        scaled /= divisor;
        const std::int64_t size = rest < 0 ? -rest : rest;
        if (size > divisor - size || (size == divisor - size && scaled % 2 != 0))
            scaled += rest < 0 ? -1 : 1;
    }
    result.scaled = scaled;
    return ErrorNumber::None;
}

ErrorNumber currencyFromDouble(double number, Currency& result)
{
    const double scaled = std::nearbyint(number * 10000);
    if (!(scaled >= -CurrencyLimit && scaled < CurrencyLimit))
        return ErrorNumber::Overflow;
    result.scaled = std::int64_t(scaled);
    return ErrorNumber::None;
}

ErrorNumber booleanFromText(const QString& text, bool& result)
{
    const auto says = [&text](QStringView word) { return text.compare(word, Qt::CaseInsensitive) == 0; };
    if (says(u"True") || says(u"#TRUE#")) {
        result = true;
    } else if (says(u"False") || says(u"#FALSE#")) {
        result = false;
    } else {
        const auto number = parseNumber(text);
        if (!number)
            return ErrorNumber::TypeMismatch;
        if (std::isinf(number->value))
            return ErrorNumber::Overflow;
        result = number->value != 0;
    }
    return ErrorNumber::None;
}

} // namespace

Variant plainValue(const Variant& value)
{
    Variant current = value;
    for (int depth = 0; current.isObject(); ++depth) {
        const Ref<AutomationObject> object = current.objectRef();
        if (!object)
            raise(ErrorNumber::ObjectNotSet);
        if (depth == DeepestDefaultValue)
            raise(ErrorNumber::OutOfStack);
        current = object->defaultValue();
    }
    return current;
}

ErrorNumber roundToLong(double value, std::int32_t& result) noexcept
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0))
        return ErrorNumber::Overflow;
    result = std::int32_t(rounded);
    return ErrorNumber::None;
}

ErrorNumber tryToBoolean(const Variant& value, bool& result)
{
    if (value.is(Kind::Boolean)) {
        result = value.boolean();
        return ErrorNumber::None;
    }
    if (value.isText())
        return booleanFromText(value.text(), result);
    if (value.isObject())
        return viaDefault(value, result, tryToBoolean);
    double number = 0;
    const ErrorNumber error = plainNumber(value, number);
    if (error == ErrorNumber::None)
        result = number != 0;
    return error;
}

ErrorNumber tryToByte(const Variant& value, std::uint8_t& result)
{
    if (value.is(Kind::Boolean)) {
        result = value.boolean() ? 255 : 0; // COMPAT: true is all bits set in a Byte
        return ErrorNumber::None;
    }
    return toWholeOf(value, 16, result);
}

ErrorNumber tryToInteger(const Variant& value, std::int16_t& result)
{
    return toWholeOf(value, 16, result);
}

ErrorNumber tryToLong(const Variant& value, std::int32_t& result)
{
    return toWholeOf(value, 32, result);
}

ErrorNumber tryToSingle(const Variant& value, float& result)
{
    if (value.is(Kind::Single)) {
        result = value.single();
        return ErrorNumber::None;
    }
    double number = 0;
    if (const ErrorNumber error = tryToDouble(value, number); error != ErrorNumber::None)
        return error;
    const float narrowed = std::fabs(number) < 3.5e38 || !std::isfinite(number) ? float(number) : HUGE_VALF;
    if (std::isinf(narrowed) && std::isfinite(number))
        return ErrorNumber::Overflow;
    result = narrowed;
    return ErrorNumber::None;
}

ErrorNumber tryToDouble(const Variant& value, double& result)
{
    if (value.isText()) {
        const auto number = parseNumber(value.text());
        if (!number)
            return ErrorNumber::TypeMismatch;
        if (std::isinf(number->value))
            return ErrorNumber::Overflow;
        result = number->value;
        return ErrorNumber::None;
    }
    if (value.isObject())
        return viaDefault(value, result, tryToDouble);
    return plainNumber(value, result);
}

ErrorNumber tryToCurrency(const Variant& value, Currency& result)
{
    if (value.is(Kind::Currency)) {
        result = value.currency();
        return ErrorNumber::None;
    }
    if (value.isObject())
        return viaDefault(value, result, tryToCurrency);
    if (value.isText()) {
        const auto number = parseNumber(value.text());
        if (!number)
            return ErrorNumber::TypeMismatch;
        return number->isWholeDecimal && !number->isBits ? currencyFromDecimal(*number, result)
                                                         : currencyFromDouble(number->value, result);
    }
    double number = 0;
    if (const ErrorNumber error = plainNumber(value, number); error != ErrorNumber::None)
        return error;
    return currencyFromDouble(number, result);
}

ErrorNumber tryToDate(const Variant& value, Date& result)
{
    if (value.is(Kind::Date)) {
        result = value.date();
        return ErrorNumber::None;
    }
    if (value.isText()) {
        if (const auto date = dateFromText(value.text())) {
            result = *date;
            return ErrorNumber::None;
        }
    }
    double number = 0;
    if (const ErrorNumber error = tryToDouble(value, number); error != ErrorNumber::None)
        return error;
    if (!isValidDate({number}))
        return ErrorNumber::Overflow;
    result.serial = number;
    return ErrorNumber::None;
}

ErrorNumber tryToText(const Variant& value, QString& result)
{
    switch (value.kind()) {
    case Kind::String:
        result = value.text();
        return ErrorNumber::None;
    case Kind::Empty:
        result = QString();
        return ErrorNumber::None;
    case Kind::Integer:
        result = QString::number(value.integer());
        return ErrorNumber::None;
    case Kind::Long:
        result = QString::number(value.longInteger());
        return ErrorNumber::None;
    case Kind::Byte:
        result = QString::number(value.byte());
        return ErrorNumber::None;
    case Kind::Boolean:
        result = value.boolean() ? QStringLiteral("True") : QStringLiteral("False");
        return ErrorNumber::None;
    case Kind::Single:
        result = displayText(value.single());
        return ErrorNumber::None;
    case Kind::Double:
        result = displayText(value.real());
        return ErrorNumber::None;
    case Kind::Currency:
        result = displayText(value.currency());
        return ErrorNumber::None;
    case Kind::Date:
        result = displayText(value.date());
        return ErrorNumber::None;
    case Kind::Null:
        return ErrorNumber::InvalidNull;
    case Kind::Object:
        return viaDefault(value, result, tryToText);
    case Kind::Error:
        result = QStringLiteral("Error %1").arg(value.isMissing() ? 448 : value.error().code);
        return ErrorNumber::None;
    case Kind::Array:
        break;
    }
    return ErrorNumber::TypeMismatch;
}

bool toBoolean(const Variant& value)
{
    return orRaise(value, tryToBoolean);
}

std::uint8_t toByte(const Variant& value)
{
    return orRaise(value, tryToByte);
}

std::int16_t toInteger(const Variant& value)
{
    return orRaise(value, tryToInteger);
}

std::int32_t toLong(const Variant& value)
{
    return orRaise(value, tryToLong);
}

float toSingle(const Variant& value)
{
    return orRaise(value, tryToSingle);
}

double toDouble(const Variant& value)
{
    return orRaise(value, tryToDouble);
}

Currency toCurrency(const Variant& value)
{
    return orRaise(value, tryToCurrency);
}

Date toDate(const Variant& value)
{
    return orRaise(value, tryToDate);
}

QString toText(const Variant& value)
{
    return orRaise(value, tryToText);
}

} // namespace zan::values
