#pragma once

#include "script/ScriptControl.h"

#include "binding/Object.h"

#include <QString>

#include <set>

namespace script_test {

/// What a case says its expectations with: Ok, Same, Fails and Gives are words of the script. A check that does not
/// hold fails the test at its own line of the case file.
class CaseChecks : public zan::binding::Object
{
public:
    CaseChecks(zan::script::ScriptControl& control, const QString& file)
        : m_control(control)
        , m_file(file.toStdString())
    {}
    const zan::binding::MemberTable& members() const override;

    int count() const { return m_count; }
    /// Lines whose checks were made.
    const std::set<int>& lines() const { return m_lines; }

    /// The condition is true.
    void ok(const zan::values::Variant& condition, const QString& text);
    /// Same type and same text.
    void same(const zan::values::Variant& actual, const zan::values::Variant& expected, const QString& text);
    /// The statements, run on their own outside procedures, fail with this number; 0: they do not fail.
    void fails(std::int32_t number, const QString& code);
    /// The expression has a value of this type that shows this text.
    void gives(const QString& expression, const QString& kind, const QString& shown);

private:
    void note(bool holds, const QString& text);
    QString describe(const zan::values::Variant& value);

    zan::script::ScriptControl& m_control;
    std::string m_file;
    int m_count = 0;
    std::set<int> m_lines;
};

} // namespace script_test
