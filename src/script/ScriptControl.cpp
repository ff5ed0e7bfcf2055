#include "script/ScriptControl.h"

#include "script/machine/Engine.h"
#include "script/syntax/CompileError.h"

#include "values/RuntimeError.h"

#include <ctime>

namespace zan::script {

using values::ErrorNumber;
using values::RuntimeError;
using values::Variant;

namespace {

/// To some milliseconds, which is fine enough for limits of seconds: the exact clock takes several times as long to
/// read, which a script that calls the host a million times would feel.
std::chrono::nanoseconds steadyTime()
{
#if defined(CLOCK_MONOTONIC_COARSE)
    timespec now = {};
    if (clock_gettime(CLOCK_MONOTONIC_COARSE, &now) == 0)
        return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
#endif
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
    : ScriptControl(std::make_shared<EngineSettings>())
{
    m_settings->host = host;
    m_settings->clock = steadyTime;
    m_settings->memoryInUse = heapInUse;
}

ScriptControl::ScriptControl(std::shared_ptr<EngineSettings> settings)
    : m_settings(std::move(settings))
    , m_state(std::make_shared<State>())
{
    m_state->engine = std::make_shared<Engine>(m_settings);
}

ScriptControl::~ScriptControl() = default;

std::unique_ptr<ScriptControl> ScriptControl::beside() const
{
    return std::unique_ptr<ScriptControl>(new ScriptControl(m_settings));
}

void ScriptControl::Reset()
{
    // A program that is under way keeps its engine until it returns.
    const std::shared_ptr<State> state = m_state;
    if (state->engine->isFresh()) {
        state->error.Clear();
        return;
    }
    const std::shared_ptr<Engine> old = std::exchange(state->engine, std::make_shared<Engine>(m_settings));
    state->error.Clear();
}

namespace {

ScriptError errorAt(const values::RuntimeError& error, const QString& description, Position position)
{
    const QString source = error.source().isEmpty() ? runtimeErrorSource() : error.source();
    return ScriptError(error.number(), description, source, position.line, position.column, {});
}

} // namespace

/// Runs a call into the engine; false when it failed, with the error noted.
template <class Call>
bool ScriptControl::guarded(const QString& text, Call&& call)
{
    const std::shared_ptr<EngineSettings> settings = m_settings;
    const Budget::Scope scope(settings->budget);
    const std::shared_ptr<State> state = m_state; // outlives the control, and the engine a Reset by the script
    std::shared_ptr<Engine> engine = state->engine;
    ++state->running;
    bool succeeded = false;
    Position position;
    try {
        try {
            call(*engine);
        } catch (...) {
            position = engine->vm().errorPosition();
            throw;
        }
        engine.reset(); // after a Reset by the script its program ends here, which is part of the run
        if (settings->budget.isStopped())
            settings->budget.look();
        succeeded = true;
    } catch (const CompileError& error) {
        state->error =
            ScriptError(error.number(), compileErrorText(error.number()), compilationErrorSource(),
                        error.position().line, error.position().column, lineOf(text, error.position().line));
    } catch (const NamedError& error) {
        QString description = error.description();
        if (!error.about().isEmpty())
            description += QStringLiteral(": '%1'").arg(error.about().text());
        state->error = errorAt(error, description, position);
    } catch (const RuntimeError& error) {
        state->error = errorAt(error, error.description(), position);
    } catch (const std::bad_alloc&) {
        state->error = ScriptError(int(ErrorNumber::OutOfMemory), values::errorText(ErrorNumber::OutOfMemory),
                                   runtimeErrorSource(), 0, 0, {});
    }
    --state->running;
    return succeeded;
}

struct ScriptControl::Session::Part
{
    explicit Part(std::shared_ptr<EngineSettings> shared)
        : settings(std::move(shared))
        , scope(settings->budget)
    {}
    std::shared_ptr<EngineSettings> settings;
    Budget::Scope scope;
};

ScriptControl::Session::Session(const ScriptControl& control)
    : m_part(std::make_unique<Part>(control.m_settings))
{}

ScriptControl::Session::~Session() = default;

struct ScriptControl::Pause::Part
{
    explicit Part(std::shared_ptr<EngineSettings> shared)
        : settings(std::move(shared))
        , pause(settings->budget)
    {}
    std::shared_ptr<EngineSettings> settings;
    Budget::Pause pause;
};

ScriptControl::Pause::Pause(const ScriptControl& control)
    : m_part(std::make_unique<Part>(control.m_settings))
{}

ScriptControl::Pause::~Pause() = default;

void ScriptControl::Stop(const QString& reason)
{
    constexpr int UserInterrupt = 18;
    if (!isRunning())
        return;
    try {
        m_settings->budget.stop(StopError(UserInterrupt, reason));
    } catch (const StopError&) {
        // Meant for those who are under way: each of their looks raises it from now on.
    }
}

bool ScriptControl::isStopped() const noexcept
{
    return m_settings->budget.isStopped();
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
