#include "zanbench/PanelPages.h"

#include "zanbench/PanelLoader.h"

#include "display/SiteMapControl.h"
#include "document/Elements.h"

#include <QScopeGuard>

#include <algorithm>

namespace zan::host {

PanelPages::PanelPages(Settings& settings, PanelForms& forms, QWidget* parent)
    : QStackedWidget(parent)
    , m_settings(settings)
    , m_forms(forms)
{}

PanelPages::~PanelPages() = default;

void PanelPages::open(OpenedSite& site, ChangeWatch& watch, const Ref<binding::Object>& host)
{
    m_site = &site;
    m_watch = &watch;
    m_host = host;
}

void PanelPages::close()
{
    storeBags();
    while (!m_pages.empty())
        drop(*m_pages.back());
    m_site = nullptr;
    m_watch = nullptr;
    m_host = nullptr;
}

void PanelPages::storeBags()
{
    for (const std::unique_ptr<Page>& page : m_pages) {
        if (page->key.isEmpty())
            continue;
        binding::PropertyBag bag;
        page->panel->WriteProperties(bag);
        m_settings.setBag(m_site->scheme().path(), page->key, bag);
    }
}

/// Runs what may raise a run-time error where nobody could take it.
template <class Action>
void PanelPages::guarded(Action action)
{
    try {
        action();
    } catch (const values::RuntimeError& error) {
        Q_EMIT failed(error.number(), error.description());
    }
}

// Pages --------------------------------------------------------------------------------------------------------

PanelPages::Page* PanelPages::pageOf(const QString& key) const
{
    const auto found = std::find_if(m_pages.begin(), m_pages.end(), [&](const auto& page) {
        return !key.isEmpty() && page->key.compare(key, Qt::CaseInsensitive) == 0;
    });
    return found == m_pages.end() ? nullptr : found->get();
}

PanelPages::Page* PanelPages::pageOf(const QWidget* view) const
{
    const auto found =
        std::find_if(m_pages.begin(), m_pages.end(), [&](const auto& page) { return page->view == view; });
    return found == m_pages.end() ? nullptr : found->get();
}

PanelPages::Page* PanelPages::pageOf(const window::BenchWindow& panel) const
{
    const auto found =
        std::find_if(m_pages.begin(), m_pages.end(), [&](const auto& page) { return page->panel == &panel; });
    return found == m_pages.end() ? nullptr : found->get();
}

window::BenchWindow* PanelPages::currentPanel() const
{
    const Page* page = pageOf(currentWidget());
    return page ? page->panel : nullptr;
}

QString PanelPages::currentKey() const
{
    const Page* page = pageOf(currentWidget());
    return page ? page->key : QString();
}

std::vector<QPointer<window::BenchWindow>> PanelPages::panels() const
{
    std::vector<QPointer<window::BenchWindow>> all;
    for (const std::unique_ptr<Page>& page : m_pages)
        all.emplace_back(page->panel);
    return all;
}

void PanelPages::show(const QString& key)
{
    Page* page = pageOf(key);
    bringToFront(page ? *page : load(key));
}

void PanelPages::importOlderWindow(const QString& file)
{
    window::BenchWindow* panel = currentPanel();
    if (!panel)
        values::raise(values::ErrorNumber::ObjectNotSet);
    auto giveUp = qScopeGuard([this, panel = QPointer<window::BenchWindow>(panel)] {
        // What was built of the window is not to be shown again.
        if (Page* page = panel ? pageOf(*panel) : nullptr)
            page->key.clear();
    });
    panel->ImportKeel(file);
    giveUp.dismiss();
}

void PanelPages::bringToFront(Page& page)
{
    setCurrentWidget(page.view);
    if (!page.key.isEmpty())
        m_settings.setLastWindow(m_site->scheme().path(), page.key);
    // A panel that shows no window of the scheme cannot be chosen again: it goes with its turn.
    for (const QPointer<window::BenchWindow>& panel : panels()) {
        Page* other = panel ? pageOf(*panel) : nullptr;
        if (other && other != &page && other->key.isEmpty() && other->changes == 0)
            drop(*other);
    }
    Q_EMIT shownChanged();
}

PanelPages::Page& PanelPages::load(const QString& key)
{
    const Ref<site::SchemeWindow> window = m_site->scheme().Windows()->Item(binding::Variant(key));
    const document::Node node = window ? window->XML() : document::Node();
    const bool wasChanged = m_watch->isChanged(node);
    const auto prepare = [this](window::BenchWindow& panel) {
        panel.setForms(&m_forms);
        panel.setHost(m_host);
        panel.setECANHost(m_settings.ecanHost());
        connect(&panel, &window::BenchWindow::runtimeError, this, &PanelPages::failed);
    };
    std::unique_ptr<window::BenchWindow> loaded =
        loadPanel(*m_site, key, m_settings.bag(m_site->scheme().path(), key), prepare);
    applyManner(*loaded);
    if (!wasChanged) {
        // What loading fills in, and what saving adds, is nobody's edit: it is there from the beginning.
        loaded->UpdateDocument();
        m_watch->settle(node);
    }
    window::BenchWindow* panel = loaded.release();
    auto* view = new PanelView(panel, this);
    addWidget(view);
    m_pages.push_back(std::make_unique<Page>());
    Page& page = *m_pages.back();
    page.key = key;
    page.view = view;
    page.panel = panel;
    followZoom();
    connectPanel(*panel);
    return page;
}

void PanelPages::connectPanel(window::BenchWindow& connected)
{
    window::BenchWindow* panel = &connected;
    connect(panel, &window::BenchWindow::LoadScheme, this, [this, panel](const QString& scheme) {
        const QString mapFile = panel->SiteMap() ? panel->SiteMap()->mapFile() : QString();
        const auto tell = [this, scheme, mapFile] { Q_EMIT schemeChosen(scheme, mapFile); };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    });
    connect(panel, &window::BenchWindow::WindowLeaving, this, [this, panel] {
        if (Page* left = pageOf(*panel))
            leaving(*left);
    });
    connect(panel, &window::BenchWindow::WindowEntered, this, [this, panel] {
        if (Page* reached = pageOf(*panel))
            entered(*reached);
    });
    connect(panel, &window::BenchWindow::EditsChanged, this, [this, panel] { Q_EMIT edited(panel); });
    // Later: the menu that it was chosen from belongs to a press that the panel has not ended yet.
    connect(
        panel, &window::BenchWindow::PropertyChanged, this,
        [this, alive = QPointer<window::BenchWindow>(panel)](const QString& name) {
            if (alive && name == QLatin1String("LockPositions"))
                followLock(*alive);
        },
        Qt::QueuedConnection);
}

/// The lock is one for all panels, whoever turns it.
void PanelPages::followLock(window::BenchWindow& panel)
{
    const Page* page = pageOf(panel);
    if (page && page->changes == 0 && panel.Controls() && panel.LockPositions() != m_manner.isLocked)
        Q_EMIT lockAsked(panel.LockPositions());
}

/// The panel may be running a script, which ends first.
void PanelPages::drop(Page& page)
{
    page.panel->disconnect(this);
    removeWidget(page.view);
    page.view->hide();
    page.view->deleteLater();
    const auto found =
        std::find_if(m_pages.begin(), m_pages.end(), [&](const auto& other) { return other.get() == &page; });
    m_pages.erase(found);
}

// What a panel loads by itself ---------------------------------------------------------------------------------

/// The elements of the scheme's windows: others than before when one was added, taken out or replaced.
std::vector<document::Node> PanelPages::windows() const
{
    const document::Node scheme = m_site->scheme().document().documentElement();
    return scheme.children(document::element::Window);
}

void PanelPages::leaving(Page& page)
{
    if (page.changes++ == 0) {
        // All of them: the window that is entered may have a page already, which this panel makes needless.
        guarded([this] { updateDocuments(); });
        page.wasChanged = m_watch->isChanged();
        page.windows = windows();
    }
    const Ref<site::SchemeWindow> window = page.panel->CurrentWindow();
    const document::Node node = window ? window->XML() : document::Node();
    const bool isKept = std::any_of(page.kept.begin(), page.kept.end(),
                                    [&](const KeptWindow& kept) { return kept.window() == node; });
    if (node.parent() && !isKept)
        page.kept.emplace_back(node);
}

void PanelPages::entered(Page& page)
{
    if (--page.changes > 0)
        return;
    const std::vector<KeptWindow> kept = std::move(page.kept);
    page.kept.clear();
    for (const KeptWindow& window : kept)
        window.restore();
    const Ref<site::SchemeWindow> shown = page.panel->CurrentWindow();
    const bool isBack = shown && std::any_of(kept.begin(), kept.end(), [&](const KeptWindow& window) {
                            return window.window() == shown->XML();
                        });
    // A load that failed, or one of the window that was shown already, has left a panel without its controls.
    if (!shown || isBack)
        guarded([&] { replace(page); });
    else
        adopt(page);
}

void PanelPages::replace(Page& page)
{
    const QString key = page.key;
    const bool wasCurrent = currentWidget() == page.view;
    page.key.clear();
    if (key.isEmpty() || !m_site->windowKey(key))
        return;
    Page& fresh = load(key);
    drop(page);
    if (wasCurrent)
        bringToFront(fresh);
}

void PanelPages::adopt(Page& page)
{
    const Ref<site::SchemeWindow> shown = page.panel->CurrentWindow();
    const QString key = shown->XML().parent() ? shown->Key() : QString();
    if (Page* former = pageOf(key); former && former != &page)
        drop(*former);
    page.key = key;
    guarded([&] {
        applyManner(*page.panel);
        if (!page.wasChanged && windows() == page.windows) {
            page.panel->UpdateDocument();
            m_watch->settle();
        }
        page.view->followPanel();
    });
    if (currentWidget() == page.view)
        bringToFront(page);
}

// All panels ---------------------------------------------------------------------------------------------------

void PanelPages::applyManner(window::BenchWindow& panel) const
{
    panel.setLockMenu(m_manner.isLocked);
    panel.setLockPositions(m_manner.isLocked);
    panel.setHideProtectedControls(m_manner.hidesProtected);
    panel.setAlignmentGuides(m_manner.showsGuides);
    panel.setKeyboardEditing(m_manner.isEditedByKeyboard);
}

void PanelPages::setManner(const Manner& manner)
{
    // Only what is new: unlocking shows what is hidden, and would show it again each time.
    const Manner former = std::exchange(m_manner, manner);
    for (const QPointer<window::BenchWindow>& panel : panels()) {
        if (panel && manner.isLocked != former.isLocked)
            panel->setLockMenu(manner.isLocked);
        if (panel && manner.isLocked != former.isLocked && panel->LockPositions() != manner.isLocked)
            panel->setLockPositions(manner.isLocked);
        if (panel && manner.hidesProtected != former.hidesProtected)
            panel->setHideProtectedControls(manner.hidesProtected);
        if (panel)
            panel->setAlignmentGuides(manner.showsGuides);
        if (panel)
            panel->setKeyboardEditing(manner.isEditedByKeyboard);
    }
    followZoom();
}

void PanelPages::setZoom(int percent)
{
    m_zoom = percent;
    followZoom();
}

void PanelPages::followZoom()
{
    for (const std::unique_ptr<Page>& page : m_pages)
        page->view->setZoom(m_zoom);
}

double PanelPages::shownZoom() const
{
    const Page* page = pageOf(currentWidget());
    return page ? page->view->shownZoom() : 100;
}

bool PanelPages::isLoading() const
{
    return std::any_of(m_pages.begin(), m_pages.end(), [](const auto& page) { return page->changes > 0; });
}

void PanelPages::updateDocuments()
{
    for (const QPointer<window::BenchWindow>& panel : panels())
        if (panel)
            panel->UpdateDocument();
}

void PanelPages::refresh()
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

} // namespace zan::host
