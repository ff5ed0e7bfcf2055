#pragma once

#include "zanbench/ChangeWatch.h"
#include "zanbench/CommandLine.h"
#include "zanbench/ErrorBar.h"
#include "zanbench/HostActions.h"
#include "zanbench/HostDialogs.h"
#include "zanbench/HostStatus.h"
#include "zanbench/OpenedSite.h"
#include "zanbench/PanelForms.h"
#include "zanbench/Settings.h"

#include <QDockWidget>
#include <QListWidget>
#include <QMainWindow>
#include <QPointer>
#include <QScrollArea>
#include <QStackedWidget>

#include <map>
#include <memory>
#include <vector>

namespace zan::window {
class BenchWindow;
}

namespace zan::host {

/// The reference host's window: the list of a scheme's windows, the panel of the chosen one, and the commands on
/// both. Each window of the scheme that has been shown keeps its panel until the scheme is closed.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// Settings and dialogs must outlive the window.
    MainWindow(Settings& settings, HostDialogs& dialogs, HostStatus::Clock clock = {});
    ~MainWindow() override;

    /// Opens a scheme, after asking about changes of the one that is open. False when nothing was opened; the user
    /// has been told why then, unless it was his choice.
    bool openScheme(const OpenOptions& options);
    /// Shows a window of the scheme. Nothing for a key that the scheme does not have.
    void showWindow(const QString& key);
    /// Saves everything; false when it was not saved. The user has been told why, unless it was his choice.
    bool save();
    bool saveAs();
    void updateDocuments();
    bool hasUnsavedChanges() const;
    /// Fills the screen with the panel alone.
    void enterKiosk();

    window::BenchWindow* currentPanel() const;
    OpenedSite* site() const { return m_site.get(); }
    const PanelForms& forms() const { return m_forms; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    /// A panel and the scroll area that it stands in, which is what is hidden while another window is shown.
    struct Page
    {
        QScrollArea* area;
        window::BenchWindow* panel;
    };

    void connectActions();
    void connectSite();
    bool openChosen(const QString& path);
    const Page* pageOf(const QString& key);
    std::vector<QPointer<window::BenchWindow>> panels() const;
    void fitToPanel();
    void linkChanged(int state);
    void followLink();
    void refreshPanels();
    void followChanges();
    void step(int by);
    void setFullScreen(bool full);
    void setLocked(bool locked);
    /// Runs something that may raise a run-time error; shows the error and gives false when it does.
    template <class Action>
    bool attempt(const QString& what, Action action);
    bool confirmLeaving();
    void storeState();
    void closeSite();

    Settings& m_settings;
    HostDialogs& m_dialogs;
    PanelForms m_forms; // outlives the panels
    std::unique_ptr<OpenedSite> m_site;
    std::unique_ptr<ChangeWatch> m_watch; // of the open site
    std::map<QString, Page> m_pages;      // by window key
    QString m_currentKey;
    HostActions m_actions;
    HostStatus* m_status;
    ErrorBar* m_errors;
    QStackedWidget* m_stack;
    QDockWidget* m_dock;
    QListWidget* m_list;
    QToolBar* m_toolBar;
    QTimer m_changes;
    bool m_kiosk = false;
    bool m_locked = true;
};

} // namespace zan::host
