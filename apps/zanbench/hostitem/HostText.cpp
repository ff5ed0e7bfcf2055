#include "zanbench/hostitem/HostText.h"

#include "values/Convert.h"
#include "values/Format.h"

namespace zan::host {

namespace {

/// An argument counted from 1 up to the last; 0 and an argument left out mean 1.
int oneOf(std::optional<std::int16_t> given, int last)
{
    const int number = given.value_or(0);
    if (number < 0 || number > last)
        values::raise(values::ErrorNumber::InvalidCall);
    return number == 0 ? 1 : number;
}

} // namespace

QString HostText::Format(const Variant& value, const std::optional<QString>& format,
                         std::optional<std::int16_t> firstDayOfWeek, std::optional<std::int16_t> firstWeekOfYear)
{
    const auto day = static_cast<values::FirstDayOfWeek>(oneOf(firstDayOfWeek, 7));
    const auto week = static_cast<values::FirstWeekOfYear>(oneOf(firstWeekOfYear, 3));
    return values::format(value, format.value_or(QString()), day, week);
}

double HostText::Val(const QString& text)
{
    return values::val(text);
}

const binding::MemberTable& HostText::members() const
{
    using C = HostText;
    return binding::table([] {
        return binding::MemberTable("HostText", nullptr,
                                    {binding::method<&C::Format>("Format"), binding::method<&C::Val>("Val")});
    });
}

} // namespace zan::host
