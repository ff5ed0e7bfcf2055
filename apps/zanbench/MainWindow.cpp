#include "zanbench/MainWindow.h"

#include "zanbench/PanelLoader.h"

#include "halyard/HalyardLogger.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

namespace zan::host {

namespace {

constexpr QSize EmptySize(900, 600);
constexpr int ListWidth = 170;
constexpr int FrameSlack = 8; // what styles add around bars and docks
constexpr int ChangesMilliseconds = 500;

QString numbered(int number, const QString& description)
{
    return QStringLiteral("%1 (run-time error %2)").arg(description).arg(number);
}

} // namespace

MainWindow::MainWindow(Settings& settings, HostDialogs& dialogs, HostStatus::Clock clock)
    : m_settings(settings)
    , m_dialogs(dialogs)
    , m_actions(this)
    , m_status(new HostStatus(std::move(clock), this))
    , m_errors(new ErrorBar(this))
    , m_stack(new QStackedWidget(this))
    , m_dock(new QDockWidget(QStringLiteral("Windows"), this))
    , m_list(new QListWidget(m_dock))
    , m_toolBar(addToolBar(QStringLiteral("Commands")))
{
    setWindowTitle(QStringLiteral("ZanBench"));
    setContextMenuPolicy(Qt::NoContextMenu); // right clicks belong to the panel
    m_toolBar->setObjectName(QStringLiteral("toolBar"));
    m_toolBar->setMovable(false);
    m_dock->setObjectName(QStringLiteral("windowDock"));
    m_dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    m_dock->setWidget(m_list);
    m_list->setObjectName(QStringLiteral("windowList"));
    m_list->setAccessibleName(QStringLiteral("Windows of the scheme"));
    addDockWidget(Qt::LeftDockWidgetArea, m_dock);
    resizeDocks({m_dock}, {ListWidth}, Qt::Horizontal);
    m_list->setSpacing(3);

    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_errors);
    layout->addWidget(m_stack, 1);
    setCentralWidget(centre);
    setStatusBar(m_status);

    addActions(m_actions.findChildren<QAction*>()); // shortcuts work where the menus are hidden, too
    m_actions.fillMenus(*menuBar(), m_dock->toggleViewAction());
    m_actions.fillToolBar(*m_toolBar);
    m_actions.setRecentFiles(m_settings.recentFiles());
    m_actions.connectOnOpening->setChecked(m_settings.connectsOnOpening());
    m_actions.lock->setChecked(true);
    connectActions();
    followLink();

    resize(EmptySize);
    restoreGeometry(m_settings.geometry());
    restoreState(m_settings.windowState());
}

MainWindow::~MainWindow()
{
    closeSite();
}

void MainWindow::connectActions()
{
    connect(m_actions.open, &QAction::triggered, this, [this] {
        const QString folder = m_site ? QFileInfo(m_site->scheme().path()).path() : QDir::currentPath();
        if (const QString chosen = m_dialogs.chooseScheme(folder); !chosen.isEmpty())
            openChosen(chosen);
    });
    connect(&m_actions, &HostActions::recentFileChosen, this, [this](const QString& file) {
        if (!openChosen(file) && !QFileInfo::exists(file)) {
            m_settings.removeRecentFile(file);
            m_actions.setRecentFiles(m_settings.recentFiles());
        }
    });
    connect(m_actions.save, &QAction::triggered, this, &MainWindow::save);
    connect(m_actions.saveAs, &QAction::triggered, this, &MainWindow::saveAs);
    connect(m_actions.quit, &QAction::triggered, this, &QWidget::close);
    connect(m_actions.connectLink, &QAction::triggered, this, [this] {
        attempt(QStringLiteral("The logger could not be reached"), [this] { m_site->toggleLink(); });
    });
    connect(m_actions.connectOnOpening, &QAction::toggled, this,
            [this](bool connects) { m_settings.setConnectsOnOpening(connects); });
    connect(m_actions.lock, &QAction::toggled, this, &MainWindow::setLocked);
    connect(m_actions.hideProtected, &QAction::toggled, this, [this](bool hide) {
        attempt(QStringLiteral("The protected controls could not be changed"), [this, hide] {
            for (const auto& [key, page] : m_pages)
                page.panel->setHideProtectedControls(hide);
        });
    });
    connect(m_actions.siteMap, &QAction::toggled, this, [this](bool show) {
        if (window::BenchWindow* panel = currentPanel())
            attempt(QStringLiteral("The site map could not be changed"),
                    [panel, show] { panel->setShowSiteMap(show); });
    });
    connect(m_actions.previousWindow, &QAction::triggered, this, [this] { step(-1); });
    connect(m_actions.nextWindow, &QAction::triggered, this, [this] { step(1); });
    connect(m_actions.fullScreen, &QAction::toggled, this, &MainWindow::setFullScreen);
    connect(m_actions.about, &QAction::triggered, this, [this] {
        m_dialogs.showAbout(
            QStringLiteral("%1\nLive panels for remote data loggers.\n\nFree software under the GNU "
                           "General Public License, version 3 or later.")
                .arg(versionText().trimmed()));
    });
    connect(m_list, &QListWidget::currentTextChanged, this, [this](const QString& key) {
        if (!key.isEmpty())
            showWindow(key);
    });
    m_changes.setInterval(ChangesMilliseconds);
    connect(&m_changes, &QTimer::timeout, this, &MainWindow::followChanges);
}

