#pragma once

#include "values/Variant.h"

namespace zan::values {

/// Outcome of comparing two Variants; Null when either side is Null.
enum class Ordering { Less, Equal, Greater, Unordered, Null };

/// Who wrote the operand: text and numbers compare differently when one of them is a literal of a script.
enum class Operand { Value, TextLiteral, NumberLiteral };

/// Classic comparison: numbers as numbers, text by code units, Empty as 0 or "" after the other side; text beside a
/// date is read as one, beside a number literal as a number (13 when it is none), and is greater than any other number
/// unless the text is a literal. Raises 13 for arrays, 91 or 438 for objects without a value.
Ordering compare(const Variant& a, const Variant& b, Operand left = Operand::Value, Operand right = Operand::Value);

/// Numeric comparison of a channel's value with a constant: Empty is 0, text is converted to a number first.
/// Raises 13 for text that is no number, 94 for Null. NaN is Unordered.
Ordering compareWithNumber(const Variant& value, double number);

} // namespace zan::values
