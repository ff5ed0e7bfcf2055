#include "script/builtins/BuiltinSupport.h"

#include "values/Calendar.h"
#include "values/DateText.h"

#include <QDateTime>

#include <cmath>

namespace zan::script {

namespace {

using values::CivilTime;
using values::Date;
using values::ErrorNumber;

constexpr int SecondsPerDay = 86400;

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

Interval intervalOf(const Variant& value)
{
    constexpr std::pair<const char*, Interval> Names[] = {
        {"yyyy", Interval::Year}, {"q", Interval::Quarter}, {"m", Interval::Month}, {"y", Interval::DayOfYear},
        {"d", Interval::Day},     {"w", Interval::Weekday}, {"ww", Interval::Week}, {"h", Interval::Hour},
        {"n", Interval::Minute},  {"s", Interval::Second},
    };
    const QString text = values::toText(value);
    for (const auto& [name, interval] : Names) {
        if (text.compare(QLatin1String(name), Qt::CaseInsensitive) == 0)
            return interval;
    }
    values::raise(ErrorNumber::InvalidCall);
}

CivilTime civil(const Variant& value)
{
    const std::optional<CivilTime> time = values::civilTime(values::toDate(value));
    if (!time)
        values::raise(ErrorNumber::InvalidCall);
    return *time;
}

int secondOfDay(const CivilTime& time) noexcept
{
    return time.hour * 3600 + time.minute * 60 + time.second;
}

Variant dateValueOf(std::int64_t day, std::int64_t seconds)
{
    std::int64_t carried = seconds / SecondsPerDay;
    std::int64_t rest = seconds % SecondsPerDay;
    if (rest < 0) {
        rest += SecondsPerDay;
        --carried;
    }
    day += carried;
    if (day < values::FirstDay || day > values::LastDay)
        values::raise(ErrorNumber::InvalidCall);
    return Variant(values::dateOf(day, int(rest)));
}

Variant addMonths(const CivilTime& time, std::int64_t months)
{
    const std::int64_t total = std::int64_t(time.year) * 12 + (time.month - 1) + months;
    const std::int64_t year = total >= 0 ? total / 12 : -1;
    if (year < 100 || year > 9999)
        values::raise(ErrorNumber::InvalidCall);
    const int month = int(total % 12) + 1;
    const int day =
        std::min(time.day, values::daysInMonth(int(year), month)); // 31 January and a month: 28 February
    return dateValueOf(values::dayNumber(year, month, day), secondOfDay(time));
}

Variant dateAdd(Engine&, Arguments arguments)
{
    const Interval interval = intervalOf(arguments[0]);
    const std::int64_t number = values::toLong(arguments[1]);
    if (arguments[2].isNull())
        return Variant::null();
    const CivilTime time = civil(arguments[2]);
    const int seconds = secondOfDay(time);
    switch (interval) {
    case Interval::Year:
        return addMonths(time, number * 12);
    case Interval::Quarter:
        return addMonths(time, number * 3);
    case Interval::Month:
        return addMonths(time, number);
    case Interval::Week:
        return dateValueOf(time.dayNumber + number * 7, seconds);
    case Interval::Hour:
        return dateValueOf(time.dayNumber, seconds + number * 3600);
    case Interval::Minute:
        return dateValueOf(time.dayNumber, seconds + number * 60);
    case Interval::Second:
        return dateValueOf(time.dayNumber, seconds + number);
    default:
        return dateValueOf(time.dayNumber + number, seconds);
    }
}

int firstDayArgument(Arguments arguments, std::size_t place)
{
    const std::int32_t day = longOr(arguments, place, 1);
    require(day >= 0 && day <= 7);
    return day == 0 ? 1 : day;
}

int firstWeekArgument(Arguments arguments, std::size_t place)
{
    const std::int32_t week = longOr(arguments, place, 1);
    require(week >= 0 && week <= 3);
    return week == 0 ? 1 : week;
}

/// Boundaries of the interval that lie between two points in time.
Variant dateDiff(Engine&, Arguments arguments)
{
    const Interval interval = intervalOf(arguments[0]);
    if (arguments[1].isNull() || arguments[2].isNull())
        return Variant::null();
    const CivilTime from = civil(arguments[1]);
    const CivilTime to = civil(arguments[2]);
    const int firstDay = firstDayArgument(arguments, 3);
    firstWeekArgument(arguments, 4);
    const std::int64_t days = std::int64_t(to.dayNumber) - from.dayNumber;
    const std::int64_t months = (std::int64_t(to.year) - from.year) * 12 + (to.month - from.month);
    const auto unitsIn = [&](std::int64_t perDay, int secondsPerUnit) {
        return days * perDay + secondOfDay(to) / secondsPerUnit - secondOfDay(from) / secondsPerUnit;
    };
    std::int64_t result = 0;
    switch (interval) {
    case Interval::Year:
        result = to.year - from.year;
        break;
    case Interval::Quarter:
        result = (std::int64_t(to.year) - from.year) * 4 + ((to.month - 1) / 3 - (from.month - 1) / 3);
        break;
    case Interval::Month:
        result = months;
        break;
    case Interval::Weekday:
        result = days / 7;
        break;
    case Interval::Week: {
        const std::int64_t lead = values::weekday(from.dayNumber, firstDay) - 1;
        const std::int64_t shifted = days + lead;
        result = shifted >= 0 ? shifted / 7 : -((-shifted + 6) / 7);
        break;
    }
    case Interval::Hour:
        result = unitsIn(24, 3600);
        break;
    case Interval::Minute:
        result = unitsIn(1440, 60);
        break;
    case Interval::Second:
        result = unitsIn(SecondsPerDay, 1);
        break;
    default:
        result = days;
        break;
    }
    if (result != std::int32_t(result))
        values::raise(ErrorNumber::Overflow);
    return Variant(std::int32_t(result));
}

Variant datePart(Engine&, Arguments arguments)
{
    const Interval interval = intervalOf(arguments[0]);
    if (arguments[1].isNull())
        return Variant::null();
    const CivilTime time = civil(arguments[1]);
    const int firstDay = firstDayArgument(arguments, 2);
    const int firstWeek = firstWeekArgument(arguments, 3);
    int part = 0;
    switch (interval) {
    case Interval::Year:
        part = time.year;
        break;
    case Interval::Quarter:
        part = (time.month - 1) / 3 + 1;
        break;
    case Interval::Month:
        part = time.month;
        break;
    case Interval::DayOfYear:
        part = values::dayOfYear(time);
        break;
    case Interval::Day:
        part = time.day;
        break;
    case Interval::Weekday:
        part = values::weekday(time.dayNumber, firstDay);
        break;
    case Interval::Week:
        part = values::weekOfYear(time, firstDay, firstWeek);
        break;
    case Interval::Hour:
        part = time.hour;
        break;
    case Interval::Minute:
        part = time.minute;
        break;
    case Interval::Second:
        part = time.second;
        break;
    }
    return Variant(std::int16_t(part));
}

template <int CivilTime::*Field>
Variant part(Engine&, Arguments arguments)
{
    return arguments[0].isNull() ? Variant::null() : Variant(std::int16_t(civil(arguments[0]).*Field));
}

Variant dateSerial(Engine&, Arguments arguments)
{
    std::int64_t year = values::toInteger(arguments[0]);
    const std::int64_t month = values::toInteger(arguments[1]);
    const std::int64_t day = values::toInteger(arguments[2]);
    if (year >= 0 && year < 100)
        year += year < 30 ? 2000 : 1900;
    require(year >= 100 && year <= 9999);
    return dateValueOf(values::dayNumber(year, month, day), 0);
}

Variant timeSerial(Engine&, Arguments arguments)
{
    const std::int64_t hour = values::toInteger(arguments[0]);
    const std::int64_t minute = values::toInteger(arguments[1]);
    const std::int64_t second = values::toInteger(arguments[2]);
    return dateValueOf(0, hour * 3600 + minute * 60 + second);
}

/// The date or time that a text says. COMPAT: a number is none, though it converts to a date elsewhere.
CivilTime written(const Variant& value)
{
    const Variant plain = values::plainValue(value);
    if (plain.is(values::Kind::Date))
        return civil(plain);
    const std::optional<Date> date = values::dateFromText(values::toText(plain));
    if (!date)
        values::raise(ErrorNumber::TypeMismatch);
    return civil(Variant(*date));
}

Variant dateValue(Engine&, Arguments arguments)
{
    return Variant(values::dateOf(written(arguments[0]).dayNumber, 0));
}

Variant timeValue(Engine&, Arguments arguments)
{
    return Variant(values::dateOf(0, secondOfDay(written(arguments[0]))));
}

Variant weekday(Engine&, Arguments arguments)
{
    const int firstDay = firstDayArgument(arguments, 1);
    if (arguments[0].isNull())
        return Variant::null();
    return Variant(std::int16_t(values::weekday(civil(arguments[0]).dayNumber, firstDay)));
}

Variant weekdayName(Engine&, Arguments arguments)
{
    const std::int32_t number = values::toLong(arguments[0]);
    require(number >= 1 && number <= 7);
    const bool abbreviated = given(arguments, 1) && values::toBoolean(arguments[1]);
    const int firstDay = firstDayArgument(arguments, 2);
    return Variant(values::weekdayName((number - 1 + firstDay - 1) % 7 + 1, abbreviated));
}

Variant monthName(Engine&, Arguments arguments)
{
    const std::int32_t number = values::toLong(arguments[0]);
    require(number >= 1 && number <= 12);
    return Variant(values::monthName(number, given(arguments, 1) && values::toBoolean(arguments[1])));
}

Variant now(bool withDate, bool withTime)
{
    const QDateTime local = QDateTime::currentDateTime();
    const QDate date = local.date();
    const std::int64_t day = withDate ? values::dayNumber(date.year(), date.month(), date.day()) : 0;
    return Variant(values::dateOf(day, withTime ? local.time().msecsSinceStartOfDay() / 1000 : 0));
}

Variant currentDate(Engine&, Arguments)
{
    return now(true, false);
}

Variant currentTime(Engine&, Arguments)
{
    return now(false, true);
}

Variant currentDateTime(Engine&, Arguments)
{
    return now(true, true);
}

Variant timer(Engine&, Arguments)
{
    return Variant(float(double(QTime::currentTime().msecsSinceStartOfDay()) / 1000.0));
}

constexpr Builtin Functions[] = {
    {"Date", 0, 0, currentDate},
    {"DateAdd", 3, 3, dateAdd},
    {"DateDiff", 3, 5, dateDiff},
    {"DatePart", 2, 4, datePart},
    {"DateSerial", 3, 3, dateSerial},
    {"DateValue", 1, 1, dateValue},
    {"Day", 1, 1, part<&CivilTime::day>},
    {"Hour", 1, 1, part<&CivilTime::hour>},
    {"Minute", 1, 1, part<&CivilTime::minute>},
    {"Month", 1, 1, part<&CivilTime::month>},
    {"MonthName", 1, 2, monthName},
    {"Now", 0, 0, currentDateTime},
    {"Second", 1, 1, part<&CivilTime::second>},
    {"Time", 0, 0, currentTime},
    {"Timer", 0, 0, timer},
    {"TimeSerial", 3, 3, timeSerial},
    {"TimeValue", 1, 1, timeValue},
    {"Weekday", 1, 2, weekday},
    {"WeekdayName", 1, 3, weekdayName},
    {"Year", 1, 1, part<&CivilTime::year>},
};

} // namespace

std::span<const Builtin> dateFunctions() noexcept
{
    return Functions;
}

} // namespace zan::script
