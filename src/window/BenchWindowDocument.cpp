// The panel and its window document: loading, saving, clearing.

#include "window/BenchWindow.h"

#include "document/Elements.h"
#include "document/LoadByName.h"
#include "document/XMLOps.h"
#include "window/BenchWindowObject.h"
#include "window/PanelEditor.h"
#include "window/SiteMapPlacement.h"
#include "wrappers/FontNode.h"
#include "wrappers/ValueText.h"

#include <QPointer>
#include <QScopeGuard>

#include <array>
#include <vector>

namespace zan::window {

namespace element = document::element;
using binding::Variant;
using document::Node;
using document::SpecialChild;
using document::XMLOps::SetAttribute;
using values::ErrorNumber;
using values::Name;
using values::RuntimeError;

namespace {

const QString SiteMapType = QStringLiteral("SITEMAP");
const QString UnsavedWindowKey = QStringLiteral("RTD");

Node findOrAppend(const Node& parent, Name name)
{
    Node child = parent.child(name);
    if (!child) {
        child = parent.createElement(name);
        parent.appendChild(child);
    }
    return child;
}

} // namespace

/// Whoever hears of it may fail, but not take the call along.
void BenchWindow::announceChange(void (BenchWindow::*signal)())
{
    try {
        Q_EMIT(this->*signal)();
    } catch (const RuntimeError& error) {
        reportError(error);
    }
}

void BenchWindow::LoadWindow(const QString& key)
{
    const Ref<BenchWindowObject> alive = m_object;
    announceChange(&BenchWindow::WindowLeaving);
    const auto entered = qScopeGuard([panel = QPointer<BenchWindow>(this)] {
        if (panel)
            panel->announceChange(&BenchWindow::WindowEntered);
    });
    // 1. The defaults, through the setters: the container of the window shown before is reset in its document too.
    InitProperties();
    // 2.
    const Ref<site::SchemeWindows> windows = schemeWindows();
    m_currentWindow = windows->Item(Variant(key));
    // 3. A window that does not exist is created.
    if (!m_currentWindow) {
        const Ref<site::SchemeWindow> window = windows->createWindow();
        window->setKey(key);
        m_currentWindow = windows->Add(window, key);
    }
    // 4.
    takeContainer();
    // 5. and 6.
    Node siteMapNode;
    applyContainer(siteMapNode);
    // 7.
    m_editor->history().clear();
    removeStaleSiteMaps();
    // 8. The collection empties the tree of the window shown before and builds this one's controls.
    const Ref<wrappers::BenchControls> list(&controlsOrRaise());
    list->setXMLNode(m_currentWindow->XML());
    // 9.
    placeSiteMap(siteMapNode);
    // 10.
    Refresh();
    // 11. A link that is up already shows at once.
    if (m_link)
        followLink(m_link->State());
}

void BenchWindow::takeContainer()
{
    const Node windowNode = m_currentWindow->XML();
    m_container = windowNode.child(element::Container);
    if (!m_container) {
        m_container = document::XMLOps::CreateElement(element::Container);
        windowNode.appendChild(m_container);
    }
}

void BenchWindow::applyContainer(Node& siteMapNode)
{
    std::array special{SpecialChild{element::Font, {}}, SpecialChild{element::SiteMap, {}}};
    document::loadByName(m_container, *m_object, special);
    const auto& [fontNode, siteMap] = special;
    siteMapNode = siteMap.node;
    if (fontNode.node)
        wrappers::applyFontNode(fontNode.node, *surfaceFont());
}

void BenchWindow::removeStaleSiteMaps()
{
    // The site map is placed anew by each load: a stored placement must never reach the collection.
    const Node windowNode = m_currentWindow->XML();
    std::vector<Node> placed = windowNode.children(element::Control);
    for (auto node = placed.rbegin(); node != placed.rend(); ++node) {
        if (document::XMLOps::GetAttribute(*node, element::Type) == SiteMapType)
            windowNode.removeChild(*node);
    }
}

void BenchWindow::placeSiteMap(const Node& siteMapNode)
{
    if (!m_showSiteMap)
        return;
    controlsOrRaise().Add(SiteMapType, QString());
    std::array special{SpecialChild{element::Font, {}}};
    document::loadByName(siteMapNode, *m_siteMap, special);
    if (special[0].node)
        wrappers::applyFontNode(special[0].node, *m_siteMap->Font());
}

void BenchWindow::UpdateDocument()
{
    if (!m_currentWindow)
        return;
    // 1.
    controlsOrRaise().updateAllNodes();
    // 2.
    storeFont(m_container, *surfaceFont());
    // 3.
    const Node siteMapNode = findOrAppend(m_container, element::SiteMap);
    SetAttribute(siteMapNode, element::Left, wrappers::storedText(Variant(m_siteMap->Left())));
    SetAttribute(siteMapNode, element::Top, wrappers::storedText(Variant(m_siteMap->Top())));
    SetAttribute(siteMapNode, element::Height, wrappers::storedText(Variant(m_siteMap->Height())));
    SetAttribute(siteMapNode, element::Width, wrappers::storedText(Variant(m_siteMap->Width())));
    storeFont(siteMapNode, *m_siteMap->Font());
}

void BenchWindow::SaveWindow()
{
    if (!m_currentWindow)
        return;
    // 1. to 3.
    UpdateDocument();
    // 4. A failed save is silent here: the scheme still says that it has changes.
    try {
        if (m_logger)
            m_logger->Scheme()->Save();
    } catch (const RuntimeError&) {
        return;
    }
}

void BenchWindow::storeFont(const Node& parent, binding::Object& font)
{
    wrappers::storeFontNode(findOrAppend(parent, element::Font), font);
}

void BenchWindow::Clear()
{
    announceChange(&BenchWindow::WindowLeaving);
    const auto entered = qScopeGuard([panel = QPointer<BenchWindow>(this)] {
        if (panel)
            panel->announceChange(&BenchWindow::WindowEntered);
    });
    // 1. A window record of its own, which belongs to no scheme.
    m_currentWindow = nullptr;
    if (m_logger) {
        m_currentWindow = schemeWindows()->createWindow();
        m_currentWindow->setKey(UnsavedWindowKey);
    }
    // 2. to 5.
    m_editor->history().clear();
    m_editor->setCurrentControl(nullptr);
    const Ref<wrappers::BenchControls> list(&controlsOrRaise());
    list->Clear();
    cls();
    InitProperties();
}

} // namespace zan::window
