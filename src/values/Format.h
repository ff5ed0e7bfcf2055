#pragma once

#include "values/Variant.h"

#include <QString>
#include <QStringView>

namespace zan::values {

/// Day on which a week starts for the tokens `w` and `ww`: 1 is Sunday, 7 Saturday.
enum class FirstDayOfWeek : int { Sunday = 1, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday };
/// Which week is week one: that of 1 January, the first of at least four days, or the first full one.
enum class FirstWeekOfYear : int { WithJanuaryFirst = 1, FirstFourDays = 2, FirstFullWeek = 3 };

/// Text of a value under a user format text, as the classic formatter makes it. With an empty format a number
/// gives its general form, a text itself, Empty an empty text. Raises 94 for Null unless the format has a section
/// for it, 13 for an array, 91 for Nothing, what a default member raises for any other object, 6 for a date outside
/// the calendar, 14 for a format text of more than four million characters. Format texts are parsed once and kept.
QString format(const Variant& value, QStringView formatText, FirstDayOfWeek firstDay = FirstDayOfWeek::Sunday,
               FirstWeekOfYear firstWeek = FirstWeekOfYear::WithJanuaryFirst);

} // namespace zan::values
