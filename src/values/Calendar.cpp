#include "values/Calendar.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zan::values {

namespace {

constexpr int SecondsPerDay = 86400;
constexpr std::int64_t DaysFromEpoch = 693899; // from 0000-03-01 to 1899-12-30

constexpr std::array MonthNames{"January", "February", "March",     "April",   "May",      "June",
                                "July",    "August",   "September", "October", "November", "December"};
constexpr std::array DayNames{"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

std::int64_t floorDivide(std::int64_t value, std::int64_t by) noexcept
{
    return value >= 0 ? value / by : -((-value + by - 1) / by);
}

/// Place from 1 of the name that a word stands for; 0 when there is none.
template <std::size_t Count>
int placeOf(const std::array<const char*, Count>& names, QStringView word) noexcept
{
    for (std::size_t place = 0; place < Count; ++place) {
        const QLatin1StringView name(names[place]);
        if (word.compare(word.size() == 3 ? name.left(3) : name, Qt::CaseInsensitive) == 0)
            return int(place) + 1;
    }
    return 0;
}

QString nameOf(const char* name, bool abbreviated)
{
    return abbreviated ? QString::fromLatin1(name, 3) : QString::fromLatin1(name);
}

} // namespace

bool isValidDate(Date date) noexcept
{
    return date.serial > double(FirstDay) - 1 && date.serial < double(LastDay) + 1;
}

std::int64_t dayNumber(std::int64_t year, std::int64_t month, std::int64_t day) noexcept
{
    // Years run from March here, so that the leap day is the last day of its year.
    const std::int64_t months = year * 12 + month - 3;
    const std::int64_t marchYear = floorDivide(months, 12);
    const std::int64_t marchMonth = months - marchYear * 12;
    const std::int64_t days = marchYear * 365 + floorDivide(marchYear, 4) - floorDivide(marchYear, 100) +
                              floorDivide(marchYear, 400) + (marchMonth * 153 + 2) / 5 + day - 1;
    return days - DaysFromEpoch;
}

Date dateOf(std::int64_t dayNumber, int secondOfDay) noexcept
{
    const double fraction = double(secondOfDay) / SecondsPerDay;
    // The time of day counts forward even where days count backward.
    return {dayNumber < 0 ? double(dayNumber) - fraction : double(dayNumber) + fraction};
}

std::optional<CivilTime> civilTime(Date date) noexcept
{
    if (!isValidDate(date))
        return std::nullopt;
    const double whole = std::trunc(date.serial);
    auto number = std::int64_t(whole);
    auto seconds = std::int64_t(std::floor(std::fabs(date.serial - whole) * SecondsPerDay + 0.5));
    if (seconds == SecondsPerDay) {
        seconds = number == LastDay ? SecondsPerDay - 1 : 0;
        number = number == LastDay ? number : number + 1;
    }
    CivilTime time;
    time.dayNumber = std::int32_t(number);
    time.hour = int(seconds / 3600);
    time.minute = int(seconds / 60 % 60);
    time.second = int(seconds % 60);

    const std::int64_t days = number + DaysFromEpoch;
    std::int64_t marchYear = days * 400 / 146097;
    std::int64_t start = marchYear * 365 + marchYear / 4 - marchYear / 100 + marchYear / 400;
    if (days < start) {
        --marchYear;
        start = marchYear * 365 + marchYear / 4 - marchYear / 100 + marchYear / 400;
    } else if (const std::int64_t next = marchYear + 1; days >= next * 365 + next / 4 - next / 100 + next / 400) {
        marchYear = next;
        start = next * 365 + next / 4 - next / 100 + next / 400;
    }
    const std::int64_t dayOfMarchYear = days - start;
    const std::int64_t marchMonth = (dayOfMarchYear * 5 + 2) / 153;
    time.day = int(dayOfMarchYear - (marchMonth * 153 + 2) / 5 + 1);
    time.month = int(marchMonth < 10 ? marchMonth + 3 : marchMonth - 9);
    time.year = int(marchYear + (marchMonth >= 10 ? 1 : 0));
    return time;
}

int daysInMonth(int year, int month) noexcept
{
    return int(dayNumber(year, month + 1, 1) - dayNumber(year, month, 1));
}

int dayOfYear(const CivilTime& time) noexcept
{
    return int(time.dayNumber - dayNumber(time.year, 1, 1)) + 1;
}

int weekday(std::int32_t dayNumber, int firstDay) noexcept
{
    // Day 0, 30 December 1899, was a Saturday.
    const int fromSunday = int(((std::int64_t(dayNumber) + 6) % 7 + 7) % 7);
    return ((fromSunday - (firstDay - 1)) % 7 + 7) % 7 + 1;
}

int weekOfYear(const CivilTime& time, int firstDay, int firstWeek) noexcept
{
    constexpr int Monday = 2;
    constexpr int FourDays = 2;
    // COMPAT: the Monday that opens week one of a leap year, but lies in the year before, counts as week 53.
    if (firstDay == Monday && firstWeek == FourDays && time.month == 12 && time.day >= 29 &&
        weekday(time.dayNumber, Monday) == 1 && daysInMonth(time.year + 1, 2) == 29)
        return 53;
    // Start of week one of a year: the week of 1 January, or the one after it when too little of it is left.
    const auto firstWeekStart = [&](int year) {
        const auto january = std::int32_t(dayNumber(year, 1, 1));
        const int place = weekday(january, firstDay); // 1: the year starts with the week
        const std::int32_t start = january - (place - 1);
        const int daysInside = 8 - place;
        const bool counts = firstWeek == 1 || (firstWeek == 2 ? daysInside >= 4 : daysInside == 7);
        return counts ? start : start + 7;
    };
    std::int32_t start = firstWeekStart(time.year);
    if (time.dayNumber < start)
        start = firstWeekStart(time.year - 1);
    else if (firstWeek != 1) {
        if (const std::int32_t next = firstWeekStart(time.year + 1); time.dayNumber >= next)
            start = next;
    }
    return (time.dayNumber - start) / 7 + 1;
}

QString monthName(int month, bool abbreviated)
{
    return nameOf(MonthNames[std::size_t(month - 1)], abbreviated);
}

QString weekdayName(int day, bool abbreviated)
{
    return nameOf(DayNames[std::size_t(day - 1)], abbreviated);
}

int monthByName(QStringView word) noexcept
{
    return placeOf(MonthNames, word);
}

int weekdayByName(QStringView word) noexcept
{
    return placeOf(DayNames, word);
}

} // namespace zan::values
