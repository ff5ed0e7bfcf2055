#pragma once

#include "display/SiteMapControl.h"
#include "document/Node.h"

#include <functional>

namespace zan::surface {
class Surface;
}

namespace zan::window {

using values::Ref;

/// A panel's site map: the one control that belongs to the panel and not to its list, and what a document keeps of it,
/// also while it is not shown. A panel that knows no site map has none; nothing happens then.
class SiteMapPlacement final : private display::SiteMapControl::Host
{
public:
    using Chosen = std::function<void(const QString& scheme)>;

    /// `chosen` is told when a site is chosen. It may do anything, delete the panel included.
    SiteMapPlacement(surface::Surface& surface, Chosen chosen);
    ~SiteMapPlacement();
    SiteMapPlacement(const SiteMapPlacement&) = delete;
    SiteMapPlacement& operator=(const SiteMapPlacement&) = delete;

    const Ref<display::SiteMapControl>& control() const noexcept { return m_control; }
    void setVisible(bool visible);
    /// Takes out of a window every stored placement of a site map: it is placed anew by each load.
    static void removeStale(const document::Node& window);
    /// Sets every child of the document's record on the map by name, failures ignored, its font last, and shows it. The
    /// record may be null.
    void apply(const document::Node& record);
    /// Writes place and font into the record in the window's container, which is made when it is missing.
    void store(const document::Node& container) const;

private:
    void loadScheme(const QString& site) override;

    Ref<display::SiteMapControl> m_control;
    Chosen m_chosen;
};

} // namespace zan::window
