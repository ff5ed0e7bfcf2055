#pragma once

#include "values/RuntimeError.h"
#include "values/Variant.h"

#include <QStringView>

#include <cstdint>
#include <optional>

namespace zan::values {

// Conversions of a Variant to a plain type with the classic rules: Empty is 0, False or "", Null raises 94,
// text is read as a number where it is one as a whole (13 otherwise), an object gives its default value (91
// for Nothing), an array raises 13; whole numbers round half to even and raise 6 outside their range.
//
// Each rule exists once, in the status form: ErrorNumber::None and the result, or the error and the result
// untouched. The plain form raises the error as a RuntimeError.

[[nodiscard]] ErrorNumber tryToBoolean(const Variant& value, bool& result);
[[nodiscard]] ErrorNumber tryToByte(const Variant& value, std::uint8_t& result);
[[nodiscard]] ErrorNumber tryToInteger(const Variant& value, std::int16_t& result);
[[nodiscard]] ErrorNumber tryToLong(const Variant& value, std::int32_t& result);
[[nodiscard]] ErrorNumber tryToSingle(const Variant& value, float& result);
[[nodiscard]] ErrorNumber tryToDouble(const Variant& value, double& result);
[[nodiscard]] ErrorNumber tryToCurrency(const Variant& value, Currency& result);
[[nodiscard]] ErrorNumber tryToDate(const Variant& value, Date& result);
[[nodiscard]] ErrorNumber tryToText(const Variant& value, QString& result);

/// The value itself, or for an object its default value, followed until it is no object any more. Raises 91
/// for Nothing and whatever the default member raises; 28 when objects stand for each other without end.
Variant plainValue(const Variant& value);

/// The whole number nearest to a value, half to even; nothing outside 32 bits and for NaN.
[[nodiscard]] ErrorNumber roundToLong(double value, std::int32_t& result) noexcept;

bool toBoolean(const Variant& value);
std::uint8_t toByte(const Variant& value);
std::int16_t toInteger(const Variant& value);
std::int32_t toLong(const Variant& value);
float toSingle(const Variant& value);
double toDouble(const Variant& value);
Currency toCurrency(const Variant& value);
Date toDate(const Variant& value);
QString toText(const Variant& value);

/// The number that a text is as a whole, blanks around it allowed ("12", " -1.5e3 ", "&hFF", "&O17", "1,234",
/// "$5", "(5)", "5-"); nothing when it is none, infinite when it is too large for a Double (CDbl then raises
/// 6). What CDbl of a text accepts.
std::optional<double> numberFromText(QStringView text);

/// The classic leading number of a text: blanks are skipped wherever they stand, `&H` and `&O` read
/// hexadecimal and octal whole numbers, an exponent is introduced by E or D; 0 when no number leads. Reads in
/// one pass and never fails; a number too large for a Double raises 6 in the classic runtime and is infinite
/// here.
double val(QStringView text);

} // namespace zan::values
