#include "zandata/data/TimeTicks.h"

#include "values/Calendar.h"

#include <QDateTime>

#include <algorithm>
#include <array>

namespace zan::zandata {

namespace {

constexpr std::int64_t Second = 1000;
constexpr std::int64_t Minute = 60 * Second;
constexpr std::int64_t Hour = 60 * Minute;
constexpr std::int64_t Day = 24 * Hour;
constexpr std::int64_t Month = 30 * Day;
constexpr std::int64_t Year = 365 * Day;

constexpr std::array ShortSteps{1 * std::int64_t(1),
                                std::int64_t(2),
                                std::int64_t(5),
                                std::int64_t(10),
                                std::int64_t(20),
                                std::int64_t(50),
                                std::int64_t(100),
                                std::int64_t(200),
                                std::int64_t(500),
                                Second,
                                2 * Second,
                                5 * Second,
                                10 * Second,
                                15 * Second,
                                30 * Second,
                                Minute,
                                2 * Minute,
                                5 * Minute,
                                10 * Minute,
                                15 * Minute,
                                30 * Minute,
                                Hour,
                                2 * Hour,
                                3 * Hour,
                                6 * Hour,
                                12 * Hour};
constexpr std::array DaySteps{1, 2, 7, 14};
constexpr std::array MonthSteps{1, 2, 3, 6};
constexpr std::array YearSteps{1, 2, 5, 10, 20, 50, 100};

QDateTime localOf(HistoryTime time)
{
    return QDateTime::fromMSecsSinceEpoch(std::clamp(time, EarliestTime, LatestTime));
}

QString twoDigits(int number)
{
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

QString dayText(const QDate& day)
{
    return QStringLiteral("%1 %2 %3")
        .arg(values::weekdayName(day.dayOfWeek() % 7 + 1, true))
        .arg(day.day())
        .arg(values::monthName(day.month(), true));
}

QString clockText(const QTime& time, bool withSeconds)
{
    QString text = twoDigits(time.hour()) + QLatin1Char(':') + twoDigits(time.minute());
    if (withSeconds || time.second() != 0 || time.msec() != 0)
        text += QLatin1Char(':') + twoDigits(time.second());
    if (time.msec() != 0)
        text += QStringLiteral(".%1").arg(time.msec(), 3, 10, QLatin1Char('0'));
    return text;
}

template <class Steps>
std::int64_t firstOf(const Steps& steps, std::int64_t unit, std::int64_t atLeast)
{
    for (const std::int64_t step : steps) {
        if (step * unit >= atLeast)
            return step;
    }
    return 0;
}

} // namespace

TimeTicks::TimeTicks(HistoryTime from, HistoryTime until, int most)
{
    if (until <= from)
        return;
    const std::int64_t atLeast = (until - from) / std::max(most, 1) + 1;
    if (const std::int64_t step = firstOf(ShortSteps, 1, atLeast)) {
        m_unit = Unit::Millisecond;
        m_count = step;
    } else if (const std::int64_t days = firstOf(DaySteps, Day, atLeast)) {
        m_unit = Unit::Day;
        m_count = days;
    } else if (const std::int64_t months = firstOf(MonthSteps, Month, atLeast)) {
        m_unit = Unit::Month;
        m_count = months;
    } else {
        m_unit = Unit::Year;
        m_count = std::max<std::int64_t>(firstOf(YearSteps, Year, atLeast), 1);
        if (m_count * Year < atLeast)
            m_count = 1000;
    }
    place(from, until);
}

void TimeTicks::place(HistoryTime from, HistoryTime until)
{
    const QDateTime begin = localOf(from);
    const QDate day = begin.date();
    const auto keep = [&](HistoryTime time) {
        if (time >= from && time <= until)
            m_times.push_back(time);
        return time <= until && m_times.size() < 1000;
    };
    switch (m_unit) {
    case Unit::Millisecond: {
        // Counted from midnight by the clock of the first moment: a change to summer time shifts the rest of the axis.
        const HistoryTime midnight = from - begin.time().msecsSinceStartOfDay();
        HistoryTime time = midnight + (from - midnight) / m_count * m_count;
        while (keep(time))
            time += m_count;
        break;
    }
    case Unit::Day: {
        // Weeks begin on Monday.
        QDate next = m_count % 7 == 0 ? day.addDays(1 - day.dayOfWeek()) : day;
        while (keep(next.startOfDay().toMSecsSinceEpoch()))
            next = next.addDays(m_count);
        break;
    }
    case Unit::Month: {
        QDate next(day.year(), (day.month() - 1) / int(m_count) * int(m_count) + 1, 1);
        while (keep(next.startOfDay().toMSecsSinceEpoch()))
            next = next.addMonths(int(m_count));
        break;
    }
    case Unit::Year: {
        QDate next(std::max(day.year() / int(m_count) * int(m_count), 1), 1, 1);
        while (keep(next.startOfDay().toMSecsSinceEpoch()))
            next = next.addYears(int(m_count));
        break;
    }
    }
}

QString TimeTicks::label(HistoryTime time) const
{
    const QDateTime local = localOf(time);
    switch (m_unit) {
    case Unit::Millisecond:
        if (local.time().msecsSinceStartOfDay() == 0)
            return dayText(local.date());
        return clockText(local.time(), m_count < Minute);
    case Unit::Day:
        return dayText(local.date());
    case Unit::Month:
        return values::monthName(local.date().month(), true) + QLatin1Char(' ') +
               QString::number(local.date().year());
    case Unit::Year:
        break;
    }
    return QString::number(local.date().year());
}

QString spanText(HistoryTime from, HistoryTime until)
{
    const QDateTime begin = localOf(from);
    const QDateTime end = localOf(until);
    const auto whole = [](const QDateTime& moment) {
        return dayText(moment.date()) + QLatin1Char(' ') + QString::number(moment.date().year()) +
               QLatin1String(", ") + clockText(moment.time(), false);
    };
    // Milliseconds say nothing of a stretch that is longer than some seconds.
    const auto cut = [&](const QDateTime& moment) {
        return until - from < 10 * Second ? moment : moment.addMSecs(-moment.time().msec());
    };
    const QDateTime a = cut(begin);
    const QDateTime b = cut(end);
    if (a.date() == b.date())
        return whole(a) + QLatin1String(" to ") + clockText(b.time(), false);
    return whole(a) + QLatin1String(" to ") + whole(b);
}

} // namespace zan::zandata
