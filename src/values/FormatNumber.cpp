#include "values/FormatOutput.h"

#include <charconv>

namespace zan::values {

void FormatOutput::fill(char16_t unit, std::int64_t count)
{
    if (count <= 0)
        return;
    const qsizetype start = m_units.size();
    m_units.resize(start + qsizetype(count));
    std::fill(m_units.begin() + start, m_units.end(), unit);
}

void FormatOutput::number(int value, int digits)
{
    char text[16];
    const auto made = std::to_chars(text, text + sizeof text, value);
    fill(u'0', digits - (made.ptr - text));
    for (const char* place = text; place != made.ptr; ++place)
        put(*place);
}

void putLiterals(FormatOutput& output, const FormatSection& section)
{
    output.put(section.literals);
}

namespace {

/// Writes the digits of a rounded number into the places of a section, from left to right.
class NumberWriter
{
public:
    NumberWriter(FormatOutput& output, const FormatSection& section, const Decimal& number, std::int64_t exponent)
        : m_output(output)
        , m_section(section)
        , m_number(number)
        , m_exponent(exponent)
        , m_wholeDigits(std::max<std::int64_t>(number.point(), 0))
        , m_shown(std::max<std::int64_t>(m_wholeDigits, section.leastWhole))
        , m_fractionShown(std::max<std::int64_t>(number.count() - number.point(), section.leastFraction))
        , m_wholePlacesLeft(section.wholePlaces)
    {}

    void write()
    {
        const QStringView literals(m_section.literals);
        qsizetype literal = 0;
        for (const FormatSection::Item& item : m_section.items) {
            switch (item.step) {
            case Step::Literal:
                m_output.put(literals.mid(literal, item.count));
                literal += item.count;
                break;
            case Step::WholePlaces:
                wholePlaces(item.count);
                break;
            case Step::Point:
                if (m_section.wholePlaces == 0)
                    wholeDigits(m_wholeDigits); // no place of their own: they stand before the point
                m_output.put(u'.');
                break;
            case Step::FractionPlaces:
                fractionPlaces(item.count);
                break;
            case Step::Exponent:
                exponent();
                break;
            default:
                break;
            }
        }
    }

private:
    /// The next `count` digits before the point, with zeros in front where the number has fewer.
    void wholeDigits(std::int64_t count)
    {
        for (; count > 0; --count) {
            const std::int64_t fromRight = m_shown - m_written;
            const std::int64_t place = m_wholeDigits - fromRight;
            m_output.put(place < 0 ? '0' : m_number.digit(place));
            ++m_written;
            if (m_section.thousands && fromRight > 1 && (fromRight - 1) % 3 == 0)
                m_output.put(u',');
        }
    }

    void wholePlaces(std::int32_t count)
    {
        m_wholePlacesLeft -= count;
        // The first place takes the digits for which there is no place; places beyond the digits stay empty.
        wholeDigits(std::max<std::int64_t>(m_shown - m_wholePlacesLeft - m_written, 0));
    }

    void fractionPlaces(std::int32_t count)
    {
        for (; count > 0 && m_fractionWritten < m_fractionShown; --count, ++m_fractionWritten) {
            const std::int64_t place = m_number.point() + m_fractionWritten;
            m_output.put(place < 0 ? '0' : m_number.digit(place));
        }
    }

    void exponent()
    {
        m_output.put(m_section.exponentLetter);
        if (m_exponent < 0)
            m_output.put(u'-');
        else if (m_section.exponentPlus)
            m_output.put(u'+');
        m_output.number(int(m_exponent < 0 ? -m_exponent : m_exponent), m_section.leastExponent);
    }

    FormatOutput& m_output;
    const FormatSection& m_section;
    const Decimal& m_number;
    std::int64_t m_exponent;
    std::int64_t m_wholeDigits;   ///< digits that the number has before its point
    std::int64_t m_shown;         ///< digits that are shown before the point
    std::int64_t m_fractionShown; ///< digits that are shown after the point
    std::int64_t m_wholePlacesLeft;
    std::int64_t m_written = 0;
    std::int64_t m_fractionWritten = 0;
};

} // namespace

void putNumber(FormatOutput& output, const FormatSection& section, Decimal number, bool sign)
{
    number.shift(section.scale);
    std::int64_t exponent = 0;
    if (section.hasExponent) {
        // Every digit place before the point takes a digit; the exponent makes up for it.
        number.keep(std::int64_t(section.wholePlaces) + section.fractionPlaces);
        if (!number.isZero()) {
            exponent = number.point() - section.wholePlaces;
            number.setPoint(section.wholePlaces);
        }
    } else {
        number.roundToDecimals(section.fractionPlaces);
    }
    // What rounds to zero has no sign; a section without places shows the sign of the value itself.
    const bool hasPlaces = section.wholePlaces + section.fractionPlaces > 0;
    if (sign && number.isNegative() && (!hasPlaces || !number.isZero()))
        output.put(u'-');
    NumberWriter(output, section, number, exponent).write();
}

} // namespace zan::values
