#include "values/NumberParser.h"

#include "values/Convert.h"

#include <QVarLengthArray>

#include <charconv>
#include <limits>

namespace zan::values {

namespace {

using Digits = QVarLengthArray<char, 64>;

/// Exponents beyond this size say "too large" or "too small" for any mantissa that memory can hold.
constexpr int LargestExponent = 100'000'000;

bool isBlank(QChar unit) noexcept
{
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == QChar(0xa0);
}

bool isDigit(QChar unit) noexcept
{
    return unit >= u'0' && unit <= u'9';
}

int hexDigit(QChar unit) noexcept
{
    if (isDigit(unit))
        return unit.unicode() - u'0';
    const char16_t lower = unit.unicode() | 0x20;
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

bool isExponentLetter(QChar unit) noexcept
{
    const char16_t lower = unit.unicode() | 0x20;
    return lower == u'e' || lower == u'd';
}

/// Collects a decimal number as ASCII for the parser, and its digits as a whole number while they fit.
class DecimalBuilder
{
public:
    void digit(QChar unit)
    {
        m_hasDigits = true;
        const int value = unit.unicode() - u'0';
        m_text.append(char('0' + value));
        if (m_inFraction)
            ++m_decimals;
        if (m_whole > (std::numeric_limits<std::int64_t>::max() - value) / 10)
            m_fits = false;
        else
            m_whole = m_whole * 10 + value;
    }
    void point()
    {
        m_inFraction = true;
        m_text.append('.');
    }
    void exponent(int value)
    {
        m_exponent = value;
        char buffer[16];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, value);
        m_text.append('e');
        m_text.append(buffer, end.ptr - buffer);
    }
    bool hasDigits() const noexcept { return m_hasDigits; }
    bool inFraction() const noexcept { return m_inFraction; }
    double value() const noexcept { return doubleFromDecimal(m_text.cbegin(), m_text.cend()); }

    ParsedNumber result(bool negative) const
    {
        ParsedNumber number;
        number.value = negative ? -value() : value();
        number.isWholeDecimal = m_fits;
        number.decimal = negative ? -m_whole : m_whole;
        number.decimals = m_decimals - m_exponent;
        return number;
    }

private:
    Digits m_text;
    std::int64_t m_whole = 0;
    int m_decimals = 0;
    int m_exponent = 0;
    bool m_hasDigits = false;
    bool m_inFraction = false;
    bool m_fits = true;
};

class NumberParser
{
public:
    explicit NumberParser(QStringView text)
        : m_text(text)
    {}

    std::optional<ParsedNumber> parse()
    {
        skipBlanks();
        if (at(u'&'))
            return bits();
        if (!prefix())
            return std::nullopt;
        DecimalBuilder builder;
        if (!mantissa(builder))
            return std::nullopt;
        exponent(builder);
        if (!suffix())
            return std::nullopt;
        return builder.result(m_negative);
    }

private:
    bool at(char16_t unit) const { return m_place < m_text.size() && m_text[m_place] == unit; }
    void skipBlanks()
    {
        while (m_place < m_text.size() && isBlank(m_text[m_place]))
            ++m_place;
    }

    std::optional<ParsedNumber> bits()
    {
        if (m_text.size() - m_place < 3)
            return std::nullopt;
        const char16_t letter = m_text[m_place + 1].unicode() | 0x20;
        const int shift = letter == u'h' ? 4 : letter == u'o' ? 3 : 0;
        if (shift == 0)
            return std::nullopt;
        m_place += 2;
        ParsedNumber number;
        number.isBits = true;
        const qsizetype start = m_place;
        for (; m_place < m_text.size(); ++m_place) {
            const int digit = hexDigit(m_text[m_place]);
            if (digit < 0 || digit >= 1 << shift)
                break;
            if (number.bits >> (64 - shift) != 0)
                return std::nullopt;
            number.bits = number.bits << shift | std::uint64_t(digit);
        }
        if (m_place == start)
            return std::nullopt;
        skipBlanks();
        if (m_place != m_text.size())
            return std::nullopt;
        number.value = double(number.bits);
        return number;
    }

    /// Sign, bracket and currency mark before the digits, each at most once and in any order.
    bool prefix()
    {
        for (;; ++m_place) {
            skipBlanks();
            if (at(u'-') || at(u'+')) {
                if (m_signed || m_bracket)
                    return false;
                m_signed = true;
                m_negative = at(u'-');
            } else if (at(u'(')) {
                if (m_signed || m_bracket)
                    return false;
                m_bracket = m_negative = true;
            } else if (at(u'$')) {
                if (m_currency)
                    return false;
                m_currency = true;
            } else {
                return true;
            }
        }
    }

    bool mantissa(DecimalBuilder& builder)
    {
        for (; m_place < m_text.size(); ++m_place) {
            const QChar unit = m_text[m_place];
            if (isDigit(unit))
                builder.digit(unit);
            else if (unit == u'.' && !builder.inFraction())
                builder.point();
            else if (unit != u',' || !builder.hasDigits() || builder.inFraction())
                break;
        }
        return builder.hasDigits();
    }

    void exponent(DecimalBuilder& builder)
    {
        if (m_place >= m_text.size() || !isExponentLetter(m_text[m_place]))
            return;
        qsizetype place = m_place + 1;
        bool negative = false;
        if (place < m_text.size() && (m_text[place] == u'-' || m_text[place] == u'+'))
            negative = m_text[place++] == u'-';
        if (place >= m_text.size() || !isDigit(m_text[place]))
            return; // the suffix refuses what is left
        int value = 0;
        for (; place < m_text.size() && isDigit(m_text[place]); ++place)
            value = std::min(value * 10 + (m_text[place].unicode() - u'0'), LargestExponent);
        builder.exponent(negative ? -value : value);
        m_place = place;
    }

