#include "display/SiteMapControl.h"

#include "binding/MemberTable.h"
#include "display/SiteElements.h"
#include "display/SiteMapFile.h"
#include "display/SiteMapView.h"
#include "document/XMLOps.h"
#include "surface/host/ControlArray.h"
#include "surface/host/Surface.h"

#include <QPalette>

namespace zan::display {

using values::ErrorNumber;
using values::Name;

namespace {

// Spelled here for their rows and for the host that is told of every write.
constexpr char EnabledName[] = "Enabled";
constexpr char FontName[] = "Font";

constexpr std::int16_t WidestLine = 8192;

std::int16_t checkedLineWidth(std::int16_t width)
{
    if (width < 1 || width > WidestLine)
        values::raise(ErrorNumber::InvalidPropertyValue);
    return width;
}

/// A font of the same values as the one in the bag, which stays the bag's.
Ref<FontObject> ownCopy(const Variant& stored)
{
    const auto font = binding::Marshal<Ref<FontObject>>::from(stored);
    if (!font)
        values::raise(ErrorNumber::ObjectNotSet);
    return surface::copyFont(*font);
}

} // namespace

SiteMapControl::SiteMapControl()
    : WidgetControl(values::ButtonFace, values::ButtonText)
{
    // COMPAT: opened and never closed, other than panels and their controls do it.
    document::XMLOps::OpenXML();
}

SiteMapControl::~SiteMapControl() = default;

const binding::MemberTable& SiteMapControl::members() const
{
    using C = SiteMapControl;
    using binding::field;
    using binding::method;
    using binding::property;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable(
            "SiteMap", &baseMembers(),
            {
                property<&C::tabIndex, &C::setTabIndex>("TabIndex"),
                field<&C::m_tabStop, &C::look>("TabStop", true).notStored(),
                method<&C::LoadMap>("LoadMap"),
                method<&C::SaveMap>("SaveMap"),
                field<&C::m_borderStyle, &C::lookWritten>("BorderStyle", 1),
                property<&C::enabled, &C::putEnabled>(EnabledName).keptIn<&C::m_enabled>(true),
                method<&C::PopupMenu>("PopupMenu"),
                field<&C::m_backColor, &C::styleWritten>("BackColour", values::ButtonFace),
                readOnly<&C::mousePointer>("MousePointer"),
                readOnly<&C::mouseIcon>("MouseIcon"),
                property<&C::font, &C::putFont>(FontName).stored(),
                field<&C::m_foreColor, &C::styleWritten>("ForeColour", values::ButtonText).notStored(),
                field<&C::m_siteColour, &C::siteColourWritten>("SiteColour", values::ButtonFace),
                field<&C::m_lineColour, &C::written>("LineColour", LineLook().colour),
                field<&C::m_lineWidth, &C::written>("LineWidth", LineLook().width, binding::between(1, WidestLine)),
                field<&C::m_columnOffset, &C::written>("ColumnOffset", 1000.0F),
                field<&C::m_rowOffset, &C::written>("RowOffset", 750.0F),
                readOnly<&C::sites>("Sites"),
                property<&C::mapFile, &C::setMapFile>("MapFile"),
                method<&C::SelectSite>("SelectSite"),
            });
    });
}

// The map ------------------------------------------------------------------------------------------------------

bool SiteMapControl::LoadMap(const QString& file)
{
    const QString wanted = file; // it may be the very text that is cleared here
    m_mapFile.clear();
    m_chart->shrink();
    changed(Look);
    m_document = SiteMapFile::read(wanted);
    if (!m_document)
        return false;
    const document::Node map = m_document.child(element::SiteMap);
    const document::Node root = map.child(element::Site);
    if (!root)
        values::raise(ErrorNumber::ObjectNotSet);
    if (!SiteMapFile::isShowable(root)) {
        m_document = {};
        return false;
    }
    layOut(root);
    m_mapFile = wanted;
    return true;
}

