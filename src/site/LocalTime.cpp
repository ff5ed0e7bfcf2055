#include "site/LocalTime.h"

#include "values/Calendar.h"
#include "values/Convert.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace zan::site {

namespace {

constexpr double MillisecondsPerDay = 86'400'000.0;
/// The day of 1970-01-01 in a Date's count.
constexpr qint64 FirstUnixDay = 25569;

} // namespace

std::optional<HistoryTime> timeOf(const Variant& date)
{
    if (date.kind() != values::Kind::Date)
        return std::nullopt;
    values::Date value{};
    if (values::tryToDate(date, value) != values::ErrorNumber::None || !values::isValidDate(value))
        return std::nullopt;
    // Before 1899-12-30 the fraction counts on from the whole day all the same.
    const double day = std::trunc(value.serial);
    const double fraction = std::fabs(value.serial - day);
    const auto reading = (qint64(day) - FirstUnixDay) * qint64(MillisecondsPerDay) +
                         qint64(std::llround(fraction * MillisecondsPerDay));
    const QDateTime civil = QDateTime::fromMSecsSinceEpoch(reading, Qt::UTC);
    const QDateTime local(civil.date(), civil.time(), Qt::LocalTime);
    return std::clamp<HistoryTime>(local.toMSecsSinceEpoch(), EarliestTime, LatestTime);
}

values::Date dateOf(HistoryTime time)
{
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(std::clamp(time, EarliestTime, LatestTime));
    const QDate day = local.date();
    const double whole = double(values::dayNumber(day.year(), day.month(), day.day()));
    const double fraction = double(local.time().msecsSinceStartOfDay()) / MillisecondsPerDay;
    return {whole < 0 ? whole - fraction : whole + fraction};
}

} // namespace zan::site
