#pragma once

#include "zanbench/CommandLine.h"
#include "zanbench/OpenedSite.h"

#include "script/ScriptControl.h"
#include "surface/forms/RecordingForms.h"
#include "window/BenchWindow.h"

#include <QElapsedTimer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace zan::host {

class HostItem;

/// One run of one script file without a screen: the panel it asks for, the items it sees, and what came of it.
/// Boxes and forms are answered from a queue and remembered.
class ScriptRun : private script::ScriptHost
{
public:
    /// Script time that a file may take; waiting does not count.
    static constexpr std::chrono::minutes LongestRun{10};

    explicit ScriptRun(ScriptOptions options);
    ~ScriptRun() override;

    /// Runs the file to its end; false when anything went wrong. What it says goes to the standard output, what
    /// went wrong to the standard error.
    bool run();
    /// The code that the script has asked for, or 0 and 1 for success and failure.
    int exitCode() const;

    // For the item Host ------------------------------------------------------------------------------------

    window::BenchWindow* panel() const { return m_panel.get(); }
    surface::RecordingForms& forms() { return m_forms; }
    void check(bool condition, const QString& text);
    /// Runs the event loop; the time does not count as script time.
    void wait(int milliseconds);
    /// Ends the script as soon as it lets go.
    void quit(int code);
    /// Path of a file that the script names, relative to the script's own folder.
    QString filePath(const QString& name) const;

private:
    int messageBox(const QString& text, int buttons, const QString& title) override;
    std::optional<QString> inputBox(const QString& prompt, const QString& title, const QString& text) override;
    bool busy(std::chrono::milliseconds elapsed) override;

    bool openPanel();
    bool addItems();
    bool fail(const QString& message);
    bool reportError();
    QString place(int line, int column) const;

    ScriptOptions m_options;
    surface::RecordingForms m_forms;
    std::unique_ptr<OpenedSite> m_site;
    std::unique_ptr<window::BenchWindow> m_panel;
    std::unique_ptr<script::ScriptControl> m_control;
    values::Ref<HostItem> m_hostItem;
    QElapsedTimer m_clock;
    std::chrono::nanoseconds m_waited{0};
    std::optional<int> m_quitCode;
    int m_failures = 0;
};

} // namespace zan::host