void SiteMapControl::layOut(const document::Node& root)
{
    m_sites = values::make<Sites>();
    const SiteChart::Plan plan{m_columnOffset, m_rowOffset, *font(), m_siteColour, {m_lineColour, m_lineWidth}};
    m_chart->layOut(root, plan, [this](const document::Node& site) { m_sites->Add(site); });
}

bool SiteMapControl::SaveMap(const std::optional<QString>&)
{
    return false;
}

void SiteMapControl::setMapFile(const QString& file)
{
    if (file.isEmpty())
        m_mapFile.clear();
    else
        LoadMap(file);
}

void SiteMapControl::SelectSite(std::int16_t newSite)
{
    changed(Look);
    if (m_selected > 0) {
        if (!m_chart->contains(m_selected))
            surface::ControlArray::raiseNoElement(m_selected);
        m_chart->dress(m_selected, *font(), false, m_siteColour);
    }
    m_selected = newSite;
    if (!m_chart->contains(m_selected))
        surface::ControlArray::raiseNoElement(m_selected);
    m_chart->dress(m_selected, *font(), true, m_siteColour);
}

void SiteMapControl::chooseSite(int site)
{
    surface::Surface* owner = surface();
    if (!owner || !m_chart->contains(site))
        return;
    const Ref<SiteMapControl> alive(this);
    owner->tell([&](surface::SurfaceEvents&) {
        SelectSite(std::int16_t(site));
        if (m_host)
            m_host->loadScheme(m_chart->site(site).scheme);
    });
}

void SiteMapControl::PopupMenu(const Variant& menu, const std::optional<Variant>& flags,
                               const std::optional<Variant>& x, const std::optional<Variant>& y,
                               const std::optional<Variant>& defaultMenu)
{
    if (m_host)
        m_host->popupMenu(menu, flags, x, y, defaultMenu);
}

// Properties ---------------------------------------------------------------------------------------------------

void SiteMapControl::notify(Name property)
{
    if (m_host)
        m_host->propertyChanged(property);
}

void SiteMapControl::written(const binding::Written& write)
{
    notify(write.member.name);
}

void SiteMapControl::lookWritten(const binding::Written& write)
{
    if (write.isChanged)
        changed(Look);
    notify(write.member.name);
}

void SiteMapControl::styleWritten(const binding::Written& write)
{
    if (write.isChanged)
        changed(Style);
    notify(write.member.name);
}

/// Also without a change: a highlighted site takes the colour of the others.
void SiteMapControl::siteColourWritten(const binding::Written& write)
{
    m_chart->setFills(m_siteColour);
    changed(Look);
    notify(write.member.name);
}

void SiteMapControl::putEnabled(bool enabled)
{
    setEnabled(enabled);
    notify(Name(EnabledName));
}

void SiteMapControl::putFont(const Ref<FontObject>& font)
{
    if (!font)
        values::raise(ErrorNumber::ObjectNotSet);
    const Ref<FontObject> given = font;
    m_chart->setFonts(*given);
    changed(Look);
    notify(Name(FontName));
    setFont(given);
    // The highlighted site is larger than the others again. COMPAT: this fails while none is selected.
    SelectSite(m_selected);
}

// Property bag -------------------------------------------------------------------------------------------------

/// A property that the bag keeps. COMPAT: some defaults differ between reading and writing.
struct SiteMapControl::Setting
{
    const char* name;
    Variant readDefault;
    std::optional<Variant> writeDefault; ///< nothing: written whatever it is
    /// Sets the property without the consequences of a put; null for one that is never read.
    void (*store)(SiteMapControl&, const Variant&) = nullptr;

    static std::vector<Setting> all(const Ambient& ambient);
};

