#include "halyard/RawValue.h"

#include "values/Convert.h"
#include "values/NumberParser.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace zan::halyard {

namespace {

using Bits = std::uint64_t;

struct IntegerRange
{
    double lowest;
    double highest;
};

constexpr std::array<std::int32_t, site::DataTypeCount> Sizes{1, 1, 2, 2, 4, 4, 0, 4, 8};

IntegerRange rangeOf(DataType type)
{
    switch (type) {
    case DataType::UnsignedByte:
        return {0, 255};
    case DataType::SignedByte:
        return {-128, 127};
    case DataType::UnsignedWord:
        return {0, 65535};
    case DataType::SignedWord:
        return {-32768, 32767};
    case DataType::UnsignedLong:
        return {0, 4294967295.0};
    default:
        return {-2147483648.0, 2147483647.0};
    }
}

bool isFloat(DataType type)
{
    return type == DataType::Single || type == DataType::Double;
}

/// Place in memory of the byte that has `significance` (0 the least) in a number of `length` bytes.
std::int32_t placeOf(std::int32_t significance, std::int32_t length, ByteOrder order)
{
    const std::int32_t fromTop = length - 1 - significance;
    const bool hasWords = length % 2 == 0;
    switch (order) {
    case ByteOrder::Big:
        return fromTop;
    case ByteOrder::Little:
        return significance;
    case ByteOrder::BigSwapped: // low word first, each word big
        return hasWords ? (significance & ~1) + 1 - (significance & 1) : fromTop;
    case ByteOrder::LittleSwapped: // high word first, each word little
        return hasWords ? (fromTop & ~1) + 1 - (fromTop & 1) : significance;
    }
    return fromTop;
}

Bits loadBits(const std::uint8_t* bytes, std::int32_t length, ByteOrder order)
{
    Bits bits = 0;
    for (std::int32_t i = 0; i < length; ++i)
        bits |= Bits(bytes[placeOf(i, length, order)]) << (8 * i);
    return bits;
}

void storeBits(Bits bits, std::uint8_t* bytes, std::int32_t length, ByteOrder order)
{
    for (std::int32_t i = 0; i < length; ++i)
        bytes[placeOf(i, length, order)] = std::uint8_t(bits >> (8 * i));
}

/// Bits of a raw number that lies in the type's range and, for whole types, is whole.
Bits bitsOf(DataType type, double raw)
{
    if (type == DataType::Single)
        return std::bit_cast<std::uint32_t>(float(raw));
    if (type == DataType::Double)
        return std::bit_cast<Bits>(raw);
    return Bits(std::int64_t(raw));
}

Variant plainValue(DataType type, Bits bits)
{
    switch (type) {
    case DataType::UnsignedByte:
        return std::int16_t(bits);
    case DataType::SignedByte:
        return std::int16_t(std::int8_t(bits));
    case DataType::UnsignedWord:
        return std::int32_t(bits);
    case DataType::SignedWord:
        return std::int16_t(bits);
    case DataType::UnsignedLong:
        return double(bits);
    case DataType::SignedLong:
        return std::int32_t(bits);
    case DataType::Single:
        return std::bit_cast<float>(std::uint32_t(bits));
    default:
        return std::bit_cast<double>(bits);
    }
}

double rawNumber(DataType type, Bits bits)
{
    switch (type) {
    case DataType::SignedByte:
        return std::int8_t(bits);
    case DataType::SignedWord:
        return std::int16_t(bits);
    case DataType::SignedLong:
        return std::int32_t(bits);
    case DataType::Single:
        return plainDouble(std::bit_cast<float>(std::uint32_t(bits)));
    case DataType::Double:
        return std::bit_cast<double>(bits);
    default:
        return double(bits);
    }
}

/// Half to even, whatever the thread's rounding mode.
double roundedHalfToEven(double number)
{
    const double below = std::floor(number);
    const double rest = number - below;
    if (rest != 0.5)
        return rest < 0.5 ? below : below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

QString textOf(const RawFormat& format, const std::uint8_t* bytes)
{
    const auto* end = static_cast<const std::uint8_t*>(std::memchr(bytes, 0, std::size_t(format.length)));
    qsizetype length = end ? end - bytes : format.length;
    while (length > 0 && bytes[length - 1] == ' ')
        --length;
    return QString::fromLatin1(reinterpret_cast<const char*>(bytes), length);
}

ErrorNumber encodeText(const RawFormat& format, const Variant& value, QByteArray& bytes)
{
    QString text;
    if (const ErrorNumber error = values::tryToText(value, text); error != ErrorNumber::None)
        return error;
    if (text.size() > format.length)
        return ErrorNumber::Overflow;
    if (std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() > 0xff; }))
        return ErrorNumber::TypeMismatch;
    bytes = text.toLatin1();
    bytes.append(format.length - bytes.size(), '\0');
    return ErrorNumber::None;
}

