#include "zanbench/MainWindow.h"

#include "zanbench/Commands.h"
#include "zanbench/DemoSite.h"

#include "halyard/HalyardLogger.h"
#include "window/BenchWindow.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace zan::host {

namespace {

constexpr QSize EmptySize(900, 600);
constexpr int ListWidth = 170;
constexpr QMargins GuessedFrame(4, 32, 4, 4); // until there is a real one
constexpr int ZoomStep = 25;
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
    , m_centre(new QStackedWidget(this))
    , m_start(new StartPage({m_actions.open, m_actions.openDemo, m_actions.newScheme}, m_centre))
    , m_pages(new PanelPages(settings, m_forms, m_centre))
    , m_kioskBar(new KioskBar(this))
    , m_errors(new ErrorBar(m_centre))
    , m_dock(new QDockWidget(QStringLiteral("Windows"), this))
    , m_list(new QListWidget(m_dock))
    , m_toolBar(addToolBar(QStringLiteral("Commands")))
{
    setWindowTitle(ProgramName);
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

    buildCentre();
    setStatusBar(m_status);

    addActions(m_actions.findChildren<QAction*>()); // shortcuts work where the menus are hidden, too
    m_actions.fillMenus(*menuBar(), m_dock->toggleViewAction());
    m_actions.fillToolBar(*m_toolBar);
    followRecentFiles();
    m_actions.connectOnOpening->setChecked(m_settings.connectsOnOpening());
    m_actions.lock->setChecked(true);
    m_panelHost = values::make<PanelHost>([this](const QString& key) { showForScript(key); });
    connectActions();
    connectPages();
    connectTrail();
    connectZoom();
    followLink();

    resize(EmptySize.boundedTo(screen()->availableSize()));
    restoreGeometry(m_settings.geometry());
    restoreState(m_settings.windowState());
}

/// The start page or the panels, a kiosk's line below them, and errors over their lower edge.
void MainWindow::buildCentre()
{
    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_centre, 1);
    layout->addWidget(m_kioskBar);
    m_centre->addWidget(m_start);
    m_centre->addWidget(m_pages);
    setCentralWidget(centre);
}

MainWindow::~MainWindow()
{
    m_panelHost->detach(); // a script may have left it somewhere
    closeSite();
    delete m_pages; // its panels know the forms, which go before the children of a widget do
}

void MainWindow::connectActions()
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
    connect(m_actions.quit, &QAction::triggered, this, &QWidget::close);
    connect(m_actions.connectLink, &QAction::triggered, this, [this] {
        attempt(QStringLiteral("The logger could not be reached"), [this] { m_site->toggleLink(); });
    });
    connect(m_actions.connectOnOpening, &QAction::toggled, this,
            [this](bool connects) { m_settings.setConnectsOnOpening(connects); });
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
    const bool canZoom = m_site && m_pages->manner().isLocked;
    for (QAction* action : {m_actions.zoomIn, m_actions.zoomOut, m_actions.zoomNormal, m_actions.zoomFit})
        action->setEnabled(canZoom);
    m_actions.zoomNormal->setChecked(m_pages->zoom() == 100);
    m_actions.zoomFit->setChecked(m_pages->zoom() == PanelView::Fit);
}

void MainWindow::followRecentFiles()
{
    m_actions.setRecentFiles(m_settings.recentFiles());
    m_start->setRecentFiles(m_settings.recentFiles());
}

void MainWindow::connectPages()
{
    connect(m_kioskBar, &KioskBar::windowChosen, this, &MainWindow::showWindow);
    connect(m_pages, &PanelPages::shownChanged, this, &MainWindow::followPage);
    connect(m_pages, &PanelPages::failed, m_errors,
            [this](int number, const QString& text) { m_errors->showError(numbered(number, text)); });
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
    } catch (const std::exception& error) {
        // Memory has run out, or an object of another library fails in its own way.
        m_dialogs.showError(QStringLiteral("%1: %2").arg(what, QString::fromLocal8Bit(error.what())));
    }
    return false;
}

bool MainWindow::openChosen(const QString& path)
{
    OpenOptions options;
    options.scheme = path;
    options.unlock = !m_pages->manner().isLocked;
    return openScheme(options);
}

