#include "zanbench/hostitem/HostReport.h"

#include "zanbench/Commands.h"

#include "values/Convert.h"

#include <QStringList>

#include <limits>

namespace zan::host {

Variant HostReport::Echo(binding::Object&, binding::Arguments arguments)
{
    QStringList words;
    for (const Variant& argument : arguments)
        words << values::toText(argument);
    print(words.join(QLatin1Char(' ')) + QLatin1Char('\n'));
    return {};
}

void HostReport::Assert(bool condition, const std::optional<QString>& text)
{
    HostRun& current = run();
    if (!condition)
        current.failHere(
            QStringLiteral("not so: %1").arg(text.value_or(QStringLiteral("an assertion without a text"))));
}

void HostReport::Quit(std::optional<std::int32_t> code)
{
    run().quit(code.value_or(Success));
    // Nothing after it runs, unless the script resumes: then its time is up.
    values::raise(values::ErrorNumber::InvalidCall);
}

const binding::MemberTable& HostReport::members() const
{
    using C = HostReport;
    return binding::table([] {
        binding::Member echo;
        echo.name = values::Name("Echo");
        echo.kind = binding::Member::Kind::Method;
        echo.type = binding::ValueType::None;
        echo.allowedArguments = std::numeric_limits<std::uint8_t>::max();
        echo.get = &HostReport::Echo;
        return binding::MemberTable("HostReport", nullptr,
                                    {
                                        echo,
                                        binding::method<&C::Assert>("Assert"),
                                        binding::method<&C::Quit>("Quit"),
                                    });
    });
}

} // namespace zan::host
