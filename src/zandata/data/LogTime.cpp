#include "zandata/data/LogTime.h"

#include "values/Calendar.h"
#include "values/Convert.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace zan::zandata {

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
