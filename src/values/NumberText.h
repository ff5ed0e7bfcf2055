#pragma once

#include "values/Variant.h"

#include <QString>

namespace zan::values {

/// Number as people see it: at most 15 significant digits for a Double, 7 for a Single, `.` as decimal point,
/// "1E+15" form where that is too few for the digits before the point or for those after it with their leading
/// zeros ("0.075", but "7.50750750750751E-02"). What CStr and `&` make of a number.
QString displayText(double value);
QString displayText(float value);
QString displayText(Currency value);

/// Number as a document stores it: the shortest decimal that parses back to the very same value, `.` as decimal
/// point. Infinities and NaN, which no document can hold, become "0".
QString documentText(double value);
QString documentText(float value);

/// Date and time as CStr shows it, English forms: "1/31/2026 2:05:00 PM"; the date alone at midnight, the time
/// alone on day zero.
QString displayText(Date value);

} // namespace zan::values
