#pragma once

#include <cstdint>

namespace zan::values {

/// What a Variant holds. The values are the classic type codes that VarType reports; Array is a flag there.
enum class Kind : std::uint16_t {
    Empty = 0,
    Null = 1,
    Integer = 2, ///< 16-bit signed
    Long = 3,    ///< 32-bit signed
    Single = 4,
    Double = 5,
    Currency = 6, ///< 64-bit fixed point, four decimals
    Date = 7,     ///< days since 1899-12-30 as Double; the fraction is the time of day
    String = 8,
    Object = 9,
    Error = 10,
    Boolean = 11, ///< 16-bit, true is -1
    Byte = 17,
    Array = 8192, ///< an array of Variants
};

/// 64-bit fixed-point number with four decimals.
struct Currency
{
    std::int64_t scaled = 0; ///< value times 10,000
    friend bool operator==(Currency, Currency) = default;
};

/// Date and time as days since 1899-12-30 00:00; before that day the fraction still counts forward in time.
struct Date
{
    double serial = 0;
    friend bool operator==(Date, Date) = default;
};

/// An error number carried as a value (the kind Error), as for an omitted argument.
struct ErrorValue
{
    std::int32_t code = 0;
    friend bool operator==(ErrorValue, ErrorValue) = default;
    /// The value that stands for an argument left out of a call.
    static constexpr std::int32_t MissingArgument = std::int32_t(0x80020004);
};

} // namespace zan::values
