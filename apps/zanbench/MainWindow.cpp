#include "zanbench/MainWindow.h"

#include "zanbench/Commands.h"
#include "zanbench/DemoSite.h"

#include "document/EditCount.h"
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
constexpr int FrameSlack = 8; // what styles add around bars and docks

} // namespace

MainWindow::MainWindow(Settings& settings, HostDialogs& dialogs, HostStatus::Clock clock, TimePlayer::Clock player)
    : m_settings(settings)
    , m_dialogs(dialogs)
    , m_actions(this)
    , m_status(new HostStatus(std::move(clock), this))
    , m_centre(new QStackedWidget(this))
    , m_start(new StartPage({m_actions.open, m_actions.openDemo, m_actions.newScheme}, m_centre))
    , m_pages(new PanelPages(settings, m_forms, m_centre))
    , m_timeBar(new TimeBar(this))
    , m_time(new TimeTravel(*m_pages, *m_timeBar, std::move(player), this))
    , m_kioskBar(new KioskBar(this))
    , m_errors(new ErrorBar(m_centre))
    , m_dock(new QDockWidget(QStringLiteral("Windows"), this))
    , m_list(new QListWidget(m_dock))
    , m_toolBar(addToolBar(QStringLiteral("Commands")))
    , m_placement(new WindowPlacement(*this))
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
    m_editCommands = new EditCommands(m_actions, *m_pages, this);
    new WindowMenu(m_actions.windowMenu(), *m_pages, {m_actions.hideProtected, m_actions.siteMap}, this);
    followRecentFiles();
    m_actions.connectOnOpening->setChecked(m_settings.connectsOnOpening());
    m_actions.lock->setChecked(true);
    m_panelHost = values::make<PanelHost>([this](const QString& key) { showForScript(key); });
    connectActions();
    connectPages();
    connectTrail();
    connectZoom();
    connectEdits();
    connectTime();
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
    layout->addWidget(m_timeBar);
    layout->addWidget(m_kioskBar);
    m_centre->addWidget(m_start);
    m_centre->addWidget(m_pages);
    setCentralWidget(centre);
}

MainWindow::~MainWindow()
{
    m_panelHost->detach(); // a script may have left it somewhere
    closeSite();
    delete m_time;  // it knows the pages
    delete m_pages; // its panels know the forms, which go before the children of a widget do
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
            [this](int number, const QString& text) { m_errors->showError(ErrorBar::numbered(number, text)); });
}

