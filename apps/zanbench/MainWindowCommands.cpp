// What the window's commands do.

#include "zanbench/MainWindow.h"

#include "zanbench/Commands.h"
#include "zanbench/DemoSite.h"

#include "keel/KeelWindows.h"
#include "surface/ops/WindowOps.h"
#include "values/Failure.h"
#include "window/BenchWindow.h"
#include "window/KeelImport.h"

#include <QDir>
#include <QFileInfo>

namespace zan::host {

namespace {

constexpr int ZoomStep = 25;

} // namespace

void MainWindow::connectActions()
{
    connectFileActions();
    connectPanelActions();
    connect(m_actions.connectLink, &QAction::triggered, this, [this] {
        attempt(QStringLiteral("The logger could not be reached"), [this] { m_site->toggleLink(); });
    });
    connect(m_actions.connectOnOpening, &QAction::toggled, this,
            [this](bool connects) { m_settings.setConnectsOnOpening(connects); });
    connect(m_actions.about, &QAction::triggered, this, [this] {
        m_dialogs.showAbout(
            QStringLiteral("%1\nLive panels for remote data loggers.\n\nFree software under the GNU "
                           "General Public License, version 3 or later.")
                .arg(versionText().trimmed()));
    });
}

void MainWindow::connectFileActions()
{
    connect(m_actions.open, &QAction::triggered, this, [this] {
        const QString folder = m_site ? QFileInfo(m_site->scheme().path()).path() : QDir::currentPath();
        if (const QString chosen = m_dialogs.chooseScheme(folder); !chosen.isEmpty())
            openChosen(chosen);
    });
    const auto openRecent = [this](const QString& file) {
        if (!openChosen(file) && !QFileInfo::exists(file)) {
            m_settings.removeRecentFile(file);
            followRecentFiles();
        }
    };
    connect(&m_actions, &HostActions::recentFileChosen, this, openRecent);
    // The list that the choice was made in is made anew by it.
    connect(m_start, &StartPage::recentFileChosen, this, openRecent, Qt::QueuedConnection);
    connect(m_actions.openDemo, &QAction::triggered, this, [this] { openDemo(demoFolder()); });
    connect(m_actions.newScheme, &QAction::triggered, this, &MainWindow::createScheme);
    connect(m_actions.save, &QAction::triggered, this, &MainWindow::save);
    connect(m_actions.saveAs, &QAction::triggered, this, &MainWindow::saveAs);
    connect(m_actions.importOlder, &QAction::triggered, this, [this] {
        const QString folder = m_site ? QFileInfo(m_site->scheme().path()).path() : QDir::currentPath();
        if (const QString chosen = m_dialogs.chooseOlderWindow(folder); !chosen.isEmpty())
            importOlderWindow(chosen);
    });
    connect(m_actions.quit, &QAction::triggered, this, &QWidget::close);
}

bool MainWindow::importOlderWindow(const QString& file)
{
    const QString failed = QStringLiteral("The window was not imported");
    // Looked at before the panel is touched: a file that is refused changes nothing.
    if (!attempt(failed, [&] { keel::readKeelFile(file); }))
        return false;
    const QString key = window::KeelImport::WindowKey;
    const Ref<site::SchemeWindows> windows = m_site->scheme().Windows();
    const Ref<site::SchemeWindow> former = windows->Item(binding::Variant(key));
    if (former && !m_dialogs.askReplace(QStringLiteral("%1 has a window %2 already. Replace it by %3?")
                                            .arg(m_site->displayName(), key, QFileInfo(file).fileName())))
        return false;
    const QString shown = m_pages->currentKey();
    const bool done = attempt(failed, [&] { m_pages->importOlderWindow(file); });
    if (!done) {
        surface::WindowOps::UnlockUpdates();                              // a failed import has stopped the drawing
        values::attempt([&] { windows->Remove(binding::Variant(key)); }); // as far as it was built
        if (former)
            attempt(failed, [&] { windows->Add(former, key); });
        showWindow(m_site->windowKey(shown) ? shown : m_site->panelKeys().value(0));
    }
    m_watch->suspect();
    followChanges();
    m_edits.start();
    return done;
}

void MainWindow::connectPanelActions()
{
    connect(m_actions.lock, &QAction::toggled, this, [this](bool lock) {
        PanelPages::Manner manner = m_pages->manner();
        manner.isLocked = lock;
        setManner(manner);
    });
    connect(m_actions.hideProtected, &QAction::toggled, this, [this](bool hide) {
        PanelPages::Manner manner = m_pages->manner();
        manner.hidesProtected = hide;
        setManner(manner);
    });
    connect(m_actions.alignmentGuides, &QAction::toggled, this, [this](bool show) {
        m_settings.setShowsGuides(show);
        PanelPages::Manner manner = m_pages->manner();
        manner.showsGuides = show;
        setManner(manner);
    });
    connect(m_actions.keyboardEditing, &QAction::toggled, this, [this](bool edit) {
        m_settings.setEditsByKeyboard(edit);
        PanelPages::Manner manner = m_pages->manner();
        manner.isEditedByKeyboard = edit;
        setManner(manner);
    });
    m_actions.alignmentGuides->setChecked(m_settings.showsGuides());
    m_actions.keyboardEditing->setChecked(m_settings.editsByKeyboard());
    connect(m_actions.siteMap, &QAction::toggled, this, [this](bool show) {
        if (window::BenchWindow* panel = currentPanel())
            attempt(QStringLiteral("The site map could not be changed"),
                    [panel, show] { panel->setShowSiteMap(show); });
    });
    connect(m_actions.previousWindow, &QAction::triggered, this, [this] { step(-1); });
    connect(m_actions.nextWindow, &QAction::triggered, this, [this] { step(1); });
    connect(m_actions.fullScreen, &QAction::toggled, this, &MainWindow::setFullScreen);
    connect(m_list, &QListWidget::currentTextChanged, this, [this](const QString& key) {
        if (!key.isEmpty())
            showWindow(key);
    });
}

void MainWindow::connectZoom()
{
    m_pages->setZoom(m_settings.zoom());
    connect(m_actions.zoomIn, &QAction::triggered, this, [this] {
        setZoom(std::min(PanelView::Largest, (int(m_pages->shownZoom()) / ZoomStep + 1) * ZoomStep));
    });
    connect(m_actions.zoomOut, &QAction::triggered, this, [this] {
        const int steps = (int(m_pages->shownZoom()) + ZoomStep - 1) / ZoomStep;
        setZoom(std::max(PanelView::Smallest, (steps - 1) * ZoomStep));
    });
    connect(m_actions.zoomNormal, &QAction::triggered, this, [this] { setZoom(100); });
    connect(m_actions.zoomFit, &QAction::triggered, this, [this] { setZoom(PanelView::Fit); });
    followZoom();
}

/// What is chosen in a full screen or a kiosk holds there alone.
void MainWindow::setZoom(int percent)
{
    if (!m_kiosk && !isFullScreen())
        m_settings.setZoom(percent);
    m_pages->setZoom(percent);
    followZoom();
}

void MainWindow::followZoom()
{
    for (QAction* action : {m_actions.zoomIn, m_actions.zoomOut, m_actions.zoomNormal, m_actions.zoomFit})
        action->setEnabled(m_site != nullptr);
    m_actions.zoomNormal->setChecked(m_pages->zoom() == 100);
    m_actions.zoomFit->setChecked(m_pages->zoom() == PanelView::Fit);
}

void MainWindow::step(int by)
{
    const int count = m_list->count();
    if (count > 0)
        m_list->setCurrentRow((std::max(0, m_list->currentRow()) + by + count) % count);
}

void MainWindow::setManner(const PanelPages::Manner& manner)
{
    if (!manner.isLocked)
        m_time->goLive(); // the past is not edited
    try {
        m_pages->setManner(manner);
    } catch (const values::RuntimeError& error) {
        m_dialogs.showError(ErrorBar::numbered(error.number(), error.description()));
    }
    m_status->setLocked(m_pages->manner().isLocked);
    followZoom();
}

void MainWindow::setFullScreen(bool full)
{
    if (full)
        m_settings.setWindow(saveGeometry(), saveState());
    setWindowState(full ? windowState() | Qt::WindowFullScreen : windowState() & ~Qt::WindowFullScreen);
    m_pages->setZoom(full ? int(PanelView::Fit) : m_settings.zoom());
    followZoom();
}

void MainWindow::enterKiosk()
{
    m_kiosk = true;
    menuBar()->hide();
    m_toolBar->hide();
    m_dock->hide();
    m_status->hide();
    PanelPages::Manner manner = m_pages->manner();
    manner.isLocked = true;
    setManner(manner);
    m_actions.restrictToKiosk();
    m_editCommands->restrictToKiosk();
    followTime();
    m_kioskBar->setActive(true);
    m_pages->setZoom(PanelView::Fit);
    followZoom();
    setWindowState(windowState() | Qt::WindowFullScreen);
}

} // namespace zan::host
