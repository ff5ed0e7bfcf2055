#pragma once

#include "binding/PropertyBag.h"
#include "surface/host/Surface.h"
#include "values/Colour.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zan::wrappers {
class iBenchControl;
}

namespace zan::window {

class Background;
class BenchWindow;

using binding::PropertyBag;
using values::Colour;
using values::Ref;

/// How a panel looks, its grid and its locks: what a host's bag and the window document keep of it.
///
/// Each write of a value that the bag knows is reported by the panel's PropertyChanged, last of all, as whoever hears
/// of it may do anything; those that belong to the window document are written to its container first.
class PanelDesign
{
public:
    static constexpr float DefaultGridSize = 200; ///< twips

    PanelDesign(BenchWindow& panel, surface::Surface& surface);
    ~PanelDesign();
    PanelDesign(const PanelDesign&) = delete;
    PanelDesign& operator=(const PanelDesign&) = delete;

    void setBackColor(Colour colour);
    void setForeColor(Colour colour);
    void setEnabled(bool enabled);
    void setFont(const Ref<surface::FontObject>& font);
    /// Raises 380 for anything but 0 and 1.
    void setBackStyle(std::int16_t style);
    void setBorderStyle(std::int16_t style);
    float gridSize() const noexcept { return m_gridSize; }
    void setGridSize(float size);
    bool snapToGrid() const noexcept { return m_snapToGrid; }
    void setSnapToGrid(bool snap);
    void setLockPositions(bool lock);
    bool stretch() const;
    void setStretch(bool stretch);
    bool showSiteMap() const noexcept { return m_showSiteMap; }
    void setShowSiteMap(bool show);
    bool lockMenu() const noexcept { return m_lockMenu; }
    void setLockMenu(bool lock);
    QString pictureFile() const;
    void setPictureFile(const QString& file);
    Ref<surface::Picture> picture() const;
    void setPicture(const Ref<surface::Picture>& picture);
    /// The picture of a background that lives in a temporary file; nothing for any other.
    Ref<surface::Picture> ownPicture() const;
    /// The background at the surface's present size.
    void refreshBackground();

    /// The values of a panel that is placed for the first time, through the setters.
    void init();
    void read(const PropertyBag& bag);
    void write(PropertyBag& bag) const;

private:
    struct BagRow;
    static const std::vector<BagRow>& bagRows();
    values::Variant fallbackOf(const BagRow& row) const;
    void changed(const char* name);
    template <class Apply>
    void forFollowers(Apply apply);

    BenchWindow& m_panel;
    surface::Surface& m_surface;
    std::unique_ptr<Background> m_background;
    float m_gridSize = DefaultGridSize;
    bool m_snapToGrid = true;
    bool m_showSiteMap = true;
    bool m_lockMenu = false;
};

} // namespace zan::window