template <class Action>
bool MainWindow::attempt(const QString& what, Action action)
{
    if (!m_site)
        return false;
    try {
        action();
        return true;
    } catch (const values::RuntimeError& error) {
        m_dialogs.showError(QStringLiteral("%1: %2").arg(what, numbered(error.number(), error.description())));
        return false;
    }
}

bool MainWindow::openChosen(const QString& path)
{
    OpenOptions options;
    options.scheme = path;
    options.unlock = !m_locked;
    return openScheme(options);
}

bool MainWindow::openScheme(const OpenOptions& options)
{
    if (!confirmLeaving())
        return false;
    OpenedSiteResult opened = OpenedSite::open(options.scheme, options.logger);
    if (!opened.site) {
        m_dialogs.showError(opened.error);
        return false;
    }
    const auto asked = options.window.isEmpty() ? std::nullopt : opened.site->windowKey(options.window);
    if (!options.window.isEmpty() && !asked) {
        m_dialogs.showError(
            QStringLiteral("%1 has no window '%2'.").arg(opened.site->displayName(), options.window));
        return false;
    }
    closeSite();
    m_site = std::move(opened.site);
    m_watch = std::make_unique<ChangeWatch>(Ref<trellis::SchemeFile>(&m_site->scheme()));
    // Panels name their pictures relative to the scheme that they belong to.
    QDir::setCurrent(QFileInfo(m_site->scheme().path()).path());
    m_settings.addRecentFile(m_site->scheme().path());
    m_actions.setRecentFiles(m_settings.recentFiles());
    m_actions.lock->setChecked(!options.unlock);
    setLocked(!options.unlock);
    connectSite();

    const QStringList keys = m_site->panelKeys();
    const QString last = m_settings.lastWindow(m_site->scheme().path());
    const QString first = asked ? *asked : keys.contains(last) ? last : keys.value(0);
    {
        const QSignalBlocker blocker(m_list);
        m_list->addItems(keys);
        if (asked && !keys.contains(*asked))
            m_list->addItem(*asked);
    }
    showWindow(first);
    fitToPanel();
    if (!m_site->loggerProblem().isEmpty())
        m_errors->showError(m_site->loggerProblem());
    if (!options.offline && m_settings.connectsOnOpening())
        attempt(QStringLiteral("The logger could not be reached"), [this] { m_site->connectLink(); });
    return true;
}

void MainWindow::connectSite()
{
    const Ref<site::Logger>& logger = m_site->logger();
    const Ref<site::Link> link = logger->Link();
    connect(link.get(), &site::Link::StateChange, this, &MainWindow::linkChanged);
    connect(logger.get(), &site::Logger::NewBenchData, m_status, &HostStatus::dataArrived);
    connect(logger.get(), &site::Logger::ConnectionProgress, m_status, &HostStatus::setProgress);
    connect(logger.get(), &site::Logger::ConnectionError, m_errors, &ErrorBar::showError);
    if (auto* halyard = qobject_cast<halyard::HalyardLogger*>(logger.get())) {
        connect(halyard, &halyard::HalyardLogger::WriteFailed, m_errors,
                [this](int address, const QString& message) {
                    m_errors->showError(m_site->writeFailureText(address, message));
                });
        connect(
            halyard, &halyard::HalyardLogger::EventFailed, m_errors,
            [this](int number, const QString& description) { m_errors->showError(numbered(number, description)); });
    }
    const auto progress = [this](int percentage, const QString& text) {
        m_status->setProgress(percentage < 0 ? text : QStringLiteral("%1 (%2 %)").arg(text).arg(percentage));
    };
    connect(logger.get(), &site::Logger::ProgramLoggerProgress, m_status, progress);
    connect(logger.get(), &site::Logger::UnloadLoggerProgress, m_status, progress);
    for (const auto done : {&site::Logger::ProgramComplete, &site::Logger::UnloadComplete})
        connect(logger.get(), done, m_status, [this] { m_status->setProgress({}); });
    followLink();
    followChanges();
    m_changes.start();
}

