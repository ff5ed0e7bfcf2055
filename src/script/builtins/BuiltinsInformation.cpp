#include "script/builtins/BuiltinSupport.h"
#include "script/machine/Engine.h"
#include "script/machine/ErrObject.h"
#include "script/machine/ProcedureRef.h"

#include "values/DateText.h"

namespace zan::script {

namespace {

using values::ErrorNumber;
using values::Kind;

QString nameOfType(const Variant& value)
{
    switch (value.kind()) {
    case Kind::Empty:
        return QStringLiteral("Empty");
    case Kind::Null:
        return QStringLiteral("Null");
    case Kind::Integer:
        return QStringLiteral("Integer");
    case Kind::Long:
        return QStringLiteral("Long");
    case Kind::Single:
        return QStringLiteral("Single");
    case Kind::Double:
        return QStringLiteral("Double");
    case Kind::Currency:
        return QStringLiteral("Currency");
    case Kind::Date:
        return QStringLiteral("Date");
    case Kind::String:
        return QStringLiteral("String");
    case Kind::Object:
        return value.object() ? value.object()->typeName() : QStringLiteral("Nothing");
    case Kind::Error:
        return QStringLiteral("Error");
    case Kind::Boolean:
        return QStringLiteral("Boolean");
    case Kind::Byte:
        return QStringLiteral("Byte");
    case Kind::Array:
        return QStringLiteral("Variant()");
    }
    return {};
}

Variant typeName(Engine&, Arguments arguments)
{
    return Variant(nameOfType(arguments[0]));
}

Variant varType(Engine&, Arguments arguments)
{
    constexpr std::int16_t ArrayOfVariants = 8192 + 12;
    return Variant(arguments[0].isArray() ? ArrayOfVariants : std::int16_t(arguments[0].kind()));
}

Variant isArray(Engine&, Arguments arguments)
{
    return Variant(arguments[0].isArray());
}

Variant isDate(Engine&, Arguments arguments)
{
    const Variant& value = arguments[0];
    return Variant(value.is(Kind::Date) || (value.isText() && values::dateFromText(value.text()).has_value()));
}

Variant isEmpty(Engine&, Arguments arguments)
{
    return Variant(arguments[0].isEmpty());
}

Variant isNull(Engine&, Arguments arguments)
{
    return Variant(arguments[0].isNull());
}

/// The value of an object's default member; a missing value where it has none.
Variant defaultOrMissing(const Variant& object)
{
    try {
        return values::plainValue(object);
    } catch (const StopError&) {
        throw;
    } catch (const values::RuntimeError&) {
        return Variant::missing();
    }
}

Variant isNumeric(Engine&, Arguments arguments)
{
    const Variant value = arguments[0].isObject() ? defaultOrMissing(arguments[0]) : arguments[0];
    if (value.isText())
        return Variant(values::numberFromText(value.text()).has_value());
    return Variant(value.isNumber() || value.isEmpty());
}

Variant isObject(Engine&, Arguments arguments)
{
    return Variant(arguments[0].isObject());
}

Variant err(Engine& engine, Arguments)
{
    return Variant(engine.errRef());
}

Variant getRef(Engine& engine, Arguments arguments)
{
    if (!arguments[0].isText())
        values::raise(ErrorNumber::TypeMismatch);
    const Symbol* symbol = engine.symbols().find(values::Name(arguments[0].text()));
    require(symbol && symbol->kind == Symbol::Kind::Procedure);
    return Variant(values::make<ProcedureRef>(engine, *symbol->procedure));
}

Variant scriptEngine(Engine&, Arguments)
{
    return Variant(u"VBScript");
}

Variant majorVersion(Engine&, Arguments)
{
    return Variant(std::int32_t(5));
}

Variant minorVersion(Engine&, Arguments)
{
    return Variant(std::int32_t(8));
}

Variant buildVersion(Engine&, Arguments)
{
    return Variant(std::int32_t(0));
}

Variant getLocale(Engine& engine, Arguments)
{
    return Variant(std::int32_t(engine.locale));
}

/// Remembered, and nothing more: the platform writes numbers and dates one way.
Variant setLocale(Engine& engine, Arguments arguments)
{
    constexpr std::int32_t English = 1033;
    const std::int32_t old = engine.locale;
    const bool isNumber = given(arguments, 0) && !arguments[0].isText();
    const std::int32_t wanted = isNumber ? values::toLong(arguments[0]) : English;
    require(wanted >= 0);
    engine.locale = wanted == 0 ? English : wanted;
    return Variant(old);
}

using Cost = Builtin::Cost;

constexpr Builtin Functions[] = {
    {"Err", 0, 0, err},
    {"GetLocale", 0, 0, getLocale},
    {"GetRef", 1, 1, getRef},
    {"IsArray", 1, 1, isArray, Cost::Result},
    {"IsDate", 1, 1, isDate},
    {"IsEmpty", 1, 1, isEmpty, Cost::Result},
    {"IsNull", 1, 1, isNull, Cost::Result},
    {"IsNumeric", 1, 1, isNumeric},
    {"IsObject", 1, 1, isObject, Cost::Result},
    {"ScriptEngine", 0, 0, scriptEngine},
    {"ScriptEngineBuildVersion", 0, 0, buildVersion},
    {"ScriptEngineMajorVersion", 0, 0, majorVersion},
    {"ScriptEngineMinorVersion", 0, 0, minorVersion},
    {"SetLocale", 0, 1, setLocale},
    {"TypeName", 1, 1, typeName, Cost::Result},
    {"VarType", 1, 1, varType, Cost::Result},
};

} // namespace

std::span<const Builtin> informationFunctions() noexcept
{
    return Functions;
}

} // namespace zan::script
