#include "script/ScriptControl.h"

#include "script/machine/Engine.h"
#include "script/syntax/CompileError.h"

#include "values/RuntimeError.h"

namespace zan::script {

using values::ErrorNumber;
using values::RuntimeError;
using values::Variant;

namespace {

std::chrono::nanoseconds steadyTime()
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

/// The line of a text with this number, from 1. CR, LF and CR LF each end a line.
QString lineOf(const QString& text, int line)
{
    qsizetype start = 0;
    for (qsizetype place = 0; place <= text.size(); ++place) {
        const bool atEnd = place == text.size();
        const QChar c = atEnd ? QChar() : text[place];
        if (!atEnd && c != QLatin1Char('\r') && c != QLatin1Char('\n'))
            continue;
        if (--line == 0)
            return text.mid(start, place - start);
        if (c == QLatin1Char('\r') && place + 1 < text.size() && text[place + 1] == QLatin1Char('\n'))
            ++place;
        start = place + 1;
    }
    return {};
}

} // namespace

ScriptControl::ScriptControl(ScriptHost* host)
    : m_settings(std::make_shared<EngineSettings>())
    , m_state(std::make_shared<State>())
{
    m_settings->host = host;
    m_settings->clock = steadyTime;
    m_settings->memoryInUse = heapInUse;
    m_state->engine = std::make_shared<Engine>(m_settings);
}

ScriptControl::~ScriptControl() = default;

void ScriptControl::Reset()
{
    // A program that is under way keeps its engine until it returns.
    const std::shared_ptr<State> state = m_state;
    const std::shared_ptr<Engine> old = std::exchange(state->engine, std::make_shared<Engine>(m_settings));
    state->error.Clear();
}

/// Runs a call into the engine; false when it failed, with the error noted.
template <class Call>
bool ScriptControl::guarded(const QString& text, Call&& call)
{
    const std::shared_ptr<State> state = m_state; // outlives the control, and the engine a Reset by the script
    const std::shared_ptr<Engine> engine = state->engine;
    ++state->running;
    bool succeeded = false;
    try {
        call(*engine);
        succeeded = true;
    } catch (const CompileError& error) {
        state->error = ScriptError(error.number(), compileErrorText(error.number()),
                                   QStringLiteral("VBScript compilation error"), error.position().line,
                                   error.position().column, lineOf(text, error.position().line));
    } catch (const NamedError& error) {
        QString description = error.description();
        if (!error.about().isEmpty())
            description += QStringLiteral(": '%1'").arg(error.about().text());
        const Position position = engine->vm().errorPosition();
        state->error = ScriptError(error.number(), description, QStringLiteral("VBScript runtime error"),
                                   position.line, position.column, {});
    } catch (const RuntimeError& error) {
        const Position position = engine->vm().errorPosition();
        const QString source = error.source().isEmpty() ? QStringLiteral("VBScript runtime error") : error.source();
        state->error = ScriptError(error.number(), error.description(), source, position.line, position.column, {});
    } catch (const std::bad_alloc&) {
        state->error = ScriptError(int(ErrorNumber::OutOfMemory), values::errorText(ErrorNumber::OutOfMemory),
                                   QStringLiteral("VBScript runtime error"), 0, 0, {});
    }
    --state->running;
    return succeeded;
}

bool ScriptControl::AddObject(const QString& name, const binding::Ref<binding::Object>& object, bool addMembers)
{
    const bool added = m_state->engine->addObject(values::Name(name), object, addMembers);
    if (!added)
        m_state->error = ScriptError(int(ErrorNumber::InvalidCall), values::errorText(ErrorNumber::InvalidCall),
                                     QStringLiteral("ScriptControl"), 0, 0, {});
    return added;
}

bool ScriptControl::AddCode(const QString& text)
{
    return guarded(text, [&text](Engine& engine) { engine.addCode(text); });
}

std::optional<Variant> ScriptControl::Run(const QString& procedure, binding::Arguments arguments)
{
    Variant result;
    const bool succeeded =
        guarded({}, [&](Engine& engine) { result = engine.run(values::Name(procedure), arguments); });
    return succeeded ? std::optional(result) : std::nullopt;
}

std::optional<Variant> ScriptControl::Run(const QString& procedure, std::initializer_list<Variant> arguments)
{
    return Run(procedure, binding::Arguments(arguments.begin(), arguments.size()));
}

std::optional<Variant> ScriptControl::Eval(const QString& expression)
{
    Variant result;
    const bool succeeded = guarded(expression, [&](Engine& engine) { result = engine.evaluate(expression); });
    return succeeded ? std::optional(result) : std::nullopt;
}

ScriptPlace ScriptControl::currentPlace() const noexcept
{
    const Position position = m_state->engine->vm().currentPosition();
    return {position.line, position.column};
}

void ScriptControl::setHost(ScriptHost* host) noexcept
{
    m_settings->host = host;
}

const ScriptLimits& ScriptControl::limits() const noexcept
{
    return m_settings->limits;
}

void ScriptControl::setLimits(const ScriptLimits& limits) noexcept
{
    m_settings->limits = limits;
}

void ScriptControl::registerClass(const QString& name, std::function<binding::Ref<binding::Object>()> factory)
{
    m_settings->classes[values::Name(name).folded()] = std::move(factory);
}

void ScriptControl::setClock(std::function<std::chrono::nanoseconds()> clock)
{
    m_settings->clock = std::move(clock);
}

void ScriptControl::setMemoryMeter(std::function<std::size_t()> meter)
{
    m_settings->memoryInUse = std::move(meter);
}

} // namespace zan::script
