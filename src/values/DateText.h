#pragma once

#include "values/Variant.h"

#include <QStringView>

#include <optional>

namespace zan::values {

/// The date and time that a text is as a whole, in English: "1/31/2026", "31 January 2026 2:05 pm", "Jan 31",
/// "2026-01-31 14:05", "14:05:10". The month comes first where both readings are possible; a year of two
/// digits lies in 1930 to 2029; a date without a year is in `currentYear` (0: the year of today). Nothing
/// when the text is no date.
std::optional<Date> dateFromText(QStringView text, int currentYear = 0);

} // namespace zan::values
