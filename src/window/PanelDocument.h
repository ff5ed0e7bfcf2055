#pragma once

#include "document/Node.h"
#include "site/Scheme.h"
#include "window/EditSteps.h"
#include "wrappers/BenchControls.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace zan::ecan {
class NetworkSource;
}
namespace zan::surface {
class Surface;
}

namespace zan::window {

class BenchWindow;
class ControlFactory;
class SiteMapPlacement;

using values::Ref;

/// A panel and its window document: which window of the scheme is edited, its controls, and the ways between them.
///
/// Logger, scheme and whoever is told of a property may come back to the panel, or end it, in the middle of a load:
/// what they have loaded stands then, and the load that was under way ends quietly.
class PanelDocument : public EditedPanel, private wrappers::PanelWindow
{
public:
    PanelDocument(BenchWindow& panel, surface::Surface& surface, wrappers::ControlTypes types);
    ~PanelDocument() override;
    PanelDocument(const PanelDocument&) = delete;
    PanelDocument& operator=(const PanelDocument&) = delete;

    /// Shows the window of this key, made where the scheme has none.
    void load(const QString& key);
    /// Empties the panel; a fresh window of no scheme is the one that is edited from then on.
    void clear();
    /// Lays out a window of an older terminal.
    void import(const QString& file);
    /// A window of the scheme that has no controls yet becomes the one that is edited, with the settings that have been
    /// made since the panel was cleared. Raises 91 for a window without a tree.
    void enter(const Ref<site::SchemeWindow>& window);
    /// Stores in the document what the panel shows.
    void update();
    /// The same, and has the scheme save. A save that fails is silent.
    void save();

    const Ref<site::SchemeWindow>& currentWindow() const noexcept { return m_currentWindow; }
    /// Whether the list refreshes its controls when it is asked to, or one is added to it. It does, but while many are
    /// added in a row of which nothing is seen.
    void setRefreshing(bool refreshes);
    /// How often another window has become the one that is edited. Who builds one looks whether it still is.
    std::uint32_t loads() const noexcept { return m_loads; }
    /// Empty once the panel has ended.
    const Ref<wrappers::BenchControls>& controlsOrNothing() const noexcept { return m_controls; }
    /// Raises 91 once the panel has ended.
    Ref<wrappers::BenchControls> controls() const;
    /// Writes a setting of the window to its container.
    void writeAttribute(values::Name name, const binding::Variant& value);
    /// The panel has ended: lets the controls go.
    void end();

    Ref<wrappers::BenchControls> editedControls() override { return m_controls; }
    BenchWindow& editedWindow() override { return m_panel; }
    /// The element that holds the settings of the window that is edited, made where there is none.
    const document::Node& container();
    SiteMapPlacement& siteMap() const noexcept { return *m_siteMap; }
    ControlFactory& factory() const noexcept { return *m_factory; }
    wrappers::ControlTypes controlTypes() const override;
    /// The windows of the logger's scheme; Nothing when the scheme has none. Raises 91 without a logger or a scheme.
    Ref<site::SchemeWindows> schemeWindows() override;
    /// Where labels without a channel have restriction data from.
    ecan::NetworkSource& restrictionSource() const noexcept { return *m_restrictions; }

private:
    Ref<wrappers::iBenchControl> createControl(const QString& type) override;
    void discardControl(const Ref<binding::Object>& control) override;
    void restoreControl(const wrappers::PlacedControl& placed) override;
    ecan::Source* restrictions() override;
    void reportError(const values::RuntimeError& error) override;

    void announceChange(void (BenchWindow::*signal)());
    std::function<void()> announceEntered();
    Ref<site::SchemeWindow> storedWindow(const QString& key);
    Ref<site::SchemeWindow> unsavedWindow();
    document::Node applyContainer();

    BenchWindow& m_panel;
    surface::Surface& m_surface;
    std::unique_ptr<ControlFactory> m_factory;
    std::unique_ptr<wrappers::LiveData> m_liveData;
    std::unique_ptr<ecan::NetworkSource> m_restrictions;
    Ref<wrappers::BenchControls> m_controls;
    Ref<site::SchemeWindow> m_currentWindow;
    document::Node m_container; // null while the current window's has not been needed yet
    std::unique_ptr<SiteMapPlacement> m_siteMap;
    std::uint32_t m_loads = 0;
};

} // namespace zan::window
