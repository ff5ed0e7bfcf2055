#pragma once

#include "zanbench/hostitem/HostFamily.h"

#include <optional>

namespace zan::host {

/// Texts and numbers as the panel makes them: Format, Val.
class HostText : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// The first day of the week is 1 (Sunday) to 7, the first week of the year 1 to 3, 0 the default of each;
    /// raises 5 for another one.
    QString Format(const Variant& value, const std::optional<QString>& format,
                   std::optional<std::int16_t> firstDayOfWeek, std::optional<std::int16_t> firstWeekOfYear);
    /// The leading number of a text.
    double Val(const QString& text);

    const binding::MemberTable& members() const override;
};

} // namespace zan::host