    bool suffix()
    {
        skipBlanks();
        if ((at(u'-') || at(u'+')) && !m_signed && !m_bracket) {
            m_negative = at(u'-');
            ++m_place;
            skipBlanks();
        }
        if (m_bracket) {
            if (!at(u')'))
                return false;
            ++m_place;
            skipBlanks();
        }
        return m_place == m_text.size();
    }

    QStringView m_text;
    qsizetype m_place = 0;
    bool m_signed = false;
    bool m_negative = false;
    bool m_bracket = false;
    bool m_currency = false;
};

/// The text of Val without the blanks that it skips: looks one character ahead and no further.
class ValReader
{
public:
    explicit ValReader(QStringView text)
        : m_text(text)
    {
        skipBlanks();
    }
    /// The current character; 0 at the end.
    QChar peek() const noexcept { return m_place < m_text.size() ? m_text[m_place] : QChar(u'\0'); }
    void next()
    {
        ++m_place;
        skipBlanks();
    }

private:
    void skipBlanks()
    {
        while (m_place < m_text.size() &&
               (m_text[m_place] == u' ' || m_text[m_place] == u'\t' || m_text[m_place] == u'\n'))
            ++m_place;
    }
    QStringView m_text;
    qsizetype m_place = 0;
};

double valOfBits(ValReader& reader)
{
    const char16_t letter = reader.peek().unicode() | 0x20;
    const int base = letter == u'h' ? 16 : letter == u'o' ? 8 : 0;
    if (base == 0)
        return 0;
    reader.next();
    double value = 0;
    while (true) {
        const int digit = hexDigit(reader.peek());
        if (digit < 0 || digit >= base)
            break;
        value = value * base + digit;
        reader.next();
    }
    // COMPAT: digits that fill 16 or 32 bits are a negative Integer or Long, unless `&` marks them as a Long.
    const bool markedLong = reader.peek() == u'&';
    if (!markedLong && value >= 0x8000 && value <= 0xffff)
        return value - 0x10000;
    if (value >= 2147483648.0 && value <= 4294967295.0)
        return value - 4294967296.0;
    return value;
}

} // namespace

double doubleFromDecimal(const char* first, const char* last) noexcept
{
    double value = 0;
    const auto outcome = std::from_chars(first, last, value);
    if (outcome.ec != std::errc::result_out_of_range)
        return value;
    // Too large or too small? The place of the first digit that is not 0 against the exponent decides.
    std::int64_t magnitude = 0;
    bool inFraction = false;
    bool seen = false;
    const char* place = first;
    for (; place != last && *place != 'e'; ++place) {
        if (*place == '.') {
            inFraction = true;
            continue;
        }
        seen = seen || (*place >= '1' && *place <= '9');
        if (seen && !inFraction)
            ++magnitude;
        else if (!seen && inFraction)
            --magnitude;
    }
    int exponent = 0;
    if (place != last)
        std::from_chars(place + 1, last, exponent);
    return magnitude + exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

std::optional<ParsedNumber> parseNumber(QStringView text)
{
    return NumberParser(text).parse();
}

namespace {

/// A text that is a whole number of so few digits that a Double holds it, and nothing else, as most numbers of a
/// document are: its value needs no general reader.
std::optional<double> plainWholeNumber(QStringView text) noexcept
{
    constexpr qsizetype MostDigits = 15;
    const auto* at = text.utf16();
    const auto* const end = at + text.size();
    const bool isNegative = at != end && *at == u'-';
    at += isNegative;
    if (at == end || end - at > MostDigits || (isNegative && *at == u'0')) // "-0" has a sign that counts
        return std::nullopt;
    std::int64_t number = 0;
    for (; at != end; ++at) {
        if (*at < u'0' || *at > u'9')
            return std::nullopt;
        number = number * 10 + (*at - u'0');
    }
    return double(isNegative ? -number : number);
}

} // namespace

double val(QStringView text)
{
    if (const std::optional<double> whole = plainWholeNumber(text))
        return *whole;
    ValReader reader(text);
    if (reader.peek() == u'&') {
        reader.next();
        return valOfBits(reader);
    }
    const bool negative = reader.peek() == u'-';
    if (negative || reader.peek() == u'+')
        reader.next();
    DecimalBuilder builder;
    while (true) {
        if (isDigit(reader.peek()))
            builder.digit(reader.peek());
        else if (reader.peek() == u'.' && !builder.inFraction())
            builder.point();
        else
            break;
        reader.next();
    }
    if (!builder.hasDigits())
        return 0;
    if (isExponentLetter(reader.peek())) {
        reader.next();
        const bool down = reader.peek() == u'-';
        if (down || reader.peek() == u'+')
            reader.next();
        int exponent = 0;
        for (; isDigit(reader.peek()); reader.next())
            exponent = std::min(exponent * 10 + (reader.peek().unicode() - u'0'), LargestExponent);
        builder.exponent(down ? -exponent : exponent);
    }
    const double value = builder.value();
    return negative ? -value : value;
}

std::optional<double> numberFromText(QStringView text)
{
    const auto number = parseNumber(text);
    if (!number)
        return std::nullopt;
    return number->value;
}

} // namespace zan::values
