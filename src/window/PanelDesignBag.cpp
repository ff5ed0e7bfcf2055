// The design values that a host keeps for the panel.

#include "window/PanelDesign.h"

#include "binding/Marshal.h"
#include "window/Background.h"
#include "window/BenchWindow.h"
#include "window/ControlFactory.h"
#include "window/PanelDocument.h"

#include <QApplication>

#include <vector>

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

constexpr bool DefaultLockMenu = false;

template <class T>
T as(const Variant& value)
{
    return Marshal<T>::from(value);
}

/// What is neither 0 nor 1 is no value of a style.
std::int16_t styleOf(const Variant& value, std::int16_t otherwise)
{
    const auto style = as<std::int16_t>(value);
    return style == 0 || style == 1 ? style : otherwise;
}

} // namespace

/// One value that the bag keeps; rows stand in the order of writing.
struct PanelDesign::BagRow
{
    Name key;
    int place; ///< in the order of reading, from 1
    Variant fallback;
    Variant (*value)(const PanelDesign& design);
    void (*take)(PanelDesign& design, const Variant& value);
    bool isAlwaysWritten = false; ///< also where it is the default
};

const std::vector<PanelDesign::BagRow>& PanelDesign::bagRows()
{
    using D = PanelDesign;
    static const std::vector<BagRow> rows = {
        {Name("BackColor"), 1, Variant(values::ButtonFace.code),
         [](const D& design) { return Variant(design.m_panel.BackColor().code); },
         [](D& design, const Variant& value) { design.m_surface.setBackColor(as<Colour>(value)); }},
        {Name("ForeColor"), 2, Variant(values::ButtonText.code),
         [](const D& design) { return Variant(design.m_panel.ForeColor().code); },
         [](D& design, const Variant& value) { design.m_surface.setForeColor(as<Colour>(value)); }},
        {Name("Enabled"), 3, Variant(true), [](const D& design) { return Variant(design.m_panel.Enabled()); },
         [](D& design, const Variant& value) { design.m_panel.QWidget::setEnabled(as<bool>(value)); }},
        {Name("Font"), 4, Variant::nothing(), [](const D& design) { return Variant(design.m_panel.Font()); },
         [](D& design, const Variant& value) { design.m_surface.setSurfaceFont(as<Ref<FontObject>>(value)); }},
        {Name("BackStyle"), 5, Variant(std::int16_t(1)),
         [](const D& design) { return Variant(design.m_panel.BackStyle()); },
         [](D& design, const Variant& value) { design.m_surface.setBackStyle(styleOf(value, 1)); }},
        {Name("BorderStyle"), 6, Variant(std::int16_t(0)),
         [](const D& design) { return Variant(design.m_panel.BorderStyle()); },
         [](D& design, const Variant& value) { design.m_surface.setBorderStyle(styleOf(value, 0)); }},
        {Name("GridSize"), 7, Variant(DefaultGridSize), [](const D& design) { return Variant(design.m_gridSize); },
         [](D& design, const Variant& value) { design.m_gridSize = as<float>(value); }},
        {Name("SnapToGrid"), 8, Variant(true), [](const D& design) { return Variant(design.m_snapToGrid); },
         [](D& design, const Variant& value) { design.m_snapToGrid = as<bool>(value); }},
        {Name("LockPositions"), 9, Variant(true),
         [](const D& design) { return Variant(design.m_panel.LockPositions()); },
         [](D& design, const Variant& value) {
             design.m_panel.document().controls()->setLockPositions(as<bool>(value));
         }},
        {Name("Stretch"), 11, Variant(false), [](const D& design) { return Variant(design.stretch()); },
         [](D& design, const Variant& value) { design.m_background->setStretch(as<bool>(value)); }},
        // COMPAT: read last, an absent file puts a picture that came as an object away again. The templates have taken
        // the panel's looks on before.
        {Name("PictureFile"), 14, Variant(QString()), [](const D& design) { return Variant(design.pictureFile()); },
         [](D& design, const Variant& value) {
             design.m_panel.document().factory().restyleTemplates();
             design.m_background->setPictureFile(as<QString>(value));
         }},
        {Name("Picture"), 10, Variant::nothing(),
         [](const D& design) {
             return design.pictureFile().isEmpty() ? Variant::nothing() : Variant(design.m_surface.picture());
         },
         [](D& design, const Variant& value) {
             if (const auto picture = as<Ref<surface::Picture>>(value))
                 design.m_background->setPicture(picture);
         }},
        {Name("ShowSiteMap"), 12, Variant(true), [](const D& design) { return Variant(design.m_showSiteMap); },
         [](D& design, const Variant& value) { design.m_showSiteMap = as<bool>(value); }, true},
        {Name("LockMenu"), 13, Variant(DefaultLockMenu), [](const D& design) { return Variant(design.m_lockMenu); },
         [](D& design, const Variant& value) { design.m_lockMenu = as<bool>(value); }, true},
    };
    return rows;
}

/// What stands for an absent value. The ambient font is the panel's own where the two are equal, so that a bag has
/// nothing to keep.
Variant PanelDesign::fallbackOf(const BagRow& row) const
{
    if (row.key != Name("Font"))
        return row.fallback;
    const Ref<FontObject> ambient = ambientFont(m_panel);
    const Ref<FontObject> own = m_panel.Font();
    return Variant(own && surface::fontsEqual(*own, *ambient) ? own : ambient);
}

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
    for (std::size_t place = 1; place <= bagRows().size(); ++place) {
        for (const BagRow& row : bagRows()) {
            if (row.place == int(place))
                row.take(*this, bag.ReadProperty(row.key, fallbackOf(row)));
        }
    }
}

void PanelDesign::write(PropertyBag& bag) const
{
    for (const BagRow& row : bagRows()) {
        if (row.isAlwaysWritten)
            bag.WriteProperty(row.key, row.value(*this));
        else
            bag.WriteProperty(row.key, row.value(*this), fallbackOf(row));
    }
}

} // namespace zan::window
