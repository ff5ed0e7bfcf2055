#pragma once

#include "zanbench/OpenedSite.h"
#include "zanbench/headless/HeadlessForms.h"

#include "window/BenchWindow.h"

#include <QSize>

#include <memory>

namespace zan::host {

class PanelHost;
class RunReport;

/// What panel a run without a screen is for.
struct PanelRequest
{
    QString scheme;
    QString window;   ///< key; empty: the first window
    QString logger;   ///< URI; empty: the scheme's own
    QString ecanHost; ///< empty: none
    QSize size;       ///< logical pixels; empty: as large as the panel's contents, within LargestPictureArea
    double scale = 1;
    HistoryUse history = HistoryUse::Temporary;
    bool needsLogger = false; ///< a scheme whose logger cannot be used is a failure, not a note
};

/// The size within LargestPictureArea that shows as much as can be of a panel: both sides of a large square are cut,
/// of a long strip the long one.
QSize fittedSize(QSize wanted, double scale);

/// A scheme's panel without a screen. Whoever hears of its boxes, its errors and its refused writes is there before
/// anything is loaded: nothing ever waits for a person.
class HeadlessPanel
{
public:
    /// The report must outlive the panel.
    explicit HeadlessPanel(RunReport& report);
    ~HeadlessPanel();

    /// Opens the scheme, loads the window and shows it where nobody sees it. False when it failed; the report says
    /// why. From then on the process stands in the scheme's folder, because panels name their pictures relative to it.
    bool open(const PanelRequest& request);
    /// Waits until the link is connected; why it was not, or nothing.
    [[nodiscard]] QString connectLink();
    /// Ends a connection and waits until what was still to be written is sent, so that a refused write is heard of.
    void close();

    window::BenchWindow* panel() const { return m_panel.get(); } ///< null before open()
    OpenedSite* site() const { return m_site.get(); }
    HeadlessForms& forms() { return m_forms; }

private:
    bool openSite(const PanelRequest& request);
    bool loadWindow(const PanelRequest& request);
    void listenToLogger();
    void listenToPanel(window::BenchWindow& panel);
    QSize sizeFor(const PanelRequest& request);
    void showForScript(const QString& key);

    RunReport& m_report;
    HeadlessForms m_forms;
    values::Ref<PanelHost> m_panelHost;
    std::unique_ptr<OpenedSite> m_site;
    std::unique_ptr<window::BenchWindow> m_panel;
    QObject m_context; // of connections to the logger, which may outlive us
};

} // namespace zan::host
