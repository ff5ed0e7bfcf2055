#include "values/Format.h"

#include "values/Convert.h"

namespace zan::values {

QString format(const Variant& value, QStringView, FirstDayOfWeek, FirstWeekOfYear)
{
    return toText(value);
}

} // namespace zan::values
