// The panel and its window document: loading, saving, clearing.

#include "window/BenchWindow.h"

#include "document/Elements.h"
#include "document/LoadByName.h"
#include "document/XMLOps.h"
#include "values/Failure.h"
#include "window/BenchWindowObject.h"
#include "window/ControlTypes.h"
#include "window/PanelEditor.h"
#include "window/SiteMapPlacement.h"
#include "window/UnsavedWindow.h"
#include "wrappers/FontNode.h"
#include "wrappers/ValueText.h"

#include <QPointer>
#include <QScopeGuard>

#include <array>

namespace zan::window {

namespace element = document::element;
using binding::Variant;
using document::Node;
using document::SpecialChild;
using surface::FontObject;
using values::ErrorNumber;

namespace {

const QString UnsavedWindowKey = QStringLiteral("RTD");

} // namespace

/// Whoever hears of it may fail, but not take the call along.
void BenchWindow::announceChange(void (BenchWindow::*signal)())
{
    const auto report = [this, alive = QPointer<BenchWindow>(this)](const values::RuntimeError& error) {
        if (alive)
            reportError(error);
    };
    values::atBoundary([&] { Q_EMIT(this->*signal)(); }, report);
}

/// The element of the window that is edited which holds its settings, made where there is none.
const Node& BenchWindow::container()
{
    if (!m_container)
        m_container = wrappers::findOrAppend(m_currentWindow ? m_currentWindow->XML() : Node(), element::Container);
    return m_container;
}

/// The window of this key in the scheme, made where there is none.
Ref<site::SchemeWindow> BenchWindow::storedWindow(const QString& key)
{
    const Ref<site::SchemeWindows> windows = values::given(schemeWindows());
    if (const Ref<site::SchemeWindow> known = windows->Item(Variant(key)))
        return known;
    const Ref<site::SchemeWindow> added = values::given(windows->createWindow());
    added->setKey(key);
    return values::given(windows->Add(added, key));
}

/// A fresh window that belongs to no scheme. A scheme makes one that can hold its channels; without one the panel has
/// a window of its own.
Ref<site::SchemeWindow> BenchWindow::unsavedWindow()
{
    Ref<site::SchemeWindow> fresh;
    const bool isMade = values::attempt([&] {
        fresh = values::given(values::given(schemeWindows())->createWindow());
        fresh->setKey(UnsavedWindowKey);
        if (!fresh->XML())
            values::raise(ErrorNumber::ObjectNotSet);
    });
    if (!isMade) {
        fresh = values::make<UnsavedWindow>();
        fresh->setKey(UnsavedWindowKey);
    }
    return fresh;
}

void BenchWindow::LoadWindow(const QString& key)
{
    const QPointer<BenchWindow> alive(this);
    const QString wanted = key;
    announceChange(&BenchWindow::WindowLeaving);
    const auto entered = qScopeGuard([panel = QPointer<BenchWindow>(this)] {
        if (panel)
            panel->announceChange(&BenchWindow::WindowEntered);
    });
    if (!alive)
        return;
    const std::uint32_t load = ++m_loads;
    // Logger, scheme and whoever is told of a property may end the panel or load something else: that stands then.
    const auto goesOn = [&] { return alive && m_loads == load; };

    // The defaults go through the setters: the container of the window shown before is reset in its document too.
    InitProperties();
    if (!goesOn())
        return;
    const Ref<site::SchemeWindow> window = storedWindow(wanted);
    const Node tree = window->XML();
    if (!goesOn())
        return;
    if (!tree)
        values::raise(ErrorNumber::ObjectNotSet);
    m_currentWindow = window;
    m_container = wrappers::findOrAppend(tree, element::Container);
    const Node siteMapNode = applyContainer();
    if (!goesOn())
        return;
    m_editor->history().clear();
    SiteMapPlacement::removeStale(tree);
    // The collection empties the tree of the window shown before and builds this one's controls.
    const Ref<wrappers::BenchControls> list(&controlsOrRaise());
    list->setXMLNode(tree);
    if (goesOn() && m_showSiteMap)
        list->Add(SiteMapType.toString(), QString());
    if (goesOn() && m_showSiteMap)
        m_siteMap->apply(siteMapNode);
    if (goesOn())
        Refresh();
    // A link that is up already shows at once.
    if (const Ref<site::Link> link = goesOn() ? m_link : nullptr) {
        const site::LinkState state = link->State();
        if (goesOn())
            followLink(state);
    }
    if (alive)
        updateGeometry();
}

/// Sets the panel's properties from its container. Gives the element of the site map, or null.
Node BenchWindow::applyContainer()
{
    std::array special{SpecialChild{element::Font, {}}, SpecialChild{element::SiteMap, {}}};
    const Ref<FontObject> font = surfaceFont();
    document::loadByName(m_container, *m_object, special);
    const auto& [fontNode, siteMap] = special;
    if (fontNode.node)
        wrappers::applyFontNode(fontNode.node, *font);
    return siteMap.node;
}

void BenchWindow::UpdateDocument()
{
    if (!m_currentWindow)
        return;
    controlsOrRaise().updateAllNodes();
    const Node settings = container();
    storeFont(settings, *surfaceFont());
    m_siteMap->store(settings);
}

void BenchWindow::SaveWindow()
{
    if (!m_currentWindow)
        return;
    const Ref<site::Logger> logger = m_logger;
    const Node settings = container();
    const bool wasMarked = document::XMLOps::IsMarkedChanged(settings);
    UpdateDocument();
    // A save that fails is silent, and no change by itself: the document says of changes what it said before.
    const bool isSaved = values::attempt([&] { values::given(values::given(logger)->Scheme())->Save(); });
    if (!isSaved && !wasMarked)
        document::XMLOps::UnmarkChanged(settings);
}

void BenchWindow::storeFont(const Node& parent, binding::Object& font)
{
    wrappers::storeFontNode(wrappers::findOrAppend(parent, element::Font), font);
}

void BenchWindow::Clear()
{
    const QPointer<BenchWindow> alive(this);
    announceChange(&BenchWindow::WindowLeaving);
    const auto entered = qScopeGuard([panel = QPointer<BenchWindow>(this)] {
        if (panel)
            panel->announceChange(&BenchWindow::WindowEntered);
    });
    if (!alive)
        return;
    const Ref<wrappers::BenchControls> list(&controlsOrRaise());
    const std::uint32_t load = ++m_loads;
    const auto goesOn = [&] { return alive && m_loads == load; };

    const Ref<site::SchemeWindow> fresh = unsavedWindow();
    if (!goesOn())
        return;
    m_editor->history().clear();
    m_editor->setCurrentControl(nullptr);
    list->Clear();
    if (!goesOn())
        return;
    cls();
    // The defaults go to the window shown before once more, so that the tree left behind holds them.
    InitProperties();
    if (!goesOn())
        return;
    // From here on the fresh window is the one that is edited.
    m_currentWindow = fresh;
    m_container = Node();
    list->setXMLNode(fresh->XML());
    updateGeometry();
}

} // namespace zan::window
