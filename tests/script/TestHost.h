#pragma once

#include "script/ScriptControl.h"

#include "binding/MemberTable.h"
#include "values/Convert.h"
#include "values/RuntimeError.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace script_test {

using zan::binding::Enumerator;
using zan::script::ScriptControl;
using zan::script::ScriptHost;
using zan::script::ScriptLimits;
using zan::values::make;
using zan::values::Ref;
using zan::values::Variant;

/// Answers boxes and keeps what they showed.
class FakeHost : public ScriptHost
{
public:
    int messageBox(const QString& text, int buttons, const QString& title) override
    {
        boxes << text + QLatin1Char('|') + QString::number(buttons) + QLatin1Char('|') + title;
        now += boxTime;
        return answer;
    }
    std::optional<QString> inputBox(const QString& prompt, const QString& title, const QString& text) override
    {
        boxes << prompt + QLatin1Char('|') + title + QLatin1Char('|') + text;
        now += boxTime;
        return typed;
    }
    bool busy(std::chrono::milliseconds elapsed) override
    {
        ++busyCalls;
        lastElapsed = elapsed;
        return busyCalls < cancelAt;
    }

    QStringList boxes;
    int answer = 6;
    std::optional<QString> typed;
    int busyCalls = 0;
    int cancelAt = 1 << 30;
    std::chrono::milliseconds lastElapsed{0};
    std::chrono::nanoseconds now{0};
    std::chrono::nanoseconds boxTime{0};
};

/// An object that writes down what a script tells it, and can call back.
class Recorder : public zan::binding::Object
{
public:
    const zan::binding::MemberTable& members() const override
    {
        static const zan::binding::MemberTable table(
            "Recorder", nullptr,
            {
                zan::binding::method<&Recorder::echo>("Echo"),
                zan::binding::method<&Recorder::callBack>("CallBack"),
                zan::binding::method<&Recorder::resetControl>("ResetControl"),
                zan::binding::method<&Recorder::throwForeign>("ThrowForeign"),
                zan::binding::method<&Recorder::destroyControl>("DestroyControl"),
                zan::binding::method<&Recorder::keep>("Keep"),
                zan::binding::method<&Recorder::callKept>("CallKept"),
                zan::binding::property<&Recorder::level, &Recorder::setLevel>("Level"),
                zan::binding::readOnly<&Recorder::level>("Fixed"),
                zan::binding::property<&Recorder::cell, &Recorder::setCell>("Cell").asDefault(),
                zan::binding::property<&Recorder::child, &Recorder::setChild>("Child"),
            });
        return table;
    }
    std::unique_ptr<Enumerator> enumerate() override
    {
        struct Digits : Enumerator
        {
            std::optional<Variant> next() override
            {
                return digit < 3 ? std::optional(Variant(++digit)) : std::nullopt;
            }
            std::int32_t digit = 0;
        };
        return std::make_unique<Digits>();
    }

    void echo(const Variant& value)
    {
        lines << (value.isNull() ? QStringLiteral("Null") : zan::values::toText(value));
    }
    Variant callBack(const QString& name, std::optional<Variant> argument)
    {
        const auto result = argument ? control->Run(name, {*argument}) : control->Run(name);
        if (!result)
            throw zan::values::RuntimeError(control->Error().Number(), control->Error().Description());
        return *result;
    }
    void resetControl() { control->Reset(); }
    void destroyControl() { owned.reset(); }
    void throwForeign() { throw std::runtime_error("not ours"); }
    void keep(const Variant& value) { kept = value; }
    Variant callKept(std::optional<Variant> argument)
    {
        const Variant value = argument.value_or(Variant());
        return zan::binding::objectOf(kept).invoke({}, zan::binding::Access::Get,
                                                   {&value, argument ? std::size_t(1) : std::size_t(0)});
    }
    double level() const { return m_level; }
    void setLevel(double level) { m_level = level; }
    Variant cell(std::int32_t row, std::optional<std::int32_t> column) const
    {
        return Variant(row * 100 + column.value_or(0));
    }
    void setCell(std::int32_t row, std::optional<std::int32_t> column, const Variant& value)
    {
        lines << QStringLiteral("%1,%2=%3").arg(row).arg(column.value_or(0)).arg(zan::values::toText(value));
    }
    Variant child() const { return m_child; }
    void setChild(const Variant& child) { m_child = child; }

    ScriptControl* control = nullptr;
    std::unique_ptr<ScriptControl> owned;
    QStringList lines;
    Variant kept;

private:
    double m_level = 0;
    Variant m_child;
};

inline QString text(const std::optional<Variant>& value)
{
    return value ? zan::values::toText(*value) : QStringLiteral("(failed)");
}

} // namespace script_test
