#include "values/Calendar.h"
#include "values/FormatOutput.h"
#include "values/RuntimeError.h"

namespace zan::values {

namespace {

int hourOfTwelve(const CivilTime& time) noexcept
{
    return time.hour % 12 == 0 ? 12 : time.hour % 12;
}

void putShortDate(FormatOutput& output, const CivilTime& time)
{
    output.number(time.month);
    output.put(u'/');
    output.number(time.day);
    output.put(u'/');
    output.number(time.year, 4);
}

void putLongTime(FormatOutput& output, const CivilTime& time)
{
    output.number(hourOfTwelve(time));
    output.put(u':');
    output.number(time.minute, 2);
    output.put(u':');
    output.number(time.second, 2);
    output.put(time.hour < 12 ? u" AM" : u" PM");
}

/// Writes the steps of a date section one after another.
class DateWriter
{
public:
    DateWriter(FormatOutput& output, const FormatSection& section, const CivilTime& time, int firstDay,
               int firstWeek)
        : m_output(output)
        , m_section(section)
        , m_time(time)
        , m_firstDay(firstDay)
        , m_firstWeek(firstWeek)
    {}

    void write()
    {
        const QStringView literals(m_section.literals);
        qsizetype literal = 0;
        for (const FormatSection::Item& item : m_section.items) {
            if (item.step == Step::Literal) {
                m_output.put(literals.mid(literal, item.count));
                literal += item.count;
            } else {
                field(item.step);
            }
        }
    }

private:
    void field(Step step)
    {
        switch (step) {
        case Step::DateAndTime:
            return putDateAndTime(m_output, m_time);
        case Step::ShortDate:
            return putShortDate(m_output, m_time);
        case Step::LongDate:
            return longDate();
        case Step::LongTime:
            return putLongTime(m_output, m_time);
        case Step::HalfOfDayUpper:
            return m_output.put(m_time.hour < 12 ? u"AM" : u"PM");
        case Step::HalfOfDayLower:
            return m_output.put(m_time.hour < 12 ? u"am" : u"pm");
        case Step::HalfOfDayLetterUpper:
            return m_output.put(m_time.hour < 12 ? u'A' : u'P');
        case Step::HalfOfDayLetterLower:
            return m_output.put(m_time.hour < 12 ? u'a' : u'p');
        case Step::Hour:
            return m_output.number(hour(m_section.twelveHours));
        case Step::HourTwo:
            return m_output.number(hour(m_section.twelveHours), 2);
        case Step::Minute:
            return m_output.number(m_time.minute);
        case Step::MinuteTwo:
            return m_output.number(m_time.minute, 2);
        case Step::Second:
            return m_output.number(m_time.second);
        case Step::SecondTwo:
            return m_output.number(m_time.second, 2);
        default:
            return dayField(step);
        }
    }

    void dayField(Step step)
    {
        switch (step) {
        case Step::Day:
            return m_output.number(m_time.day);
        case Step::DayTwo:
            return m_output.number(m_time.day, 2);
        case Step::DayShortName:
            return m_output.put(weekdayName(weekday(m_time.dayNumber, 1), true));
        case Step::DayLongName:
            return m_output.put(weekdayName(weekday(m_time.dayNumber, 1), false));
        case Step::WeekdayNumber:
            return m_output.number(weekday(m_time.dayNumber, m_firstDay));
        case Step::WeekOfYear:
            return m_output.number(weekOfYear(m_time, m_firstDay, m_firstWeek));
        case Step::Month:
            return m_output.number(m_time.month);
        case Step::MonthTwo:
            return m_output.number(m_time.month, 2);
        case Step::MonthShortName:
            return m_output.put(monthName(m_time.month, true));
        case Step::MonthLongName:
            return m_output.put(monthName(m_time.month, false));
        case Step::Quarter:
            return m_output.number((m_time.month + 2) / 3);
        case Step::DayOfYear:
            return m_output.number(dayOfYear(m_time));
        case Step::YearTwo:
            return m_output.number(m_time.year % 100, 2);
        case Step::YearFour:
            return m_output.number(m_time.year, 4);
        default:
            return;
        }
    }

    int hour(bool twelve) const noexcept { return twelve ? hourOfTwelve(m_time) : m_time.hour; }

    void longDate()
    {
        m_output.put(weekdayName(weekday(m_time.dayNumber, 1), false));
        m_output.put(u", ");
        m_output.put(monthName(m_time.month, false));
        m_output.put(u' ');
        m_output.number(m_time.day);
        m_output.put(u", ");
        m_output.number(m_time.year, 4);
    }

    FormatOutput& m_output;
    const FormatSection& m_section;
    const CivilTime& m_time;
    int m_firstDay;
    int m_firstWeek;
};

} // namespace

void putDateAndTime(FormatOutput& output, const CivilTime& time)
{
    const bool hasDate = time.dayNumber != 0;
    const bool hasTime = time.hour != 0 || time.minute != 0 || time.second != 0;
    if (hasDate)
        putShortDate(output, time);
    if (hasDate && hasTime)
        output.put(u' ');
    if (hasTime || !hasDate)
        putLongTime(output, time);
}

void putDate(FormatOutput& output, const FormatSection& section, Date date, int firstDay, int firstWeek)
{
    const auto time = civilTime(date);
    if (!time)
        raise(ErrorNumber::Overflow);
    DateWriter(output, section, *time, firstDay, firstWeek).write();
}

} // namespace zan::values