/// The number that a text is as a whole: blanks around it, a sign, digits with at most one point, an exponent.
/// Scripts take more for a number ("0,5" with its separator, "&H10", "$3"), but what goes to a logger must be what
/// its reader sees.
std::optional<double> wholeNumber(const QString& text)
{
    const QByteArray digits = text.trimmed().toLatin1().toLower();
    const char* first = digits.constData();
    const char* const last = first + digits.size();
    if (first != last && (*first == '+' || *first == '-'))
        ++first;
    if (first == last || !((*first >= '0' && *first <= '9') || *first == '.'))
        return std::nullopt; // a second sign, "inf" and "nan" are no digits
    double number = 0;
    const auto [end, error] = std::from_chars(first, last, number);
    if (error == std::errc::invalid_argument || end != last)
        return std::nullopt;
    if (error == std::errc::result_out_of_range)
        number = values::doubleFromDecimal(first, last);
    return digits.startsWith('-') ? -number : number;
}

ErrorNumber numberOf(const Variant& value, double& number)
{
    if (value.is(values::Kind::String)) {
        const std::optional<double> whole = wholeNumber(value.text());
        number = whole.value_or(0);
        return whole ? ErrorNumber::None : ErrorNumber::TypeMismatch;
    }
    const ErrorNumber error = values::tryToDouble(value, number);
    if (error == ErrorNumber::None && value.is(values::Kind::Single))
        number = plainDouble(value.single());
    return error;
}

QString written(double number)
{
    return values::toText(Variant(number));
}

} // namespace

QString rangeText(const RawFormat& format)
{
    if (format.type == DataType::String)
        return QStringLiteral("a text of up to %1 Latin-1 characters").arg(format.length);
    if (format.type == DataType::Double)
        return QStringLiteral("a number");
    const double greatest = std::numeric_limits<float>::max();
    const IntegerRange raw = isFloat(format.type) ? IntegerRange{-greatest, greatest} : rangeOf(format.type);
    if (format.formula) // its curve need not run from the one end to the other
        return QStringLiteral("a number that comes from a raw value between %1 and %2")
            .arg(written(raw.lowest), written(raw.highest));
    const double from = raw.lowest * format.multiplier + format.offset;
    const double to = raw.highest * format.multiplier + format.offset;
    return QStringLiteral("a number from %1 to %2").arg(written(std::min(from, to)), written(std::max(from, to)));
}

namespace {

ErrorNumber unscaled(const RawFormat& format, double value, double& raw)
{
    if (format.formula)
        value = format.formula->inverse(value);
    raw = (value - format.offset) / format.multiplier;
    if (!std::isfinite(raw))
        return ErrorNumber::Overflow;
    if (isFloat(format.type)) {
        const bool fits = format.type == DataType::Double || std::isfinite(float(raw));
        return fits ? ErrorNumber::None : ErrorNumber::Overflow;
    }
    raw = roundedHalfToEven(raw);
    const IntegerRange range = rangeOf(format.type);
    return raw < range.lowest || raw > range.highest ? ErrorNumber::Overflow : ErrorNumber::None;
}

} // namespace