bool MainWindow::attempt(const QString& what, const std::function<void()>& action)
{
    if (!m_site)
        return false;
    try {
        action();
        return true;
    } catch (const values::RuntimeError& error) {
        m_dialogs.showError(
            QStringLiteral("%1: %2").arg(what, ErrorBar::numbered(error.number(), error.description())));
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
    OpenedSiteResult opened = OpenedSite::open(options.scheme, options.logger, HistoryUse::Kept);
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
    if (m_keeper)
        m_keeper->drop(); // what is left now is saved, or not wanted
    closeSite();
    setTrail({});
    m_keeper = keeperOf(opened.site->scheme().path());
    const EditKeeper::Offer offer = offerEdits(*m_keeper, *opened.site);
    if (offer.restored) {
        opened = {}; // of two that are open at once only one would write the history
        opened = OpenedSite::serve(offer.restored, options.logger, HistoryUse::Kept);
    }
    QStringList notes = offer.notes;
    if (!opened.site->loggerProblem().isEmpty())
        notes.append(opened.site->loggerProblem());
    if (!opened.site->historyProblem().isEmpty())
        notes.append(opened.site->historyProblem());
    m_actions.lock->setChecked(!options.unlock);
    beginSite(std::move(opened), bool(offer.restored));

    const QStringList keys = m_site->panelKeys();
    const QString last = m_settings.lastWindow(m_site->scheme().path());
    const QString first = asked ? *asked : keys.contains(last) ? last : keys.value(0);
    showWindow(m_site->windowKey(first) ? first : keys.value(0));
    fitToPanel();
    if (!notes.isEmpty())
        m_errors->showError(notes.join(QLatin1Char(' ')));
    if (!options.offline && m_settings.connectsOnOpening())
        attempt(QStringLiteral("The logger could not be reached"), [this] { m_site->connectLink(); });
    return true;
}

void MainWindow::beginSite(OpenedSiteResult opened, bool isRestored)
{
    m_site = std::move(opened.site);
    m_watch = std::make_unique<ChangeWatch>(Ref<trellis::SchemeFile>(&m_site->scheme()));
    if (isRestored)
        m_watch->neverSettled();
    // Panels name their pictures relative to the scheme that they belong to.
    QDir::setCurrent(QFileInfo(m_site->scheme().path()).path());
    m_settings.addRecentFile(m_site->scheme().path());
    followRecentFiles();
    m_pages->open(*m_site, *m_watch, m_panelHost);
    connectSite();
    m_centre->setCurrentWidget(m_pages);
    followZoom();
}

void MainWindow::connectSite()
{
    const Ref<site::Logger>& logger = m_site->logger();
    const Ref<site::Link> link = logger->Link();
    connect(link.get(), &site::Link::StateChange, this, &MainWindow::linkChanged);
    connect(logger.get(), &site::Logger::NewBenchData, m_status, &HostStatus::dataArrived);
    connect(logger.get(), &site::Logger::NewENTData, this, [this, told = QString()]() mutable {
        const QString problem = m_site ? m_site->historyProblem() : QString();
        if (std::exchange(told, problem) != problem && !problem.isEmpty())
            m_errors->showError(problem);
    });
    connect(logger.get(), &site::Logger::ConnectionProgress, m_status, &HostStatus::setProgress);
    connect(logger.get(), &site::Logger::ConnectionError, m_errors, &ErrorBar::showError);
    if (auto* halyard = qobject_cast<halyard::HalyardLogger*>(logger.get())) {
        connect(halyard, &halyard::HalyardLogger::WriteFailed, m_errors,
                [this](int address, const QString& message) {
                    m_errors->showError(m_site->writeFailureText(address, message));
                });
        connect(halyard, &halyard::HalyardLogger::EventFailed, m_errors,
                [this](int number, const QString& description) {
                    m_errors->showError(ErrorBar::numbered(number, description));
                });
    }
    const auto progress = [this](int percentage, const QString& text) {
        m_status->setProgress(percentage < 0 ? text : QStringLiteral("%1 (%2 %)").arg(text).arg(percentage));
    };
    connect(logger.get(), &site::Logger::ProgramLoggerProgress, m_status, progress);
    connect(logger.get(), &site::Logger::UnloadLoggerProgress, m_status, progress);
    for (const auto done : {&site::Logger::ProgramComplete, &site::Logger::UnloadComplete})
        connect(logger.get(), done, m_status, [this] { m_status->setProgress({}); });
    followLink();
    beginTime();
    m_status->setLocked(m_pages->manner().isLocked);
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
    if (!m_watch->isChanged())
        m_keptCount = document::editCount(); // what loading fills in is nobody's edit
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
    if (currentPanel() && !m_kiosk && m_settings.geometry().isEmpty())
        m_placement->resize(sizeForPanel());
}

/// Grows from the size that the window had as far as the panel needs; a user's window never shrinks by itself.
void MainWindow::growToPanel(QSize before)
{
    if (currentPanel() && !m_kiosk && m_pages->zoom() != PanelView::Fit)
        m_placement->resize(before.expandedTo(sizeForPanel()));
}

/// Of the window, for the whole of the panel shown.
QSize MainWindow::sizeForPanel() const
{
    const double zoom = m_pages->zoom() == PanelView::Fit ? 1 : m_pages->zoom() / 100.0;
    const int width = ListWidth + style()->pixelMetric(QStyle::PM_DockWidgetSeparatorExtent);
    const int height =
        menuBar()->sizeHint().height() + m_toolBar->sizeHint().height() + m_status->sizeHint().height();
    return currentPanel()->minimumSize() * zoom + QSize(width + FrameSlack, height + FrameSlack);
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
    m_edits.stop();
    storeState();
    m_site->logger()->disconnect(this);
    m_site->logger()->Link()->disconnect(this);
    m_site->logger()->disconnect(m_status);
    m_site->logger()->disconnect(m_errors);
    m_time->end();
    m_pages->close();
    m_centre->setCurrentWidget(m_start);
    m_editCommands->follow();
    m_watch.reset();
    m_keeper.reset();
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
    followTime();
    followZoom();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!confirmLeaving()) {
        event->ignore();
        return;
    }
    storeState();
    if (m_keeper)
        m_keeper->drop();
    m_edits.stop();
    event->accept();
}

} // namespace zan::host
