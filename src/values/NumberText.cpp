#include "values/NumberText.h"

#include "values/Calendar.h"
#include "values/FormatOutput.h"

#include <charconv>
#include <cmath>

namespace zan::values {

namespace {

constexpr int LongestText = 64;

/// Text of a number that no digits can show; empty for an ordinary one.
QString specialText(double value)
{
    if (std::isnan(value))
        return std::signbit(value) ? QStringLiteral("-1.#IND") : QStringLiteral("1.#QNAN");
    if (std::isinf(value))
        return value < 0 ? QStringLiteral("-1.#INF") : QStringLiteral("1.#INF");
    return {};
}

/// Appends an exponent of at least two digits with its sign.
char* putExponent(char* out, int exponent)
{
    *out++ = 'E';
    *out++ = exponent < 0 ? '-' : '+';
    const int size = std::abs(exponent);
    if (size < 10)
        *out++ = '0';
    return std::to_chars(out, out + 4, size).ptr;
}

/// At most `significant` digits; fixed notation as long as the digits, with the zeros that it needs in front
/// of them, are no more than that.
template <class Real>
QString significantText(Real value, int significant)
{
    if (value == 0)
        return QStringLiteral("0");
    if (!std::isfinite(value))
        return specialText(double(value));
    char scientific[LongestText];
    const auto made = std::to_chars(scientific, scientific + sizeof scientific, std::fabs(value),
                                    std::chars_format::scientific, significant - 1);
    char digits[20];
    digits[0] = scientific[0];
    std::copy_n(scientific + 2, significant - 1, digits + 1);
    const char* exponentText = scientific + 2 + significant; // past the digits and the e: at its sign
    int exponent = 0;
    std::from_chars(exponentText + 1, made.ptr, exponent);
    if (*exponentText == '-')
        exponent = -exponent;
    int count = significant;
    while (count > 1 && digits[count - 1] == '0')
        --count;

    char text[LongestText];
    char* out = text;
    if (value < 0)
        *out++ = '-';
    if (exponent >= significant || (exponent < 0 && count - exponent - 1 > significant)) {
        *out++ = digits[0];
        if (count > 1) {
            *out++ = '.';
            out = std::copy_n(digits + 1, count - 1, out);
        }
        out = putExponent(out, exponent);
    } else if (exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        out = std::fill_n(out, -exponent - 1, '0');
        out = std::copy_n(digits, count, out);
    } else {
        const int whole = std::min(count, exponent + 1);
        out = std::copy_n(digits, whole, out);
        out = std::fill_n(out, exponent + 1 - whole, '0');
        if (count > whole) {
            *out++ = '.';
            out = std::copy_n(digits + whole, count - whole, out);
        }
    }
    return QString::fromLatin1(text, out - text);
}

template <class Real>
QString shortestText(Real value)
{
    if (value == 0 || !std::isfinite(value))
        return QStringLiteral("0");
    char text[LongestText];
    const auto made = std::to_chars(text, text + sizeof text, value);
    for (char* place = text; place != made.ptr; ++place) {
        if (*place == 'e')
            *place = 'E';
    }
    return QString::fromLatin1(text, made.ptr - text);
}

} // namespace

QString displayText(double value)
{
    return significantText(value, 15);
}

QString displayText(float value)
{
    return significantText(value, 7);
}

QString displayText(Currency value)
{
    const std::uint64_t size = value.scaled < 0 ? 0 - std::uint64_t(value.scaled) : std::uint64_t(value.scaled);
    char text[LongestText];
    char* out = text;
    if (value.scaled < 0)
        *out++ = '-';
    out = std::to_chars(out, text + sizeof text, size / 10000).ptr;
    if (auto rest = unsigned(size % 10000); rest != 0) {
        *out++ = '.';
        for (unsigned place = 1000; rest != 0; place /= 10) {
            *out++ = char('0' + rest / place);
            rest %= place;
        }
    }
    return QString::fromLatin1(text, out - text);
}

QString documentText(double value)
{
    return shortestText(value);
}

QString documentText(float value)
{
    return shortestText(value);
}

QString displayText(Date value)
{
    const auto time = civilTime(value);
    if (!time)
        return displayText(value.serial);
    FormatOutput output;
    putDateAndTime(output, *time);
    return output.text();
}

} // namespace zan::values