const MainWindow::Page* MainWindow::pageOf(const QString& key)
{
    if (const auto found = m_pages.find(key); found != m_pages.end())
        return &found->second;
    std::unique_ptr<window::BenchWindow> loaded;
    const bool wasChanged = hasUnsavedChanges();
    const bool done = attempt(QStringLiteral("The window %1 could not be shown").arg(key), [&] {
        const auto prepare = [this](window::BenchWindow& panel) {
            panel.setForms(&m_forms);
            connect(&panel, &surface::Surface::runtimeError, m_errors,
                    [this](int number, const QString& text) { m_errors->showError(numbered(number, text)); });
        };
        loaded = loadPanel(*m_site, key, m_settings.bag(m_site->scheme().path(), key), prepare);
        loaded->setLockMenu(m_kiosk);
        loaded->setLockPositions(m_locked || m_kiosk);
        loaded->setHideProtectedControls(m_actions.hideProtected->isChecked());
    });
    if (!done)
        return nullptr;
    if (!wasChanged)
        m_watch->settle(); // what loading fills in is nobody's edit
    window::BenchWindow* panel = loaded.release();
    panel->setMinimumSize(contentSize(*panel));
    auto* area = new QScrollArea(m_stack);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(panel);
    m_stack->addWidget(area);
    return &m_pages.emplace(key, Page{area, panel}).first->second;
}

void MainWindow::showWindow(const QString& key)
{
    const auto known = m_site ? m_site->windowKey(key) : std::nullopt;
    const Page* page = known ? pageOf(*known) : nullptr;
    if (!page)
        return;
    m_currentKey = *known;
    m_stack->setCurrentWidget(page->area);
    {
        const QSignalBlocker blocker(m_list);
        const QList<QListWidgetItem*> items = m_list->findItems(*known, Qt::MatchExactly);
        m_list->setCurrentItem(items.value(0));
    }
    {
        const QSignalBlocker blocker(m_actions.siteMap);
        m_actions.siteMap->setChecked(page->panel->ShowSiteMap());
    }
    m_settings.setLastWindow(m_site->scheme().path(), *known);
    followChanges();
}

/// A window that nobody has given a size yet takes the one that shows the first panel whole.
void MainWindow::fitToPanel()
{
    const window::BenchWindow* panel = currentPanel();
    if (!panel || m_kiosk || !m_settings.geometry().isEmpty())
        return;
    const int width = ListWidth + style()->pixelMetric(QStyle::PM_DockWidgetSeparatorExtent);
    const int height =
        menuBar()->sizeHint().height() + m_toolBar->sizeHint().height() + m_status->sizeHint().height();
    resize((panel->minimumSize() + QSize(width + FrameSlack, height + FrameSlack))
               .boundedTo(screen()->availableSize()));
}

/// A copy that stands while what is done with a panel changes the pages.
std::vector<QPointer<window::BenchWindow>> MainWindow::panels() const
{
    std::vector<QPointer<window::BenchWindow>> all;
    for (const auto& [key, page] : m_pages)
        all.emplace_back(page.panel);
    return all;
}

window::BenchWindow* MainWindow::currentPanel() const
{
    const auto found = m_pages.find(m_currentKey);
    return found == m_pages.end() ? nullptr : found->second.panel;
}

void MainWindow::step(int by)
{
    const int count = m_list->count();
    if (count > 0)
        m_list->setCurrentRow((std::max(0, m_list->currentRow()) + by + count) % count);
}

/// Comes before any panel hears of the new state: panels are made after the site is connected to.
void MainWindow::linkChanged(int state)
{
    m_forms.setAnnouncing(state == int(site::LinkState::Broken));
    followLink();
    // A link's event sets the lights that follow it, and nothing else: until the next scan, which a broken
    // connection never brings, lights and texts would contradict each other.
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_forms.setAnnouncing(false);
            refreshPanels();
        },
        Qt::QueuedConnection);
}

void MainWindow::refreshPanels()
{
    for (const QPointer<window::BenchWindow>& panel : panels()) {
        try {
            if (panel)
                panel->Refresh();
        } catch (const values::RuntimeError&) {
            // Ends the pass of this panel, as it ends every scan.
        }
    }
}

void MainWindow::followLink()
{
    const int state = m_site ? int(m_site->linkState()) : 0;
    m_actions.follow(m_site != nullptr, m_site && m_site->canConnect(), state);
    if (!m_site)
        m_status->clearSite();
    else if (!m_site->canConnect())
        m_status->setNoLogger();
    else
        m_status->setLinkState(state);
    m_status->setSimulated(m_site && m_site->isSimulated());
}

bool MainWindow::hasUnsavedChanges() const
{
    return m_watch && m_watch->isChanged();
}

