#include "script/builtins/BuiltinSupport.h"

#include "values/Format.h"
#include "values/NumberText.h"

#include <cmath>

namespace zan::script {

namespace {

constexpr std::int32_t UseDefault = -2;

/// How the arguments of the three number formatters want a number.
struct Style
{
    std::int32_t digits;
    bool leadingDigit;
    bool parentheses;
    bool grouped;
};

Style styleOf(Arguments arguments, bool parenthesesByDefault, bool groupedByDefault)
{
    const auto choice = [arguments](std::size_t place, bool otherwise) {
        const std::int32_t value = longOr(arguments, place, UseDefault);
        require(value >= UseDefault && value <= 0);
        return value == UseDefault ? otherwise : value != 0;
    };
    const std::int32_t digits = longOr(arguments, 1, -1);
    require(digits >= -1 && digits <= 99);
    return {digits < 0 ? 2 : digits, choice(2, true), choice(3, parenthesesByDefault), choice(4, groupedByDefault)};
}

/// The format text of a style, with text before and after the number.
QString formatOf(const Style& style, const QString& before, const QString& after)
{
    QString number = style.grouped ? QStringLiteral("#,##") : QStringLiteral("#");
    number += style.leadingDigit ? QLatin1Char('0') : QLatin1Char('#');
    if (style.digits > 0)
        number += QLatin1Char('.') + QString(style.digits, QLatin1Char('0'));
    const QString positive = before + number + after;
    const QString negative = style.parentheses ? QStringLiteral("(%1)").arg(positive) : QLatin1Char('-') + positive;
    return positive + QLatin1Char(';') + negative;
}

/// COMPAT: for the formatters Null is a value of the wrong type, not a misused Null.
double formattable(const Variant& value)
{
    const Variant plain = values::plainValue(value);
    if (plain.isNull())
        values::raise(values::ErrorNumber::TypeMismatch);
    return values::toDouble(plain);
}

/// A negative number that rounds to nothing has no sign.
Variant formatted(const Variant& value, const Style& style, const QString& before, const QString& after)
{
    const double number = formattable(value);
    return Variant(values::format(Variant(number), formatOf(style, before, after)));
}

Variant formatNumber(Engine&, Arguments arguments)
{
    return formatted(arguments[0], styleOf(arguments, false, true), {}, {});
}

Variant formatCurrency(Engine&, Arguments arguments)
{
    return formatted(arguments[0], styleOf(arguments, true, true), QStringLiteral("$"), {});
}

Variant formatPercent(Engine&, Arguments arguments)
{
    return formatted(arguments[0], styleOf(arguments, false, true), {}, QStringLiteral("%"));
}

Variant formatDateTime(Engine&, Arguments arguments)
{
    if (arguments[0].isNull())
        values::raise(values::ErrorNumber::TypeMismatch);
    const values::Date date = values::toDate(arguments[0]);
    constexpr const char* Names[] = {"", "Long Date", "Short Date", "Long Time", "Short Time"};
    const std::int32_t style = longOr(arguments, 1, 0);
    require(style >= 0 && style <= 4);
    if (style == 0)
        return Variant(values::displayText(date));
    return Variant(values::format(Variant(date), QString::fromLatin1(Names[style])));
}

constexpr Builtin Functions[] = {
    {"FormatCurrency", 1, 5, formatCurrency},
    {"FormatDateTime", 1, 2, formatDateTime},
    {"FormatNumber", 1, 5, formatNumber},
    {"FormatPercent", 1, 5, formatPercent},
};

} // namespace

std::span<const Builtin> formatFunctions() noexcept
{
    return Functions;
}

} // namespace zan::script
