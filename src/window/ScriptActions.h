#pragma once

#include "binding/Object.h"

#include <QString>

#include <memory>

namespace zan::script {
class ScriptControl;
}

namespace zan::window {

class BenchWindow;

/// Runs the scripts behind a panel's buttons. A script sees the panel as "Window", its logger as "Logger", the
/// control that was clicked as "Control" and the scheme as "Scheme", and its procedure "Main" is run. Whatever goes
/// wrong in it ends in one message box.
class ScriptActions
{
public:
    explicit ScriptActions(BenchWindow& window);
    ~ScriptActions();
    ScriptActions(const ScriptActions&) = delete;
    ScriptActions& operator=(const ScriptActions&) = delete;

    /// Runs a stored script text ("\n" and "\t" stand for line break and tab). The panel may be gone afterwards.
    void run(const QString& storedText, const values::Ref<binding::Object>& control);

private:
    class PanelHost;
    struct Engine;
    std::shared_ptr<Engine> idleEngine();

    BenchWindow& m_window;
    std::shared_ptr<Engine> m_engine;
};

} // namespace zan::window