std::vector<SiteMapControl::Setting> SiteMapControl::Setting::all(const Ambient& ambient)
{
    using C = SiteMapControl;
    using V = const Variant&;
    const Variant back(ambient.backColour.code);
    const Variant fore(ambient.foreColour.code);
    const Variant font(ambient.font);
    return {
        {"BorderStyle", std::int16_t(1), Variant(std::int16_t(1)),
         [](C& map, V value) { map.m_borderStyle = values::toInteger(value); }},
        {"Enabled", true, Variant(true), [](C& map, V value) { map.setEnabled(values::toBoolean(value)); }},
        {"Font", font, font, [](C& map, V value) { map.setFont(ownCopy(value)); }},
        {"MouseIcon", {}, Variant::nothing()},
        // COMPAT: its default is the font, which no colour equals.
        {"BackColour", back, {}, [](C& map, V value) { map.m_backColor = {values::toLong(value)}; }},
        {"SiteColour", back, back, [](C& map, V value) { map.m_siteColour = {values::toLong(value)}; }},
        {"LineColour", fore, fore, [](C& map, V value) { map.m_lineColour = {values::toLong(value)}; }},
        {"LineWidth", std::int16_t(5), Variant(std::int16_t(5)),
         [](C& map, V value) { map.m_lineWidth = checkedLineWidth(values::toInteger(value)); }},
        {"ColumnOffset", 1200.0F, Variant(1500.0F),
         [](C& map, V value) { map.m_columnOffset = values::toSingle(value); }},
        {"RowOffset", 750.0F, Variant(750.0F), [](C& map, V value) { map.m_rowOffset = values::toSingle(value); }},
    };
}

void SiteMapControl::ReadProperties(const binding::PropertyBag& bag, const Ambient& ambient)
{
    for (const Setting& setting : Setting::all(ambient)) {
        if (!setting.store)
            continue;
        try {
            setting.store(*this, bag.ReadProperty(Name(setting.name), setting.readDefault));
        } catch (const values::RuntimeError&) {
            setting.store(*this, setting.readDefault); // whoever wrote the bag, it is no value of this property
        }
    }
    changed(Look);
    changed(Style);
}

void SiteMapControl::WriteProperties(binding::PropertyBag& bag, const Ambient& ambient) const
{
    auto& self = const_cast<SiteMapControl&>(*this); // reading changes nothing
    for (const Setting& setting : Setting::all(ambient)) {
        const Name name(setting.name);
        Variant value = members().find(name)->get(self, {});
        if (value.isObject() && value.object() == font().get()) {
            value = Variant(surface::copyFont(*font())); // the bag's font is the bag's own
            const bool isDefault = surface::fontsEqual(*font(), *ambient.font);
            bag.WriteProperty(name, value, isDefault ? value : Variant());
        } else if (setting.writeDefault) {
            bag.WriteProperty(name, value, *setting.writeDefault);
        } else {
            bag.WriteProperty(name, value);
        }
    }
}

// Widget -------------------------------------------------------------------------------------------------------

SiteMapView* SiteMapControl::view() const
{
    return static_cast<SiteMapView*>(widget());
}

QWidget* SiteMapControl::createWidget(QWidget* parent)
{
    auto* view = new SiteMapView(m_chart, parent);
    QObject::connect(view, &SiteMapView::chosen, view, [this](int site) { chooseSite(site); });
    return view;
}

void SiteMapControl::syncWidget(QWidget& widget)
{
    auto& shown = static_cast<SiteMapView&>(widget);
    shown.setFrameShape(m_borderStyle == 1 ? QFrame::StyledPanel : QFrame::NoFrame);
    shown.follow(m_selected);
}

/// Scroll bars keep the colours of the platform.
void SiteMapControl::stylePalette(QPalette& palette) const
{
    const QColor back = values::toQColor(backColor(), palette);
    const QColor fore = values::toQColor(foreColor(), palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        palette.setColor(group, QPalette::Window, back);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::WindowText, fore);
}

bool SiteMapControl::keepsMouse(QPointF place) const
{
    const SiteMapView* shown = view();
    return shown && shown->keepsMouse(place);
}

bool SiteMapControl::keepsKey(surface::DialogKey key) const
{
    return key == surface::DialogKey::Enter && m_chart->isShown();
}

} // namespace zan::display
