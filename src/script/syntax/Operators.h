#pragma once

#include "script/syntax/Ast.h"
#include "values/Compare.h"

namespace zan::script {

/// The value of an operator over two values, in its general form. Comparisons give a Boolean or Null.
values::Variant applyBinary(Operator op, const values::Variant& left, const values::Variant& right);
values::Variant applyUnary(Operator op, const values::Variant& value);

/// The outcome of a comparison operator: a Boolean, or Null.
values::Variant comparisonResult(Operator op, values::Ordering ordering);

/// Whether two values are one and the same object; raises 424 for anything that is no object.
bool isSameObject(const values::Variant& left, const values::Variant& right);

} // namespace zan::script
