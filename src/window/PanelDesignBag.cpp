// The design values that a host keeps for the panel.

#include "window/PanelDesign.h"

#include "binding/Marshal.h"
#include "window/Background.h"
#include "window/BenchWindow.h"
#include "window/ControlFactory.h"
#include "window/PanelDocument.h"

#include <QApplication>

namespace zan::window {

using binding::Marshal;
using binding::Variant;
using surface::FontObject;
using values::Name;

namespace {

/// The font of whatever the panel stands on.
Ref<FontObject> ambientFont(const QWidget& panel)
{
    return FontObject::fromQFont(panel.parentWidget() ? panel.parentWidget()->font() : QApplication::font());
}

template <class T>
T readValue(const PropertyBag& bag, const char* key, T defaultValue)
{
    return Marshal<T>::from(bag.ReadProperty(Name(key), Marshal<T>::to(defaultValue)));
}

/// What is neither 0 nor 1 is no value of these properties.
std::int16_t readStyle(const PropertyBag& bag, const char* key, std::int16_t defaultValue)
{
    const auto style = readValue<std::int16_t>(bag, key, defaultValue);
    return style == 0 || style == 1 ? style : defaultValue;
}

constexpr bool DefaultShowSiteMap = true;
constexpr bool DefaultLockMenu = false;

} // namespace

void PanelDesign::init()
{
    const Ref<FontObject> ambient = ambientFont(m_panel);
    setFont(surface::copyFont(*ambient));
    setGridSize(DefaultGridSize);
    setSnapToGrid(true);
    m_panel.document().controls()->setLockPositions(true);
    setStretch(false);
    setPictureFile(QString());
    setBackColor(values::ButtonFace);
    setForeColor(values::ButtonText);
    m_surface.surfaceFont()->setName(ambient->name());
    setLockMenu(DefaultLockMenu);
}

void PanelDesign::read(const PropertyBag& bag)
{
    m_surface.setBackColor(readValue(bag, "BackColor", values::ButtonFace));
    m_surface.setForeColor(readValue(bag, "ForeColor", values::ButtonText));
    m_panel.QWidget::setEnabled(readValue(bag, "Enabled", true));
    m_surface.setSurfaceFont(readValue(bag, "Font", ambientFont(m_panel))); // the bag gives a copy
    m_surface.setBackStyle(readStyle(bag, "BackStyle", 1));
    m_surface.setBorderStyle(readStyle(bag, "BorderStyle", 0));
    m_gridSize = readValue(bag, "GridSize", DefaultGridSize);
    m_snapToGrid = readValue(bag, "SnapToGrid", true);
    m_panel.document().controls()->setLockPositions(readValue(bag, "LockPositions", true));
    if (const auto picture = readValue(bag, "Picture", Ref<surface::Picture>()))
        m_background->setPicture(picture);
    m_background->setStretch(readValue(bag, "Stretch", false));
    m_showSiteMap = readValue(bag, "ShowSiteMap", DefaultShowSiteMap);
    m_lockMenu = readValue(bag, "LockMenu", DefaultLockMenu);
    m_panel.document().factory().restyleTemplates();
    // COMPAT: an absent picture file puts a picture that came as an object away again.
    m_background->setPictureFile(readValue(bag, "PictureFile", QString()));
}

void PanelDesign::write(PropertyBag& bag) const
{
    const auto write = [&bag](const char* key, const Variant& value, const Variant& defaultValue) {
        bag.WriteProperty(Name(key), value, defaultValue);
    };
    write("BackColor", Variant(m_panel.BackColor().code), Variant(values::ButtonFace.code));
    write("ForeColor", Variant(m_panel.ForeColor().code), Variant(values::ButtonText.code));
    write("Enabled", Variant(m_panel.Enabled()), Variant(true));
    const Ref<FontObject> ambient = ambientFont(m_panel);
    write("Font", Variant(m_panel.Font()),
          surface::fontsEqual(*m_panel.Font(), *ambient) ? Variant(m_panel.Font()) : Variant(ambient));
    write("BackStyle", Variant(m_panel.BackStyle()), Variant(std::int16_t(1)));
    write("BorderStyle", Variant(m_panel.BorderStyle()), Variant(std::int16_t(0)));
    write("GridSize", Variant(m_panel.GridSize()), Variant(DefaultGridSize));
    write("SnapToGrid", Variant(m_panel.SnapToGrid()), Variant(true));
    write("LockPositions", Variant(m_panel.LockPositions()), Variant(true));
    write("Stretch", Variant(m_panel.Stretch()), Variant(false));
    write("PictureFile", Variant(m_panel.PictureFile()), Variant(QString()));
    const Ref<surface::Picture> none;
    write("Picture", m_panel.PictureFile().isEmpty() ? Variant(none) : Variant(m_surface.picture()), Variant(none));
    bag.WriteProperty(Name("ShowSiteMap"), Variant(m_panel.ShowSiteMap()));
    bag.WriteProperty(Name("LockMenu"), Variant(m_panel.LockMenu()));
}

} // namespace zan::window
