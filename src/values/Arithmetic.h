#pragma once

#include "values/Variant.h"

namespace zan::values {

// Operators over Variants with the classic rules: Null propagates, Empty is Integer 0, Boolean true is -1, text is
// read as a number, results are promoted Integer to Long to Double where the classic runtime promotes and raise 6
// where it does not. Objects stand for their default value. Each raises 13 for an operand that is no number.

Variant add(const Variant& a, const Variant& b); ///< two texts are joined, a Date plus a number stays a Date
Variant subtract(const Variant& a, const Variant& b);
Variant multiply(const Variant& a, const Variant& b);
Variant divide(const Variant& a, const Variant& b);        ///< `/`; 11 for x/0, 6 for 0/0
Variant integerDivide(const Variant& a, const Variant& b); ///< `\`; both sides rounded half to even first
Variant modulo(const Variant& a, const Variant& b);        ///< sign of the left side
Variant power(const Variant& a, const Variant& b);         ///< 5 for a negative base with a broken exponent
Variant negate(const Variant& a);
Variant plus(const Variant& a);                          ///< unary plus: text, Empty, objects stay as they are
Variant concatenate(const Variant& a, const Variant& b); ///< `&`; Null counts as "" unless both are Null

Variant logicalAnd(const Variant& a, const Variant& b);
Variant logicalOr(const Variant& a, const Variant& b);
Variant logicalXor(const Variant& a, const Variant& b);
Variant logicalEqv(const Variant& a, const Variant& b);
Variant logicalImp(const Variant& a, const Variant& b);
Variant logicalNot(const Variant& a);

} // namespace zan::values
