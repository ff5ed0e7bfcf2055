#include "values/Compare.h"

#include "values/Convert.h"

#include <cmath>
#include <compare>

namespace zan::values {

namespace {

template <class T>
Ordering order(T a, T b) noexcept
{
    if (a < b)
        return Ordering::Less;
    if (a == b)
        return Ordering::Equal;
    if (a > b)
        return Ordering::Greater;
    return Ordering::Unordered;
}

Ordering orderText(const QString& a, const QString& b)
{
    return order(a.compare(b), 0);
}

bool isWhole(const Variant& value) noexcept
{
    switch (value.kind()) {
    case Kind::Empty:
    case Kind::Boolean:
    case Kind::Byte:
    case Kind::Integer:
    case Kind::Long:
        return true;
    default:
        return false;
    }
}

std::int32_t whole(const Variant& value) noexcept
{
    switch (value.kind()) {
    case Kind::Boolean:
        return value.boolean() ? -1 : 0;
    case Kind::Byte:
        return value.byte();
    case Kind::Integer:
        return value.integer();
    case Kind::Long:
        return value.longInteger();
    default:
        return 0;
    }
}

bool isFloat(const Variant& value) noexcept
{
    return value.is(Kind::Single) || value.is(Kind::Double);
}

/// Two values of which neither is text, Null, array or object.
Ordering orderNumbers(const Variant& a, const Variant& b)
{
    if (isWhole(a) && isWhole(b))
        return order(whole(a), whole(b));
    const bool currency = a.is(Kind::Currency) || b.is(Kind::Currency);
    if (currency && !a.is(Kind::Date) && !b.is(Kind::Date)) {
        // A float is compared with a Currency to four decimals.
        Currency left;
        Currency right;
        if (tryToCurrency(a, left) == ErrorNumber::None && tryToCurrency(b, right) == ErrorNumber::None)
            return order(left.scaled, right.scaled);
    }
    const double left = toDouble(a);
    const double right = toDouble(b);
    if (isFloat(a) && isFloat(b) && a.kind() != b.kind()) {
        // COMPAT: beside a Single a Double has the precision of a Single.
        if (std::fabs(left) < 3.4e38 && std::fabs(right) < 3.4e38)
            return order(float(left), float(right));
    }
    return order(left, right);
}

Ordering mirrored(Ordering ordering) noexcept
{
    switch (ordering) {
    case Ordering::Less:
        return Ordering::Greater;
    case Ordering::Greater:
        return Ordering::Less;
    default:
        return ordering;
    }
}

/// A text on the left against something that is neither text, Null, array nor object.
Ordering orderTextAgainst(const Variant& text, const Variant& other, Operand textOperand, Operand otherOperand)
{
    if (other.isEmpty())
        return text.text().isEmpty() ? Ordering::Equal : Ordering::Greater;
    if (otherOperand == Operand::NumberLiteral)
        return order(toDouble(text), toDouble(other));
    if (other.is(Kind::Error))
        raise(ErrorNumber::TypeMismatch);
    if (other.is(Kind::Date)) // the text is read as a date, and must be one
        return order(toDate(text).serial, other.date().serial);
    if (textOperand == Operand::TextLiteral)
        return orderText(text.text(), toText(other));
    return Ordering::Greater;
}

Ordering compareSlowly(const Variant& a, const Variant& b, Operand left, Operand right)
{
    if (a.isArray() || b.isArray())
        raise(ErrorNumber::TypeMismatch);
    if (a.isObject() || b.isObject()) {
        const Variant plainA = plainValue(a);
        const Variant plainB = plainValue(b);
        return compareSlowly(plainA, plainB, left, right);
    }
    if (a.isNull() || b.isNull())
        return Ordering::Null;
    if (a.isText())
        return b.isText() ? orderText(a.text(), b.text()) : orderTextAgainst(a, b, left, right);
    if (b.isText())
        return mirrored(orderTextAgainst(b, a, right, left));
    return orderNumbers(a, b);
}

} // namespace

Ordering compare(const Variant& a, const Variant& b, Operand left, Operand right)
{
    if (a.kind() == b.kind()) {
        switch (a.kind()) {
        case Kind::Integer:
            return order(a.integer(), b.integer());
        case Kind::Long:
            return order(a.longInteger(), b.longInteger());
        case Kind::Double:
            return order(a.real(), b.real());
        case Kind::String:
            return orderText(a.text(), b.text());
        default:
            break;
        }
    }
    return compareSlowly(a, b, left, right);
}

Ordering compareWithNumber(const Variant& value, double number)
{
    return order(toDouble(value), number);
}

} // namespace zan::values
