#pragma once

#include "values/Variant.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace zan::values {

/// First and last whole day that a Date can name: 1 January 100 and 31 December 9999.
inline constexpr std::int32_t FirstDay = -657434;
inline constexpr std::int32_t LastDay = 2958465;

/// A point in time taken apart. The calendar is the Gregorian one for all years.
struct CivilTime
{
    int year = 1899;
    int month = 12;             ///< 1 to 12
    int day = 30;               ///< 1 to 31
    int hour = 0;               ///< 0 to 23
    int minute = 0;             ///< 0 to 59
    int second = 0;             ///< 0 to 59
    std::int32_t dayNumber = 0; ///< whole days since 1899-12-30
};

/// True for a date between 1 January 100 and the last second of 9999; false for NaN.
bool isValidDate(Date date) noexcept;

/// Takes a date apart, rounded to the nearest second; nothing when it lies outside the calendar.
std::optional<CivilTime> civilTime(Date date) noexcept;

/// Whole days since 1899-12-30 of a civil day. Months and days outside their range count on into the
/// neighbouring years and months, so month 14 is February of the next year. Years are taken as they are.
std::int64_t dayNumber(std::int64_t year, std::int64_t month, std::int64_t day) noexcept;

/// The Date of a whole day and a time of day in seconds (0 to 86,399).
Date dateOf(std::int64_t dayNumber, int secondOfDay) noexcept;

int daysInMonth(int year, int month) noexcept;
int dayOfYear(const CivilTime& time) noexcept;
/// 1 to 7, where 1 is the day that starts the week (`firstDay`: 1 Sunday to 7 Saturday).
int weekday(std::int32_t dayNumber, int firstDay) noexcept;
/// Week of the year of a day. `firstWeek`: 1 the week of 1 January, 2 the first of four days, 3 the first
/// full one.
int weekOfYear(const CivilTime& time, int firstDay, int firstWeek) noexcept;

/// English names, `month` 1 to 12, `day` 1 Sunday to 7 Saturday; three letters when abbreviated.
QString monthName(int month, bool abbreviated);
QString weekdayName(int day, bool abbreviated);
/// Number of the month or weekday that a word names in full or by its first three letters, case ignored; 0 when it
/// names none.
int monthByName(QStringView word) noexcept;
int weekdayByName(QStringView word) noexcept;

} // namespace zan::values