bool MainWindow::openDemo(const QString& folder)
{
    const DemoResult demo = demoIn(folder);
    if (!demo.error.isEmpty())
        m_dialogs.showError(demo.error);
    return demo.error.isEmpty() && openChosen(demo.file);
}

bool MainWindow::createScheme()
{
    const QString file =
        m_dialogs.chooseNew(m_site ? QFileInfo(m_site->scheme().path()).path() : QDir::currentPath());
    if (file.isEmpty())
        return false;
    try {
        const auto scheme = trellis::SchemeFile::create(file, QFileInfo(file).completeBaseName());
        const Ref<site::SchemeWindows> windows = scheme->Windows();
        const QString key = QStringLiteral("Window 1");
        const Ref<site::SchemeWindow> window = windows->createWindow();
        window->setKey(key);
        windows->Add(window, key);
        scheme->saveOver(); // the user was asked about a file that is there
    } catch (const values::RuntimeError& error) {
        m_dialogs.showError(QStringLiteral("The scheme was not made: %1").arg(error.description()));
        return false;
    }
    return openChosen(file);
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
    setTrail({});
    m_site = std::move(opened.site);
    m_watch = std::make_unique<ChangeWatch>(Ref<trellis::SchemeFile>(&m_site->scheme()));
    // Panels name their pictures relative to the scheme that they belong to.
    QDir::setCurrent(QFileInfo(m_site->scheme().path()).path());
    m_settings.addRecentFile(m_site->scheme().path());
    followRecentFiles();
    m_actions.lock->setChecked(!options.unlock);
    m_pages->open(*m_site, *m_watch, m_panelHost);
    connectSite();
    m_centre->setCurrentWidget(m_pages);
    followZoom();

    const QStringList keys = m_site->panelKeys();
    const QString last = m_settings.lastWindow(m_site->scheme().path());
    const QString first = asked ? *asked : keys.contains(last) ? last : keys.value(0);
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

void MainWindow::showWindow(const QString& key)
{
    const auto known = m_site ? m_site->windowKey(key) : std::nullopt;
    if (!known)
        return;
    const bool shown = attempt(QStringLiteral("The window %1 could not be shown").arg(*known),
                               [this, &known] { m_pages->show(*known); });
    if (!shown)
        followPage(); // the list goes back to what is shown
}

/// As showWindow(), but what goes wrong is the script's.
void MainWindow::showForScript(const QString& key)
{
    const auto known = m_site ? m_site->windowKey(key) : std::nullopt;
    if (!known)
        values::raise(values::ErrorNumber::SubscriptOutOfRange,
                      QStringLiteral("The scheme has no window '%1'.").arg(key));
    m_pages->show(*known);
}

/// Scripts may make windows and load them: list and title go by the scheme and by what is shown.
void MainWindow::followPage()
{
    if (!m_site)
        return;
    const QString key = m_pages->currentKey();
    {
        const QSignalBlocker blocker(m_list);
        QStringList keys = m_site->panelKeys();
        if (!key.isEmpty() && !keys.contains(key))
            keys.append(key);
        m_list->clear();
        m_list->addItems(keys);
        m_list->setCurrentRow(int(keys.indexOf(key)));
        m_kioskBar->setWindows(keys, int(keys.indexOf(key)));
    }
    if (const window::BenchWindow* panel = currentPanel()) {
        const QSignalBlocker blocker(m_actions.siteMap);
        m_actions.siteMap->setChecked(panel->ShowSiteMap());
    }
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
               .boundedTo(screen()->availableSize().shrunkBy(GuessedFrame)));
}

