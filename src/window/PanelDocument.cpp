#include "window/PanelDocument.h"

#include "document/Elements.h"
#include "document/LoadByName.h"
#include "document/XMLOps.h"
#include "ecan/NetworkSource.h"
#include "livedata/Scan.h"
#include "surface/host/Surface.h"
#include "values/Failure.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"
#include "window/ControlFactory.h"
#include "window/ControlTypes.h"
#include "window/KeelImport.h"
#include "window/PanelDesign.h"
#include "window/PanelEditor.h"
#include "window/PanelEvents.h"
#include "window/PanelTime.h"
#include "window/SiteMapPlacement.h"
#include "window/UnsavedWindow.h"
#include "wrappers/FontNode.h"
#include "wrappers/ValueText.h"

#include <QPointer>
#include <QScopeGuard>

#include <vector>

namespace zan::window {

namespace element = document::element;
using binding::Variant;
using document::Node;
using document::SpecialChild;
using document::XMLOps::SetAttribute;
using surface::FontObject;
using values::ErrorNumber;
using values::Name;

namespace {

const QString UnsavedWindowKey = QStringLiteral("RTD");
const Name HostName("ECANHost");

void storeFont(const Node& parent, binding::Object& font)
{
    wrappers::storeFontNode(wrappers::findOrAppend(parent, element::Font), font);
}

} // namespace

PanelDocument::PanelDocument(BenchWindow& panel, surface::Surface& surface, wrappers::ControlTypes types)
    : m_panel(panel)
    , m_surface(surface)
    , m_factory(std::make_unique<ControlFactory>(
          surface, types, [owner = QPointer<BenchWindow>(&panel)] { return owner ? &owner->forms() : nullptr; }))
    , m_liveData(std::make_unique<livedata::Scan>(types))
    , m_restrictions(std::make_unique<ecan::NetworkSource>())
    , m_controls(values::make<wrappers::BenchControls>())
    , m_siteMap(std::make_unique<SiteMapPlacement>(
          surface, [&panel](const QString& scheme) { Q_EMIT panel.LoadScheme(scheme); }))
{
    document::XMLOps::OpenXML();
    m_container = document::XMLOps::CreateElement(element::Container);
    m_controls->setWindow(this);
    m_controls->setLiveData(m_liveData.get());
    m_controls->setParentHandle(surface.hWnd());
    // Labels that wait need not wait for the logger, which may not even be connected.
    QObject::connect(m_restrictions.get(), &ecan::NetworkSource::ended, m_restrictions.get(), [this] {
        if (const Ref<wrappers::BenchControls> list = m_controls)
            list->scanWaiting();
    });
}

PanelDocument::~PanelDocument()
{
    end();
    document::XMLOps::CloseXML();
}

void PanelDocument::end()
{
    if (!m_controls)
        return;
    m_controls->setWindow(nullptr);
    m_controls->setLiveData(nullptr);
    m_controls = nullptr;
    m_restrictions->stop();
}

Ref<wrappers::BenchControls> PanelDocument::controls() const
{
    return values::given(m_controls);
}

// What the collection of controls needs ------------------------------------------------------------------------

wrappers::ControlTypes PanelDocument::controlTypes() const
{
    return m_factory->types();
}

Ref<wrappers::iBenchControl> PanelDocument::createControl(const QString& type)
{
    return m_factory->CreateControl(type, controls()->LockPositions(), m_panel.Logger());
}

Ref<site::SchemeWindows> PanelDocument::schemeWindows()
{
    return values::given(values::given(m_panel.Logger())->Scheme())->Windows();
}

void PanelDocument::discardControl(const Ref<binding::Object>& control)
{
    m_factory->discard(control);
}

void PanelDocument::restoreControl(const wrappers::PlacedControl& placed)
{
    m_factory->restore(placed);
}

ecan::Source* PanelDocument::restrictions()
{
    return m_restrictions.get();
}

void PanelDocument::reportError(const values::RuntimeError& error)
{
    Q_EMIT m_panel.runtimeError(error.number(), error.description());
}

// The window that is edited ------------------------------------------------------------------------------------

void PanelDocument::writeAttribute(Name name, const Variant& value)
{
    SetAttribute(container(), name, wrappers::storedText(value));
}

/// Whoever hears of it may fail, but not take the call along.
void PanelDocument::announceChange(void (BenchWindow::*signal)())
{
    const auto report = [this, alive = QPointer<BenchWindow>(&m_panel)](const values::RuntimeError& error) {
        if (alive)
            reportError(error);
    };
    values::atBoundary([&] { Q_EMIT(m_panel.*signal)(); }, report);
}

/// What tells that a call has ended that took the window shown off the panel, however it ended.
std::function<void()> PanelDocument::announceEntered()
{
    return [panel = QPointer<BenchWindow>(&m_panel)] {
        if (panel)
            panel->document().announceChange(&BenchWindow::WindowEntered);
    };
}

const Node& PanelDocument::container()
{
    if (!m_container)
        m_container = wrappers::findOrAppend(m_currentWindow ? m_currentWindow->XML() : Node(), element::Container);
    return m_container;
}

/// The window of this key in the scheme, made where there is none.
Ref<site::SchemeWindow> PanelDocument::storedWindow(const QString& key)
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
Ref<site::SchemeWindow> PanelDocument::unsavedWindow()
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

void PanelDocument::load(const QString& key)
{
    const QPointer<BenchWindow> alive(&m_panel);
    const QString wanted = key;
    announceChange(&BenchWindow::WindowLeaving);
    const auto entered = qScopeGuard(announceEntered());
    if (!alive)
        return;
    const std::uint32_t load = ++m_loads;
    // Logger, scheme and whoever is told of a property may end the panel or load something else: that stands then.
    const auto goesOn = [&] { return alive && m_loads == load; };

    // The defaults go through the setters: the container of the window shown before is reset in its document too.
    m_panel.design().init();
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
    m_panel.editor().leaveWindow();
    SiteMapPlacement::removeStale(tree);
    m_restrictions->forgetAnswers(); // the labels of a window that is loaded again have their data fetched anew
    // The collection empties the tree of the window shown before and builds this one's controls.
    const Ref<wrappers::BenchControls> list = controls();
    list->setXMLNode(tree);
    if (goesOn() && m_panel.ShowSiteMap())
        list->Add(SiteMapType.toString(), QString());
    if (goesOn() && m_panel.ShowSiteMap())
        m_siteMap->apply(siteMapNode);
    if (goesOn())
        list->ScanControls();
    // A link that is up already shows at once.
    if (const Ref<site::Link> link = goesOn() ? m_panel.events().link() : nullptr) {
        const site::LinkState state = link->State();
        if (goesOn())
            m_panel.events().followLink(state);
    }
    if (alive)
        m_panel.time().documentChanged();
    if (alive)
        m_panel.updateGeometry();
}

/// Sets the panel's properties from its container. Gives the element of the site map, or null.
Node PanelDocument::applyContainer()
{
    std::vector<SpecialChild> special{{element::Font, {}}, {element::SiteMap, {}}};
    // What the host program alone decides is not taken from a document, however it spells the name.
    for (Node child = m_container.firstChildElement(); child; child = child.nextSiblingElement()) {
        if (child.name().localPart().equalsIgnoringCase(HostName))
            special.push_back({child.name().localPart(), {}});
    }
    const Ref<FontObject> font = m_surface.surfaceFont();
    document::loadByName(m_container, *m_panel.object(), special);
    if (special[0].node)
        wrappers::applyFontNode(special[0].node, *font);
    return special[1].node;
}

void PanelDocument::import(const QString& file)
{
    const QPointer<BenchWindow> alive(&m_panel);
    const QString wanted = file;
    announceChange(&BenchWindow::WindowLeaving);
    const auto entered = qScopeGuard(announceEntered());
    if (alive)
        KeelImport(m_panel, m_surface).run(wanted);
}

void PanelDocument::setRefreshing(bool refreshes)
{
    if (m_controls)
        m_controls->setLiveData(refreshes ? m_liveData.get() : nullptr);
}

void PanelDocument::enter(const Ref<site::SchemeWindow>& window)
{
    const QPointer<BenchWindow> alive(&m_panel);
    const std::uint32_t load = ++m_loads;
    const Node tree = window->XML();
    if (!alive || m_loads != load)
        return;
    if (!tree)
        values::raise(ErrorNumber::ObjectNotSet);
    const Node settings = m_container;
    m_currentWindow = window;
    m_container = wrappers::findOrAppend(tree, element::Container);
    for (Node child = settings.firstChildElement(); child; child = child.nextSiblingElement())
        SetAttribute(m_container, child.name(), child.text());
    m_panel.editor().leaveWindow();
    controls()->setXMLNode(tree);
}

void PanelDocument::update()
{
    if (!m_currentWindow)
        return;
    controls()->updateAllNodes();
    const Node settings = container();
    storeFont(settings, *m_surface.surfaceFont());
    m_siteMap->store(settings);
}

void PanelDocument::save()
{
    if (!m_currentWindow)
        return;
    const Ref<site::Logger> logger = m_panel.Logger();
    const Node settings = container();
    const bool wasMarked = document::XMLOps::IsMarkedChanged(settings);
    update();
    // A save that fails is silent, and no change by itself: the document says of changes what it said before.
    const bool isSaved = values::attempt([&] { values::given(values::given(logger)->Scheme())->Save(); });
    if (!isSaved && !wasMarked)
        document::XMLOps::UnmarkChanged(settings);
}

void PanelDocument::clear()
{
    const QPointer<BenchWindow> alive(&m_panel);
    announceChange(&BenchWindow::WindowLeaving);
    const auto entered = qScopeGuard(announceEntered());
    if (!alive)
        return;
    const Ref<wrappers::BenchControls> list = controls();
    const std::uint32_t load = ++m_loads;
    const auto goesOn = [&] { return alive && m_loads == load; };

    const Ref<site::SchemeWindow> fresh = unsavedWindow();
    if (!goesOn())
        return;
    m_panel.editor().leaveWindow();
    m_panel.editor().setCurrentControl(nullptr);
    list->Clear();
    if (!goesOn())
        return;
    m_surface.cls();
    // The defaults go to the window shown before once more, so that the tree left behind holds them.
    m_panel.design().init();
    if (!goesOn())
        return;
    // From here on the fresh window is the one that is edited.
    m_currentWindow = fresh;
    m_container = Node();
    list->setXMLNode(fresh->XML());
    m_panel.updateGeometry();
}

} // namespace zan::window
