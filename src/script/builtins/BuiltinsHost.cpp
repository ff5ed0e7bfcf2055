#include "script/builtins/BuiltinSupport.h"
#include "script/machine/Dictionary.h"
#include "script/machine/Engine.h"
#include "script/machine/RegExpObject.h"

namespace zan::script {

namespace {

using values::ErrorNumber;

/// Shows a box, which takes no time. A script that the user sets off meanwhile may have come to the end of it.
template <class Box>
auto ask(Engine& engine, Box&& box)
{
    auto answer = [&] {
        const Budget::Pause pause(engine.vm().budget());
        return box();
    }();
    engine.vm().budget().countCall();
    return answer;
}

Variant msgBox(Engine& engine, Arguments arguments)
{
    constexpr std::int16_t Ok = 1;
    const QString text = values::toText(arguments[0]);
    const std::int32_t buttons = longOr(arguments, 1, 0);
    require(buttons >= 0);
    const QString title = textOr(arguments, 2, {});
    ScriptHost* host = engine.settings().host;
    if (!host)
        return Variant(Ok);
    const int answer = ask(engine, [&] { return host->messageBox(text, buttons, title); });
    return Variant(std::int16_t(answer));
}

/// COMPAT: a box that was cancelled gives Empty, not an empty text.
Variant inputBox(Engine& engine, Arguments arguments)
{
    const QString prompt = values::toText(arguments[0]);
    const QString title = textOr(arguments, 1, {});
    const QString text = textOr(arguments, 2, {});
    ScriptHost* host = engine.settings().host;
    if (!host)
        return {};
    const std::optional<QString> typed = ask(engine, [&] { return host->inputBox(prompt, title, text); });
    return typed ? Variant(*typed) : Variant();
}

/// Nothing of the machine can be made: no files, no processes, no network.
Variant createObject(Engine& engine, Arguments arguments)
{
    const QString name = values::toText(arguments[0]);
    const auto& classes = engine.settings().classes;
    if (const auto found = classes.find(values::Name(name).folded()); found != classes.end()) {
        const values::Ref<binding::Object> object = found->second();
        engine.vm().budget().countCall();
        if (object)
            return Variant(object);
    } else if (name.compare(QLatin1String("Scripting.Dictionary"), Qt::CaseInsensitive) == 0) {
        return Variant(values::make<Dictionary>(engine));
    } else if (name.compare(QLatin1String("VBScript.RegExp"), Qt::CaseInsensitive) == 0) {
        return Variant(values::make<RegExpObject>(engine));
    }
    values::raise(ErrorNumber::CannotCreateObject);
}

Variant refused(Engine&, Arguments)
{
    values::raise(ErrorNumber::CannotCreateObject);
}

constexpr Builtin Functions[] = {
    {"CreateObject", 1, 2, createObject}, {"GetObject", 0, 2, refused}, {"InputBox", 1, 7, inputBox},
    {"LoadPicture", 0, 1, refused},       {"MsgBox", 1, 5, msgBox},
};

} // namespace

std::span<const Builtin> hostFunctions() noexcept
{
    return Functions;
}

} // namespace zan::script
