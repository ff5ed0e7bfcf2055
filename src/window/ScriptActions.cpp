#include "window/ScriptActions.h"

#include "document/EditCount.h"
#include "script/ScriptControl.h"
#include "values/Failure.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"
#include "window/PanelTime.h"

#include <QPointer>

namespace zan::window {

using values::Ref;

/// Shows a script's boxes with the panel's forms; answers for it when the panel has gone.
class ScriptActions::PanelHost : public script::ScriptHost
{
public:
    explicit PanelHost(BenchWindow& window)
        : m_window(&window)
    {}
    ~PanelHost() override { endBusy(); }

    int messageBox(const QString& text, int buttons, const QString& title) override
    {
        return m_window ? m_window->forms().messageBox(m_window, text, buttons, title)
                        : int(surface::HostForms::Cancel);
    }
    std::optional<QString> inputBox(const QString& prompt, const QString& title, const QString& text) override
    {
        return m_window ? m_window->forms().inputBox(m_window, prompt, title, text) : std::nullopt;
    }
    bool busy(std::chrono::milliseconds elapsed) override
    {
        m_isBusy = true;
        return m_window && m_window->forms().busy(m_window, elapsed) && m_window;
    }
    void endBusy()
    {
        if (m_isBusy && m_window)
            m_window->forms().busyEnded();
        m_isBusy = false;
    }

private:
    QPointer<BenchWindow> m_window;
    bool m_isBusy = false;
};

/// The panel's engine, and how many of its scripts are under way, each inside the one before.
struct ScriptActions::Engine
{
    explicit Engine(BenchWindow& window)
        : host(window)
        , control(&host)
    {}
    PanelHost host;
    script::ScriptControl control;
    int running = 0;
};

class ScriptActions::Running
{
public:
    explicit Running(Engine& engine)
        : m_engine(engine)
    {
        ++m_engine.running;
    }
    ~Running() { --m_engine.running; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    Engine& m_engine;
};

namespace {

/// A script that the run-time system or its text has stopped: everything that its author needs to find the place.
QString failureText(const QString& description, int line, int number, const QString& text)
{
    // COMPAT: "Pos: " is followed by the error's number, not by its column.
    return QStringLiteral("Scripting error: %1\n\nLine: %2\nPos: %3\nText: %4")
        .arg(description, QString::number(line), QString::number(number), text);
}

QString failureText(const script::ScriptError& error)
{
    return failureText(error.Description(), error.Line(), error.Number(), error.Text());
}

/// What the script was to be given could not be had.
QString failureText(const values::RuntimeError& error)
{
    return failureText(error.description(), 0, error.number(), QString());
}

/// Scripts are stored in one line.
QString scriptText(const QString& storedText)
{
    QString text = storedText;
    text.replace(QLatin1String("\\n"), QLatin1String("\r\n"));
    text.replace(QLatin1String("\\t"), QLatin1String("\t"));
    return text;
}

} // namespace

ScriptActions::ScriptActions(BenchWindow& window)
    : m_window(window)
{}

ScriptActions::~ScriptActions() = default;

std::unique_ptr<script::ScriptControl::Pause> ScriptActions::pause() const
{
    return m_engine ? std::make_unique<script::ScriptControl::Pause>(m_engine->control) : nullptr;
}

void ScriptActions::setClock(std::function<std::chrono::nanoseconds()> clock)
{
    makeEngine();
    m_engine->control.setClock(std::move(clock));
}

void ScriptActions::end()
{
    if (m_engine)
        m_engine->control.Stop(QStringLiteral("The panel shows the past"));
}

void ScriptActions::makeEngine()
{
    if (!m_engine)
        m_engine = std::make_shared<Engine>(m_window);
}

void ScriptActions::run(const QString& storedText, const Ref<binding::Object>& control)
{
    makeEngine();
    const QPointer<BenchWindow> window(&m_window);
    const std::uint32_t departures = m_window.time().departures();
    const std::shared_ptr<Engine> engine = m_engine; // outlives the panel, should the script close it
    QString failure;
    if (engine->running == 0) {
        const Running running(*engine);
        engine->control.Reset();
        const script::ScriptControl::Session session(engine->control);
        failure = failureOf(engine->control, storedText, control);
        engine->host.endBusy();
    } else {
        // A script that presses a control or shows a box may be interrupted by the script behind another button: that
        // one runs in an engine of its own, so that neither sees the other's variables. Both keep to one set of limits,
        // and when these end them the outermost says so.
        const Running running(*engine);
        const std::unique_ptr<script::ScriptControl> own = engine->control.beside();
        failure = failureOf(*own, storedText, control);
        if (own->isStopped())
            return;
    }
    // It may have changed anything, also what only the panel shows so far.
    document::countEdit();
    if (failure.isEmpty() || !window || window->time().departures() != departures)
        return; // a script that the past has ended is no failure
    window->forms().messageBox(window, failure, surface::HostForms::OkOnly, QString());
}

/// Runs the script; what went wrong, or nothing.
QString ScriptActions::failureOf(script::ScriptControl& scripts, const QString& storedText,
                                 const Ref<binding::Object>& control)
{
    const Ref<BenchWindowObject> face = m_window.object();
    const Ref<site::Logger> logger = m_window.Logger();
    Ref<site::Scheme> scheme;
    QString failure;
    if (!values::atBoundary([&] { scheme = logger ? logger->Scheme() : nullptr; },
                            [&](const values::RuntimeError& error) { failure = failureText(error); }))
        return failure;
    const bool succeeded =
        scripts.AddObject(QStringLiteral("Window"), face) && scripts.AddObject(QStringLiteral("Logger"), logger) &&
        scripts.AddObject(QStringLiteral("Control"), control) &&
        scripts.AddObject(QStringLiteral("Scheme"), scheme) && scripts.AddCode(scriptText(storedText)) &&
        scripts.Run(QStringLiteral("Main")).has_value();
    return succeeded ? QString() : failureText(scripts.Error());
}

} // namespace zan::window
