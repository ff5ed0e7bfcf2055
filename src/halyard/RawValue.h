#pragma once

#include "halyard/Formula.h"
#include "site/Channel.h"

#include <QByteArray>

#include <cstdint>

namespace zan::halyard {

using site::Channel;
using site::DataType;
using values::ErrorNumber;
using values::Variant;

/// Order of the bytes of a number in the logger's memory, for the bytes A (most significant) to D of a long; the
/// swapped orders exchange the 16-bit words of a value and are found behind register protocols. Text has no order.
enum class ByteOrder {
    Big,           ///< A B C D
    Little,        ///< D C B A
    BigSwapped,    ///< C D A B
    LittleSwapped, ///< B A D C
};

/// How raw bytes become a value: value = formula(raw * multiplier + offset).
struct RawFormat
{
    DataType type = DataType::UnsignedByte;
    std::int32_t length = 1; ///< bytes; the channel's own length for text, the size of the type for numbers
    double multiplier = 1;
    double offset = 0;
    const Formula* formula = nullptr; ///< null for none
    ByteOrder order = ByteOrder::Big;

    bool isScaled() const noexcept { return multiplier != 1 || offset != 0 || formula; }
    friend bool operator==(const RawFormat&, const RawFormat&) = default;
};

/// Size of a number of this type in bytes; 0 for text.
std::int32_t sizeOf(DataType type);
/// The number that a person meant by a Single: 0.1 for 0.1f and not 0.100000001490116.
double plainDouble(float number);
/// The format of a channel. A multiplier of 0, which is what a channel without one has, counts as 1; a length below
/// 1 of a text counts as 1. The length is 0, and nothing is read, for a data type outside 0 to 8.
RawFormat rawFormat(const Channel& channel, ByteOrder order);

/// Value of `format.length` bytes. Whole numbers without scaling are an Integer (8 bits, signed word), a Long
/// (unsigned word, signed long) or a Double (unsigned long), floats a Single or a Double, scaled numbers always a
/// Double. Text ends before its first zero byte and loses the blanks at its end; each byte is one character of the
/// same number. A number that is none (NaN, infinite, outside the formula's curve) is Empty: no reading.
Variant decodeRaw(const RawFormat& format, const std::uint8_t* bytes);

/// Bytes of a value, the scaling undone, whole numbers rounded half to even. A text is a number as a whole (sign,
/// digits, a point, an exponent) or none: separators, currency signs and "&H" are for scripts. InvalidCall for a format without
/// length, TypeMismatch for what is no number or a character that a byte cannot hold, Overflow for what is outside
/// the type's range or longer than the text; `bytes` is then untouched.
[[nodiscard]] ErrorNumber encodeRaw(const RawFormat& format, const Variant& value, QByteArray& bytes);

/// What a format takes, in words: "a number from 0 to 255".
QString rangeText(const RawFormat& format);
/// A value in quotation marks, as far as a message has room for it.
QString shownText(const Variant& value);
/// Why encodeRaw() refused a value: what the format takes and what it was given, without the channel's name and
/// without a full stop.
QString refusalText(const RawFormat& format, const Variant& value);

/// Bytes of a raw number of the format's type, kept to the type's range; for what makes up memory by itself.
void storeRaw(DataType type, ByteOrder order, double raw, std::uint8_t* bytes);

/// The unsigned number of 1 to 8 bytes.
double unsignedWord(const std::uint8_t* bytes, std::int32_t length, ByteOrder order);

} // namespace zan::halyard
