#pragma once

#include "site/Logger.h"
#include "wrappers/iBenchControl.h"

#include <QPointer>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace zan::window {

class BenchWindow;
class frmSet;
class ScriptActions;

using values::Ref;
using values::Variant;

/// Carries out what a click on a control stands for: asks for a value and writes it, toggles, puts a fixed value at
/// an address, connects, programs or unloads the logger, runs a script.
///
/// Actions may show modal forms and run scripts, so that anything can go while one runs: the control, the logger,
/// the panel itself. The engine holds what it still needs and checks the rest.
///
/// On a panel that shows the past nothing acts, and an action that was waiting for a person when the panel left the
/// present does nothing more.
class ActionEngine
{
public:
    explicit ActionEngine(BenchWindow& window);
    ~ActionEngine();
    ActionEngine(const ActionEngine&) = delete;
    ActionEngine& operator=(const ActionEngine&) = delete;

    /// Runs the action in the control's ACTION element; nothing without one. Raises what the logger raises.
    void RunAction(const Ref<wrappers::iBenchControl>& control);
    /// Writes a value to a memory address of the logger, through a channel made for it. Raises 91 without a logger.
    void PutValue(const Variant& value, std::int32_t address, std::int32_t dataType);
    /// Asks for a value for the channel of a text box, starting from the text that it shows.
    void setFromTextBox(const Ref<wrappers::iBenchControl>& control);
    /// While what it gives lives, the time of the scripts under way stands still: somebody is asked something.
    std::shared_ptr<void> pauseScripts() const;
    /// The panel leaves the present: the scripts under way end, and no box tells of it.
    void endScripts();
    /// Puts another clock in place of the machine's, by which the scripts' limit of time is counted.
    void setScriptClock(std::function<std::chrono::nanoseconds()> clock);

private:
    void setChannel(const Ref<site::Channel>& channel);
    void put(const document::Node& action);
    void toggle(const document::Node& action, const Ref<site::Channel>& channel);
    void vesper(const document::Node& action, const QString& function);
    void connectOrDisconnect(QString& title);
    bool confirmProgramming();
    void askAndWrite(const Ref<site::Channel>& channel, const QString& text, const QString* label);
    Ref<site::Logger> logger() const;

    BenchWindow& m_window;
    QPointer<frmSet> m_setForm;
    bool m_isAsking = false;
    std::unique_ptr<ScriptActions> m_scripts;
};

} // namespace zan::window
