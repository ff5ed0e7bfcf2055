#include "script/syntax/Operators.h"

#include "values/Arithmetic.h"
#include "values/RuntimeError.h"

namespace zan::script {

using values::Ordering;
using values::Variant;

Variant comparisonResult(Operator op, Ordering ordering)
{
    if (ordering == Ordering::Null)
        return Variant::null();
    switch (op) {
    case Operator::Equal:
        return Variant(ordering == Ordering::Equal);
    case Operator::NotEqual:
        return Variant(ordering != Ordering::Equal);
    case Operator::Less:
        return Variant(ordering == Ordering::Less);
    case Operator::Greater:
        return Variant(ordering == Ordering::Greater);
    case Operator::LessEqual:
        return Variant(ordering == Ordering::Less || ordering == Ordering::Equal);
    default:
        return Variant(ordering == Ordering::Greater || ordering == Ordering::Equal);
    }
}

bool isSameObject(const Variant& left, const Variant& right)
{
    if (!left.isObject() || !right.isObject())
        values::raise(values::ErrorNumber::ObjectRequired);
    return left.object() == right.object();
}

Variant applyBinary(Operator op, const Variant& left, const Variant& right)
{
    switch (op) {
    case Operator::Imp:
        return values::logicalImp(left, right);
    case Operator::Eqv:
        return values::logicalEqv(left, right);
    case Operator::Xor:
        return values::logicalXor(left, right);
    case Operator::Or:
        return values::logicalOr(left, right);
    case Operator::And:
        return values::logicalAnd(left, right);
    case Operator::Is:
        return Variant(isSameObject(left, right));
    case Operator::Concatenate:
        return values::concatenate(left, right);
    case Operator::Add:
        return values::add(left, right);
    case Operator::Subtract:
        return values::subtract(left, right);
    case Operator::Modulo:
        return values::modulo(left, right);
    case Operator::IntegerDivide:
        return values::integerDivide(left, right);
    case Operator::Multiply:
        return values::multiply(left, right);
    case Operator::Divide:
        return values::divide(left, right);
    case Operator::Power:
        return values::power(left, right);
    default:
        return comparisonResult(op, values::compare(left, right));
    }
}

Variant applyUnary(Operator op, const Variant& value)
{
    switch (op) {
    case Operator::Not:
        return values::logicalNot(value);
    case Operator::Negate:
        return values::negate(value);
    default:
        return values::plus(value);
    }
}

} // namespace zan::script