std::int32_t sizeOf(DataType type)
{
    const auto index = std::size_t(type);
    return index < Sizes.size() ? Sizes[index] : 0;
}

double plainDouble(float number)
{
    if (!std::isfinite(number))
        return number;
    std::array<char, 32> text;
    const auto written = std::to_chars(text.data(), text.data() + text.size(), number);
    double result = number;
    std::from_chars(text.data(), written.ptr, result);
    return result;
}

RawFormat rawFormat(const Channel& channel, ByteOrder order)
{
    RawFormat format;
    format.order = order;
    const std::int32_t type = channel.DataType();
    if (type < 0 || type >= site::DataTypeCount) {
        format.length = 0;
        return format;
    }
    format.type = DataType(type);
    if (format.type == DataType::String) {
        format.length = std::max<std::int32_t>(channel.Bytes(), 1);
        return format;
    }
    format.length = sizeOf(format.type);
    const float multiplier = channel.Multiplier();
    const float offset = channel.Offset();
    format.multiplier = multiplier == 0 || !std::isfinite(multiplier) ? 1 : plainDouble(multiplier);
    format.offset = std::isfinite(offset) ? plainDouble(offset) : 0;
    format.formula = findFormula(channel.Formula());
    return format;
}

Variant decodeRaw(const RawFormat& format, const std::uint8_t* bytes)
{
    if (format.length <= 0)
        return {};
    if (format.type == DataType::String)
        return textOf(format, bytes);
    const Bits bits = loadBits(bytes, format.length, format.order);
    if (!format.isScaled()) {
        if (isFloat(format.type) && !std::isfinite(rawNumber(format.type, bits)))
            return {};
        return plainValue(format.type, bits);
    }
    double value = rawNumber(format.type, bits) * format.multiplier + format.offset;
    if (format.formula)
        value = format.formula->forward(value);
    return std::isfinite(value) ? Variant(value) : Variant();
}

ErrorNumber encodeRaw(const RawFormat& format, const Variant& value, QByteArray& bytes)
{
    if (format.length <= 0)
        return ErrorNumber::InvalidCall;
    if (format.type == DataType::String)
        return encodeText(format, value, bytes);
    double number = 0;
    if (const ErrorNumber error = numberOf(value, number); error != ErrorNumber::None)
        return error;
    double raw = 0;
    if (const ErrorNumber error = unscaled(format, number, raw); error != ErrorNumber::None)
        return error;
    QByteArray result(format.length, '\0');
    storeBits(bitsOf(format.type, raw), reinterpret_cast<std::uint8_t*>(result.data()), format.length,
              format.order);
    bytes = result;
    return ErrorNumber::None;
}

QString shownText(const Variant& value)
{
    constexpr qsizetype LongestShown = 40;
    QString shown;
    if (values::tryToText(value, shown) != ErrorNumber::None)
        return QStringLiteral("what is no text");
    return (shown.size() > LongestShown ? QStringLiteral("\"%1...\"") : QStringLiteral("\"%1\""))
        .arg(shown.left(LongestShown));
}

QString refusalText(const RawFormat& format, const Variant& value)
{
    return QStringLiteral("it takes %1, not %2").arg(rangeText(format), shownText(value));
}

void storeRaw(DataType type, ByteOrder order, double raw, std::uint8_t* bytes)
{
    if (!isFloat(type)) {
        const IntegerRange range = rangeOf(type);
        raw = std::clamp(roundedHalfToEven(raw), range.lowest, range.highest);
    } else if (type == DataType::Single) {
        const double greatest = std::numeric_limits<float>::max();
        raw = std::clamp(raw, -greatest, greatest);
    }
    storeBits(bitsOf(type, raw), bytes, sizeOf(type), order);
}

double unsignedWord(const std::uint8_t* bytes, std::int32_t length, ByteOrder order)
{
    return double(loadBits(bytes, length, order));
}

} // namespace zan::halyard