/// The whole window, frame included, lies on the screen, however large its panel, whatever the scale and wherever it
/// was when it was last closed.
void MainWindow::keepOnScreen()
{
    if (m_kiosk || isFullScreen() || isMaximized() || !isVisible())
        return;
    const QRect room = screen()->availableGeometry();
    const QSize frame = frameGeometry().size() - size();
    resize(size().boundedTo(room.size() - frame));
    QRect outer = frameGeometry();
    outer.setSize(size() + frame);
    outer.moveRight(std::min(outer.right(), room.right()));
    outer.moveBottom(std::min(outer.bottom(), room.bottom()));
    outer.moveLeft(std::max(outer.left(), room.left()));
    outer.moveTop(std::max(outer.top(), room.top()));
    if (outer.topLeft() != frameGeometry().topLeft())
        move(outer.topLeft());
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    QMetaObject::invokeMethod(this, &MainWindow::keepOnScreen, Qt::QueuedConnection);
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    // By the time the window is active for the first time it has its frame.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && !std::exchange(m_isPlaced, true))
        QMetaObject::invokeMethod(this, &MainWindow::keepOnScreen, Qt::QueuedConnection);
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
            m_pages->refresh();
        },
        Qt::QueuedConnection);
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
    m_kioskBar->setSimulated(m_site && m_site->isSimulated());
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
    const QString key = m_pages->currentKey();
    const QString shown = key.isEmpty() ? QStringLiteral("(no window)") : key;
    const QString mark = m_site->isSimulated() ? QStringLiteral(" (simulated logger)") : QString();
    setWindowTitle(QStringLiteral("%1: %2[*]%3 - ZanBench").arg(m_site->displayName(), shown, mark));
}

void MainWindow::setManner(const PanelPages::Manner& manner)
{
    try {
        m_pages->setManner(manner);
    } catch (const values::RuntimeError& error) {
        m_dialogs.showError(numbered(error.number(), error.description()));
    }
    followZoom();
}

/// Every panel brings its window up to date before anything is stored, so that no file holds half of an edit.
bool MainWindow::bringUpToDate()
{
    return attempt(QStringLiteral("The panels could not be stored"), [this] { m_pages->updateDocuments(); });
}

bool MainWindow::save()
{
    if (!m_site || !bringUpToDate())
        return false;
    // What nobody has edited is left as it is, in the file, too.
    const bool needed = m_watch->compare() || !QFileInfo::exists(m_site->scheme().path());
    const bool saved = !needed || store();
    if (saved && needed)
        m_watch->settle();
    followChanges();
    return saved;
}

bool MainWindow::store()
{
    try {
        m_site->scheme().Save();
        return true;
    } catch (const values::RuntimeError& error) {
        if (!m_site->scheme().isChangedOnDisk()) {
            m_dialogs.showError(QStringLiteral("The scheme was not saved: %1").arg(error.description()));
            return false;
        }
        switch (m_dialogs.askConflict(error.description())) {
        case HostDialogs::Conflict::Overwrite:
            return attempt(QStringLiteral("The scheme was not saved"), [this] { m_site->scheme().saveOver(); });
        case HostDialogs::Conflict::SaveAs:
            return saveAs();
        case HostDialogs::Conflict::Cancel:
            break;
        }
    }
    return false;
}

bool MainWindow::saveAs()
{
    if (!m_site)
        return false;
    const QString target = m_dialogs.chooseTarget(m_site->scheme().path());
    if (target.isEmpty())
        return false;
    const bool saved = bringUpToDate() && attempt(QStringLiteral("The scheme was not saved"),
                                                  [this, &target] { m_site->scheme().saveAs(target); });
    if (saved) {
        m_watch->settle();
        m_settings.addRecentFile(target);
        followRecentFiles();
        QDir::setCurrent(QFileInfo(target).path());
    }
    followChanges();
    return saved;
}

bool MainWindow::confirmLeaving()
{
    if (!m_site)
        return true;
    // An edit may still stand on the panel alone, and an element that was taken away leaves no mark.
    bringUpToDate();
    if (!m_watch->compare())
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
    if (m_site)
        m_pages->storeBags();
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
    m_pages->close();
    m_centre->setCurrentWidget(m_start);
    m_watch.reset();
    m_site.reset();
    m_errors->dismiss();
    {
        const QSignalBlocker blocker(m_list);
        m_list->clear();
    }
    setWindowModified(false);
    setWindowTitle(ProgramName);
    m_status->clearSite();
    followLink();
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
    manner.isLocked = manner.hasLockedMenus = true;
    setManner(manner);
    m_actions.restrictToKiosk();
    m_kioskBar->setActive(true);
    m_pages->setZoom(PanelView::Fit);
    followZoom();
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
