#pragma once

#include "values/Variant.h"

#include <QStringView>

#include <cstdint>
#include <optional>

namespace zan::values {

/// What a text that is a number as a whole says.
struct ParsedNumber
{
    double value = 0;    ///< infinite when too large for a Double
    bool isBits = false; ///< written with &H or &O: `bits` hold the digits
    std::uint64_t bits = 0;
    bool isWholeDecimal = false; ///< plain decimal digits that fit `decimal` exactly
    std::int64_t decimal = 0;    ///< the digits without the point, sign included
    int decimals = 0;            ///< how many of them stand after the point, less the exponent
};

/// Reads a text that is one number and nothing else: blanks around it, a sign before or after it or brackets
/// for minus, a `$`, commas between digits, an exponent with E or D, or `&H` and `&O` digits.
std::optional<ParsedNumber> parseNumber(QStringView text);

/// Double of a decimal text of plain ASCII (digits, point, sign, exponent with e), which must be well formed.
/// Infinite where it is too large, 0 where it is too small.
double doubleFromDecimal(const char* first, const char* last) noexcept;

} // namespace zan::values
