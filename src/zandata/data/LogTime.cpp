#include "zandata/data/LogTime.h"

#include "values/Calendar.h"
#include "values/Convert.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace zan::zandata {

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

QString timeText(HistoryTime time)
{
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(std::clamp(time, EarliestTime, LatestTime));
    const bool isWhole = local.time().msec() == 0;
    return local.toString(isWhole ? QStringLiteral("yyyy-MM-dd HH:mm:ss")
                                  : QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
}

std::optional<HistoryTime> timeFromText(const QString& text, HistoryTime near)
{
    const QString wanted = text.trimmed();
    if (wanted.isEmpty() || wanted.size() > 100)
        return std::nullopt;
    values::Date date{};
    if (values::tryToDate(Variant(wanted), date) != values::ErrorNumber::None || !values::isValidDate(date))
        return std::nullopt;
    if (date.serial >= 0 && date.serial < 1) // a time of day alone
        date.serial += std::floor(dateOf(near).serial);
    return timeOf(Variant(date));
}

} // namespace zan::zandata
