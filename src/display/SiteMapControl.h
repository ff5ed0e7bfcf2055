#pragma once

#include "binding/Member.h"
#include "binding/PropertyBag.h"
#include "display/SiteChart.h"
#include "display/Sites.h"
#include "surface/host/Picture.h"
#include "surface/host/WidgetControl.h"

#include <optional>

namespace zan::display {

class SiteMapView;

/// A map of sites on a surface: the tree of a map file as labelled boxes joined by lines, in a scrolling container. A
/// double click on a site highlights it and tells which scheme it stands for.
class SiteMapControl : public surface::WidgetControl
{
public:
    /// Who is told of what happens on the map.
    class Host
    {
    public:
        /// A site was chosen; the text is its SCHEME. May do anything, delete the surface included.
        virtual void loadScheme(const QString& site) = 0;
        /// A property has got a value that is worth saving.
        virtual void propertyChanged(binding::Name /*name*/) {}
        /// The container's service for popup menus: what PopupMenu was called with.
        virtual void popupMenu(const Variant& /*menu*/, const std::optional<Variant>& /*flags*/,
                               const std::optional<Variant>& /*x*/, const std::optional<Variant>& /*y*/,
                               const std::optional<Variant>& /*defaultMenu*/)
        {}

    protected:
        ~Host() = default;
    };
    /// What the map takes from the place where it stands, when a bag tells nothing else.
    struct Ambient
    {
        Ref<FontObject> font = values::make<FontObject>();
        Colour backColour = values::ButtonFace;
        Colour foreColour = values::ButtonText;
    };

    SiteMapControl();
    ~SiteMapControl() override;
    const binding::MemberTable& members() const override;

    /// Loads a map file and lays its sites out. False when it cannot be read or holds more sites than can be counted:
    /// of the sites shown before only the first stays then. Raises 91 for a file that is no map or holds no site.
    bool LoadMap(const QString& file);
    /// No map is ever written: always false.
    bool SaveMap(const std::optional<QString>& file = {});
    /// Highlights a site (from 1) and takes the highlight from the one before. Raises 340 when one of the two does not
    /// exist; the number stays the selected one nevertheless.
    void SelectSite(std::int16_t newSite);
    void PopupMenu(const Variant& menu, const std::optional<Variant>& flags, const std::optional<Variant>& x,
                   const std::optional<Variant>& y, const std::optional<Variant>& defaultMenu);

    /// Keeps the very font that is given; the labels get copies. Raises 91 for Nothing, and 340 in the end when no
    /// site, or one that does not exist, is the selected one.
    void putFont(const Ref<FontObject>& font);
    void putEnabled(bool enabled);
    std::int16_t mousePointer() const noexcept { return 0; } ///< the platform's own
    Ref<surface::Picture> mouseIcon() const { return {}; }   ///< there is no way to set one
    Colour siteColour() const noexcept { return m_siteColour; }

    const Ref<Sites>& sites() const noexcept { return m_sites; }
    /// The map that is shown; empty while there is none.
    const QString& mapFile() const noexcept { return m_mapFile; }
    /// Loads a map, whatever comes of it; an empty name forgets the name and leaves the map as it stands.
    void setMapFile(const QString& file);

    /// Takes the design values from a bag. A value that the property does not accept counts as its default.
    void ReadProperties(const binding::PropertyBag& bag, const Ambient& ambient);
    void WriteProperties(binding::PropertyBag& bag, const Ambient& ambient) const;

    const SiteChart& chart() const noexcept { return *m_chart; }
    /// 0 while none was selected. The number of a site that may not exist.
    std::int16_t selectedSite() const noexcept { return m_selected; }
    /// What a double click on a site does: selects it and tells the host of its scheme. Errors go where the surface's
    /// go. The surface may be gone afterwards.
    void chooseSite(int site);

    /// Who is told; null for nobody. Must outlive the control or be taken away before.
    void setHost(Host* host) noexcept { m_host = host; }

    bool keepsMouse(QPointF place) const override;
    bool keepsKey(surface::DialogKey key) const override;
    surface::AccessibleRole accessibleRole() const noexcept override { return surface::AccessibleRole::Chart; }

protected:
    QWidget* createWidget(QWidget* parent) override;
    void syncWidget(QWidget& widget) override;
    void stylePalette(QPalette& palette) const override;

private:
    struct Setting;
    SiteMapView* view() const;
    void notify(binding::Name property);
    // Hooks of properties whose every write is reported, whether it changes anything or not.
    void written(const binding::Written& write);
    void lookWritten(const binding::Written& write);
    void styleWritten(const binding::Written& write);
    void siteColourWritten(const binding::Written& write);
    void layOut(const document::Node& root);

    Ref<SiteChart> m_chart = values::make<SiteChart>();
    Ref<Sites> m_sites = values::make<Sites>();
    document::Node m_document;
    QString m_mapFile;
    Host* m_host = nullptr;
    Colour m_siteColour = values::ButtonFace;
    // COMPAT: lines and offsets take effect with the next LoadMap; what is shown stays as it is.
    Colour m_lineColour = LineLook().colour;
    std::int16_t m_lineWidth = LineLook().width; // pixels
    float m_columnOffset = 1000;                 // twips
    float m_rowOffset = 750;
    std::int16_t m_selected = 0;
    std::int16_t m_borderStyle = 1; // 0 none, 1 single line; others count as none
};

} // namespace zan::display
