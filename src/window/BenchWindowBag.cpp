// The design values that a host keeps for the panel.

#include "window/BenchWindow.h"

#include "binding/Marshal.h"
#include "window/Background.h"
#include "window/ControlFactory.h"

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

void BenchWindow::InitProperties()
{
    const Ref<FontObject> ambient = ambientFont(*this);
    setFont(surface::copyFont(*ambient));
    setGridSize(DefaultGridSize);
    setSnapToGrid(true);
    controlsOrRaise().setLockPositions(true);
    setStretch(false);
    setPictureFile(QString());
    setBackColor(values::ButtonFace);
    setForeColor(values::ButtonText);
    surfaceFont()->setName(ambient->name());
    setLockMenu(DefaultLockMenu);
}

void BenchWindow::ReadProperties(const PropertyBag& bag)
{
    Surface::setBackColor(readValue(bag, "BackColor", values::ButtonFace));
    Surface::setForeColor(readValue(bag, "ForeColor", values::ButtonText));
    Surface::setEnabled(readValue(bag, "Enabled", true));
    setSurfaceFont(readValue(bag, "Font", ambientFont(*this))); // the bag gives a copy
    Surface::setBackStyle(readStyle(bag, "BackStyle", 1));
    Surface::setBorderStyle(readStyle(bag, "BorderStyle", 0));
    m_gridSize = readValue(bag, "GridSize", DefaultGridSize);
    m_snapToGrid = readValue(bag, "SnapToGrid", true);
    controlsOrRaise().setLockPositions(readValue(bag, "LockPositions", true));
    if (const auto picture = readValue(bag, "Picture", Ref<surface::Picture>()))
        m_background->setPicture(picture);
    m_background->setStretch(readValue(bag, "Stretch", false));
    m_showSiteMap = readValue(bag, "ShowSiteMap", DefaultShowSiteMap);
    m_lockMenu = readValue(bag, "LockMenu", DefaultLockMenu);
    m_factory->restyleTemplates();
    // COMPAT: an absent picture file puts a picture that came as an object away again.
    m_background->setPictureFile(readValue(bag, "PictureFile", QString()));
}

void BenchWindow::WriteProperties(PropertyBag& bag) const
{
    const auto write = [&bag](const char* key, const Variant& value, const Variant& defaultValue) {
        bag.WriteProperty(Name(key), value, defaultValue);
    };
    write("BackColor", Variant(BackColor().code), Variant(values::ButtonFace.code));
    write("ForeColor", Variant(ForeColor().code), Variant(values::ButtonText.code));
    write("Enabled", Variant(Enabled()), Variant(true));
    const Ref<FontObject> ambient = ambientFont(*this);
    write("Font", Variant(Font()), surface::fontsEqual(*Font(), *ambient) ? Variant(Font()) : Variant(ambient));
    write("BackStyle", Variant(BackStyle()), Variant(std::int16_t(1)));
    write("BorderStyle", Variant(BorderStyle()), Variant(std::int16_t(0)));
    write("GridSize", Variant(GridSize()), Variant(DefaultGridSize));
    write("SnapToGrid", Variant(SnapToGrid()), Variant(true));
    write("LockPositions", Variant(LockPositions()), Variant(true));
    write("Stretch", Variant(Stretch()), Variant(false));
    write("PictureFile", Variant(PictureFile()), Variant(QString()));
    const Ref<surface::Picture> none;
    write("Picture", PictureFile().isEmpty() ? Variant(none) : Variant(picture()), Variant(none));
    bag.WriteProperty(Name("ShowSiteMap"), Variant(ShowSiteMap()));
    bag.WriteProperty(Name("LockMenu"), Variant(LockMenu()));
}

} // namespace zan::window
