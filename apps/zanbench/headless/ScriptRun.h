#pragma once

#include "zanbench/CommandLine.h"
#include "zanbench/headless/HeadlessPanel.h"
#include "zanbench/headless/RunReport.h"
#include "zanbench/hostitem/HostRun.h"

#include "script/ScriptControl.h"

#include <QElapsedTimer>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>

namespace zan::host {

class HostItem;

/// One run of one script file without a screen: the panel it asks for, the items it sees, and what came of it.
/// Boxes and forms are answered from a queue and remembered.
class ScriptRun : private script::ScriptHost, private HostRun
{
public:
    /// Script time that a file may take; waiting does not count.
    static constexpr std::chrono::minutes LongestRun{10};

    explicit ScriptRun(ScriptOptions options);
    ~ScriptRun() override;

    /// Runs the file to its end; false when anything went wrong. What it says goes to the standard output, what
    /// went wrong to the standard error.
    bool run();
    /// 1 for a run in which anything failed, or another code that the script has asked for; 0 for success.
    int exitCode() const;
    RunReport& report() { return m_report; }

private:
    // script::ScriptHost
    int messageBox(const QString& text, int buttons, const QString& title) override;
    std::optional<QString> inputBox(const QString& prompt, const QString& title, const QString& text) override;
    bool busy(std::chrono::milliseconds elapsed) override;
    // HostRun
    window::BenchWindow* panel() const override { return m_panel.panel(); }
    surface::RecordingForms& forms() override { return m_panel.forms(); }
    void call(const QString& procedure, const values::Ref<binding::Object>& argument) override;
    void failHere(const QString& message) override;
    std::int32_t takeRefusedWrites() override { return m_report.takeRefusedWrites(); }
    void wait(int milliseconds) override;
    void quit(int code) override;
    QString filePath(const QString& name) const override;

    bool runFile();
    bool openPanel();
    bool addItems();
    void reportError();
    QString place(int line, int column) const;

    ScriptOptions m_options;
    QString m_folder; // of the script, absolute: a panel takes the process into its scheme's folder
    RunReport m_report;
    HeadlessPanel m_panel;
    std::unique_ptr<script::ScriptControl> m_control;
    values::Ref<HostItem> m_hostItem;
    QElapsedTimer m_clock;
    std::chrono::nanoseconds m_waited{0};
    std::optional<int> m_quitCode;
};

} // namespace zan::host