void MainWindow::followChanges()
{
    if (!m_site)
        return;
    const bool changed = hasUnsavedChanges();
    m_status->setChanged(changed);
    setWindowModified(changed);
    const QString mark = m_site->isSimulated() ? QStringLiteral(" (simulated logger)") : QString();
    setWindowTitle(QStringLiteral("%1: %2[*]%3 - ZanBench").arg(m_site->displayName(), m_currentKey, mark));
}

void MainWindow::setLocked(bool locked)
{
    m_locked = locked;
    attempt(QStringLiteral("The controls could not be locked"), [this, locked] {
        for (const auto& [key, page] : m_pages)
            page.panel->setLockPositions(locked);
    });
}

/// Every panel brings its window up to date before anything is stored, so that no file holds half of an edit.
void MainWindow::updateDocuments()
{
    for (const auto& [key, page] : m_pages)
        page.panel->UpdateDocument();
}

bool MainWindow::save()
{
    if (!m_site)
        return false;
    const bool updated = attempt(QStringLiteral("The panels could not be stored"), [this] { updateDocuments(); });
    if (!updated)
        return false;
    bool saved = false;
    try {
        m_site->scheme().Save();
        saved = true;
    } catch (const values::RuntimeError& error) {
        if (!m_site->scheme().isChangedOnDisk()) {
            m_dialogs.showError(QStringLiteral("The scheme was not saved: %1").arg(error.description()));
        } else {
            switch (m_dialogs.askConflict(error.description())) {
            case HostDialogs::Conflict::Overwrite:
                saved =
                    attempt(QStringLiteral("The scheme was not saved"), [this] { m_site->scheme().saveOver(); });
                break;
            case HostDialogs::Conflict::SaveAs:
                saved = saveAs();
                break;
            case HostDialogs::Conflict::Cancel:
                break;
            }
        }
    }
    if (saved)
        m_watch->settle();
    followChanges();
    return saved;
}

bool MainWindow::saveAs()
{
    if (!m_site)
        return false;
    const QString target = m_dialogs.chooseTarget(m_site->scheme().path());
    if (target.isEmpty())
        return false;
    const bool saved = attempt(QStringLiteral("The scheme was not saved"), [this, &target] {
        updateDocuments();
        m_site->scheme().saveAs(target);
    });
    if (saved) {
        m_watch->settle();
        m_settings.addRecentFile(target);
        m_actions.setRecentFiles(m_settings.recentFiles());
        QDir::setCurrent(QFileInfo(target).path());
    }
    followChanges();
    return saved;
}

bool MainWindow::confirmLeaving()
{
    if (!hasUnsavedChanges())
        return true;
    switch (m_dialogs.askUnsaved(m_site->displayName())) {
    case HostDialogs::Unsaved::Save:
        return save();
    case HostDialogs::Unsaved::Discard:
        return true;
    case HostDialogs::Unsaved::Cancel:
        break;
    }
    return false;
}

void MainWindow::storeState()
{
    if (!m_kiosk && !isFullScreen())
        m_settings.setWindow(saveGeometry(), saveState());
    if (!m_site)
        return;
    for (const auto& [key, page] : m_pages) {
        binding::PropertyBag bag;
        page.panel->WriteProperties(bag);
        m_settings.setBag(m_site->scheme().path(), key, bag);
    }
}

void MainWindow::closeSite()
{
    if (!m_site)
        return;
    m_changes.stop();
    storeState();
    m_site->logger()->disconnect(this);
    m_site->logger()->Link()->disconnect(this);
    m_site->logger()->disconnect(m_status);
    m_site->logger()->disconnect(m_errors);
    m_currentKey.clear();
    for (const auto& [key, page] : m_pages)
        delete page.area;
    m_pages.clear();
    m_watch.reset();
    m_site.reset();
    m_errors->dismiss();
    {
        const QSignalBlocker blocker(m_list);
        m_list->clear();
    }
    setWindowModified(false);
    setWindowTitle(QStringLiteral("ZanBench"));
    m_status->clearSite();
    followLink();
}

void MainWindow::setFullScreen(bool full)
{
    if (full)
        m_settings.setWindow(saveGeometry(), saveState());
    setWindowState(full ? windowState() | Qt::WindowFullScreen : windowState() & ~Qt::WindowFullScreen);
}

void MainWindow::enterKiosk()
{
    m_kiosk = true;
    menuBar()->hide();
    m_toolBar->hide();
    m_dock->hide();
    m_status->hide();
    attempt(QStringLiteral("The controls could not be locked"), [this] {
        for (const auto& [key, page] : m_pages) {
            page.panel->setLockPositions(true);
            page.panel->setLockMenu(true);
        }
    });
    m_actions.restrictToKiosk();
    setWindowState(windowState() | Qt::WindowFullScreen);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!confirmLeaving()) {
        event->ignore();
        return;
    }
    storeState();
    event->accept();
}

} // namespace zan::host
