#pragma once

#include "values/Variant.h"

#include <cstdint>

namespace zan::values {

/// The decimal digits of a number as its shortest text has them, apart from sign and point. The value is
/// 0.d1d2d3... times ten to the power of `point`; zero has no digits. Rounding here is rounding of that text, so
/// 2.675 is a tie although the Double behind it lies a little below.
class Decimal
{
public:
    static constexpr int MaximumDigits = 24;

    explicit Decimal(double value) noexcept; ///< finite
    explicit Decimal(float value) noexcept;  ///< finite; the digits of the Single, not of the Double made of it
    explicit Decimal(std::int64_t value) noexcept;
    explicit Decimal(Currency value) noexcept;

    bool isNegative() const noexcept { return m_negative; }
    bool isZero() const noexcept { return m_count == 0; }
    std::int64_t point() const noexcept { return m_point; }
    int count() const noexcept { return m_count; }
    /// Digit at this place, 0 the first one; '0' beyond the last.
    char digit(std::int64_t place) const noexcept { return place < m_count ? m_digits[place] : '0'; }

    void setPoint(std::int64_t point) noexcept { m_point = point; }
    /// Multiplies by a power of ten.
    void shift(std::int64_t powers) noexcept
    {
        if (m_count > 0)
            m_point += powers;
    }
    /// Keeps so many digits after the point; half goes away from zero.
    void roundToDecimals(std::int64_t decimals) noexcept { keep(m_point + decimals); }
    /// Keeps so many digits from the first one on; half goes away from zero.
    void keep(std::int64_t digits) noexcept;

private:
    void trim() noexcept;
    void readScientific(const char* text, const char* end) noexcept;

    char m_digits[MaximumDigits];
    int m_count = 0;
    std::int64_t m_point = 0;
    bool m_negative = false;
};

} // namespace zan::values
