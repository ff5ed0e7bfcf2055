#include "CaseChecks.h"

#include "binding/MemberTable.h"
#include "values/Convert.h"

#include <gtest/gtest.h>

namespace script_test {

using zan::values::Variant;

const zan::binding::MemberTable& CaseChecks::members() const
{
    using zan::binding::method;
    static const zan::binding::MemberTable table("Checks", nullptr,
                                                 {
                                                     method<&CaseChecks::ok>("Ok"),
                                                     method<&CaseChecks::same>("Same"),
                                                     method<&CaseChecks::fails>("Fails"),
                                                     method<&CaseChecks::gives>("Gives"),
                                                 });
    return table;
}

void CaseChecks::note(bool holds, const QString& text)
{
    ++m_count;
    const int line = m_control.currentPlace().line;
    m_lines.insert(line);
    if (!holds)
        ADD_FAILURE_AT(m_file.c_str(), line) << qPrintable(text);
}

QString CaseChecks::describe(const Variant& value)
{
    const auto words = m_control.Run(QStringLiteral("Describe"), {value});
    return words ? zan::values::toText(*words) : m_control.Error().Description();
}

void CaseChecks::ok(const Variant& condition, const QString& text)
{
    const bool isNull = condition.isNull();
    note(!isNull && zan::values::toBoolean(condition), isNull ? text + QStringLiteral(" (Null)") : text);
}

void CaseChecks::same(const Variant& actual, const Variant& expected, const QString& text)
{
    const QString is = describe(actual);
    const QString wanted = describe(expected);
    note(is == wanted, QStringLiteral("%1: is %2, expected %3").arg(text, is, wanted));
}

void CaseChecks::fails(std::int32_t number, const QString& code)
{
    const int raised = m_control.AddCode(code) ? 0 : m_control.Error().Number();
    note(raised == number, QStringLiteral("%1 raised %2, expected %3").arg(code).arg(raised).arg(number));
}

void CaseChecks::gives(const QString& expression, const QString& kind, const QString& shown)
{
    const auto value = m_control.Eval(expression);
    if (!value) {
        const auto& error = m_control.Error();
        note(false, QStringLiteral("%1 raised %2 %3").arg(expression).arg(error.Number()).arg(error.Description()));
        return;
    }
    const QString is = describe(*value);
    const QString wanted = kind == QLatin1String("Null") ? kind : QStringLiteral("%1 '%2'").arg(kind, shown);
    note(is == wanted, QStringLiteral("%1: is %2, expected %3").arg(expression, is, wanted));
}

} // namespace script_test
