#pragma once

#include "zanbench/ChangeWatch.h"
#include "zanbench/CommandLine.h"
#include "zanbench/EditCommands.h"
#include "zanbench/EditKeeper.h"
#include "zanbench/ErrorBar.h"
#include "zanbench/HostActions.h"
#include "zanbench/HostDialogs.h"
#include "zanbench/HostStatus.h"
#include "zanbench/KioskBar.h"
#include "zanbench/OpenedSite.h"
#include "zanbench/PanelForms.h"
#include "zanbench/PanelHost.h"
#include "zanbench/PanelPages.h"
#include "zanbench/SchemeTrail.h"
#include "zanbench/Settings.h"
#include "zanbench/StartPage.h"
#include "zanbench/TimeBar.h"
#include "zanbench/TimeTravel.h"
#include "zanbench/WindowMenu.h"
#include "zanbench/WindowPlacement.h"

#include <QDockWidget>
#include <QListWidget>
#include <QMainWindow>

#include <functional>
#include <memory>

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
    /// Settings and dialogs must outlive the window. Clocks are for tests: of the status line, and of what is played.
    MainWindow(Settings& settings, HostDialogs& dialogs, HostStatus::Clock clock = {},
               TimePlayer::Clock player = {});
    ~MainWindow() override;

    /// Opens a scheme, after asking about changes of the one that is open. False when nothing was opened; the user
    /// has been told why then, unless it was his choice.
    bool openScheme(const OpenOptions& options);
    /// Shows a window of the scheme. Nothing for a key that the scheme does not have.
    void showWindow(const QString& key);
    /// Saves everything; false when it was not saved. The user has been told why, unless it was his choice.
    bool save();
    bool saveAs();
    /// Makes a scheme of one empty window in a file that the user chooses, and opens it.
    bool createScheme();
    /// Lays a window of an older terminal out as the scheme's window of its key, which is shown then. False when nothing
    /// was imported; the user has been told why then, unless it was his choice.
    bool importOlderWindow(const QString& file);
    /// Opens the user's own copy of the demo in this folder.
    bool openDemo(const QString& folder);
    bool hasUnsavedChanges() const;
    /// Fills the screen with the panel alone.
    void enterKiosk();

    window::BenchWindow* currentPanel() const { return m_pages->currentPanel(); }
    OpenedSite* site() const { return m_site.get(); }
    const PanelPages& pages() const { return *m_pages; }
    const PanelForms& forms() const { return m_forms; }
    TimeTravel& time() const { return *m_time; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildCentre();
    void connectActions();
    void connectFileActions();
    void connectPanelActions();
    void connectZoom();
    void connectEdits();
    void connectTime();
    void beginTime();
    void followTime();
    void connectSite();
    void beginSite(OpenedSiteResult opened, bool isRestored);
    bool openChosen(const QString& path);
    bool bringUpToDate();
    bool store();
    void followPage();
    void showForScript(const QString& key);
    void connectPages();
    void connectTrail();
    void openFromMap(const QString& scheme, const QString& mapFile);
    void goBack();
    void openOnTrail(const SchemePlace& place, const SchemeTrail& trail);
    void setTrail(const SchemeTrail& trail);
    void fitToPanel();
    void growToPanel(QSize before);
    QSize sizeForPanel() const;
    void setZoom(int percent);
    void followZoom();
    void followRecentFiles();
    void linkChanged(int state);
    void followLink();
    void followChanges();
    void lookForChanges();
    void editMade(const window::BenchWindow& panel);
    void keepEdits();
    std::unique_ptr<EditKeeper> keeperOf(const QString& scheme) const;
    EditKeeper::Offer offerEdits(EditKeeper& keeper, const OpenedSite& saved);
    void step(int by);
    void setFullScreen(bool full);
    void setManner(const PanelPages::Manner& manner);
    /// Runs something that may raise a run-time error; shows the error and gives false when it does.
    bool attempt(const QString& what, const std::function<void()>& action);
    bool confirmLeaving();
    void storeState();
    void closeSite();

    Settings& m_settings;
    HostDialogs& m_dialogs;
    PanelForms m_forms; // outlives the panels
    std::unique_ptr<OpenedSite> m_site;
    std::unique_ptr<ChangeWatch> m_watch; // of the open site
    std::unique_ptr<EditKeeper> m_keeper; // of the open site
    SchemeTrail m_trail;
    Ref<PanelHost> m_panelHost;
    HostActions m_actions;
    HostStatus* m_status;
    QStackedWidget* m_centre;
    StartPage* m_start;
    PanelPages* m_pages;
    TimeBar* m_timeBar;
    TimeTravel* m_time;
    KioskBar* m_kioskBar;
    ErrorBar* m_errors;
    QDockWidget* m_dock;
    QListWidget* m_list;
    QToolBar* m_toolBar;
    WindowPlacement* m_placement;
    EditCommands* m_editCommands = nullptr;
    QTimer m_changes;
    QTimer m_edits; // runs from an edit until it is kept
    int m_looks = 0;
    std::uint64_t m_keptCount = 0; // of edits, when they were kept last
    bool m_kiosk = false;
};

} // namespace zan::host
