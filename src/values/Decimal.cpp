#include "values/Decimal.h"

#include <charconv>
#include <cmath>

namespace zan::values {

Decimal::Decimal(double value) noexcept
    : m_negative(std::signbit(value))
{
    char text[40];
    const auto made = std::to_chars(text, text + sizeof text, std::fabs(value), std::chars_format::scientific);
    readScientific(text, made.ptr);
}

Decimal::Decimal(float value) noexcept
    : m_negative(std::signbit(value))
{
    char text[40];
    const auto made = std::to_chars(text, text + sizeof text, std::fabs(value), std::chars_format::scientific);
    readScientific(text, made.ptr);
}

Decimal::Decimal(std::int64_t value) noexcept
    : m_negative(value < 0)
{
    const std::uint64_t size = value < 0 ? 0 - std::uint64_t(value) : std::uint64_t(value);
    const auto made = std::to_chars(m_digits, m_digits + MaximumDigits, size);
    m_count = int(made.ptr - m_digits);
    m_point = m_count;
    trim();
}

Decimal::Decimal(Currency value) noexcept
    : Decimal(value.scaled)
{
    shift(-4);
}

void Decimal::readScientific(const char* text, const char* end) noexcept
{
    const char* place = text;
    for (; place != end && *place != 'e'; ++place) {
        if (*place != '.')
            m_digits[m_count++] = *place;
    }
    int exponent = 0;
    const bool down = place[1] == '-';
    std::from_chars(place + 2, end, exponent);
    m_point = (down ? -exponent : exponent) + 1;
    trim();
}

void Decimal::trim() noexcept
{
    while (m_count > 0 && m_digits[m_count - 1] == '0')
        --m_count;
    if (m_count == 0)
        m_point = 0;
}

void Decimal::keep(std::int64_t digits) noexcept
{
    if (digits >= m_count)
        return;
    if (digits < 0) {
        m_count = 0;
        m_point = 0;
        return;
    }
    const bool up = m_digits[digits] >= '5';
    m_count = int(digits);
    if (up) {
        while (m_count > 0 && m_digits[m_count - 1] == '9')
            --m_count;
        if (m_count > 0) {
            ++m_digits[m_count - 1];
        } else {
            m_digits[0] = '1';
            m_count = 1;
            ++m_point;
        }
    }
    trim();
}

} // namespace zan::values
