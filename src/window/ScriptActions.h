#pragma once

#include "script/ScriptControl.h"

#include "binding/Object.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace zan::window {

class BenchWindow;

/// Runs the scripts behind a panel's buttons. A script sees the panel as "Window", its logger as "Logger", the
/// control that was clicked as "Control" and the scheme as "Scheme", and its procedure "Main" is run. Whatever goes
/// wrong in it ends in one message box.
///
/// A script may set off another one, by pressing a control or because the user does while it shows a box. All scripts
/// of a panel that are under way at once share one depth, one time and one memory; a limit ends them all.
class ScriptActions
{
public:
    explicit ScriptActions(BenchWindow& window);
    ~ScriptActions();
    ScriptActions(const ScriptActions&) = delete;
    ScriptActions& operator=(const ScriptActions&) = delete;

    /// Runs a stored script text ("\n" and "\t" stand for line break and tab). The panel may be gone afterwards.
    void run(const QString& storedText, const values::Ref<binding::Object>& control);
    /// Ends the scripts under way; no box tells of it when the panel has left the present.
    void end();
    /// While what it gives lives, the time of the scripts under way stands still: the user is asked something.
    std::unique_ptr<script::ScriptControl::Pause> pause() const;
    /// Puts another clock in place of the machine's.
    void setClock(std::function<std::chrono::nanoseconds()> clock);

private:
    class PanelHost;
    struct Engine;
    class Running;
    void makeEngine();
    QString failureOf(script::ScriptControl& scripts, const QString& storedText,
                      const values::Ref<binding::Object>& control);

    BenchWindow& m_window;
    std::shared_ptr<Engine> m_engine;
};

} // namespace zan::window
