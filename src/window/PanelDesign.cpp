#include "window/PanelDesign.h"

#include "document/Elements.h"
#include "values/Failure.h"
#include "window/Background.h"
#include "window/BenchWindow.h"
#include "window/PanelDocument.h"
#include "window/PanelEditor.h"
#include "window/SiteMapPlacement.h"

#include <QPointer>

namespace zan::window {

namespace element = document::element;
using binding::Variant;
using surface::FontObject;
using wrappers::BenchControls;
using wrappers::iBenchControl;

namespace {

void requireStyle(std::int16_t style)
{
    if (style != 0 && style != 1)
        values::raise(values::ErrorNumber::InvalidPropertyValue);
}

} // namespace

PanelDesign::PanelDesign(BenchWindow& panel, surface::Surface& surface)
    : m_panel(panel)
    , m_surface(surface)
    , m_background(
          std::make_unique<Background>(surface, [&panel]() -> surface::HostForms& { return panel.forms(); }))
{}

PanelDesign::~PanelDesign() = default;

void PanelDesign::changed(const char* name)
{
    Q_EMIT m_panel.PropertyChanged(QString::fromLatin1(name));
}

/// Calls for every control that follows the window.
template <class Apply>
void PanelDesign::forFollowers(Apply apply)
{
    const Ref<BenchControls> list = m_panel.Controls();
    for (std::int32_t place = 1; list && place <= list->Count(); ++place) {
        // A control that refuses keeps its own look.
        values::attempt([&] {
            const Ref<iBenchControl> control = list->Control(Variant(place));
            if (control->UseWindowSettings())
                apply(*control);
        });
    }
}

// Look ---------------------------------------------------------------------------------------------------------

void PanelDesign::setBackColor(Colour colour)
{
    m_surface.setBackColor(colour);
    m_panel.document().writeAttribute(element::BackColor, Variant(colour.code));
    forFollowers([colour](iBenchControl& control) { control.setBackColour(colour); });
    changed("BackColor");
}

void PanelDesign::setForeColor(Colour colour)
{
    m_surface.setForeColor(colour);
    m_panel.document().writeAttribute(element::ForeColor, Variant(colour.code));
    forFollowers([colour](iBenchControl& control) { control.setForeColour(colour); });
    changed("ForeColor");
}

void PanelDesign::setEnabled(bool enabled)
{
    m_panel.QWidget::setEnabled(enabled);
    changed("Enabled");
}

void PanelDesign::setFont(const Ref<FontObject>& font)
{
    const Ref<FontObject> shared = font;
    if (!shared)
        return; // the panel keeps the one it has
    m_surface.setSurfaceFont(shared);
    forFollowers([&shared](iBenchControl& control) { control.setFont(shared); });
    changed("Font");
}

void PanelDesign::setBackStyle(std::int16_t style)
{
    requireStyle(style);
    m_surface.setBackStyle(style);
    m_panel.document().writeAttribute(element::BackStyle, Variant(style));
    changed("BackStyle");
}

void PanelDesign::setBorderStyle(std::int16_t style)
{
    requireStyle(style);
    m_surface.setBorderStyle(style);
    m_panel.document().writeAttribute(element::BorderStyle, Variant(style));
    changed("BorderStyle");
}

// Grid, locks and site map -------------------------------------------------------------------------------------

void PanelDesign::setGridSize(float size)
{
    m_gridSize = size; // any value, zero and negative ones included
    m_panel.document().writeAttribute(element::GridSize, Variant(size));
    changed("GridSize");
}

void PanelDesign::setSnapToGrid(bool snap)
{
    m_snapToGrid = snap;
    m_panel.document().writeAttribute(element::SnapToGrid, Variant(snap));
    changed("SnapToGrid");
}

void PanelDesign::setLockPositions(bool lock)
{
    m_panel.document().controls()->setLockPositions(lock);
    m_panel.editor().lockChanged();
    changed("LockPositions");
}

void PanelDesign::setLockMenu(bool lock)
{
    m_lockMenu = lock;
    m_panel.editor().keys().refresh();
    changed("LockMenu");
}

void PanelDesign::setShowSiteMap(bool show)
{
    m_panel.document().siteMap().setVisible(show);
    m_showSiteMap = show;
    changed("ShowSiteMap");
}

// Background ---------------------------------------------------------------------------------------------------

bool PanelDesign::stretch() const
{
    return m_background->stretch();
}

void PanelDesign::setStretch(bool stretch)
{
    m_background->setStretch(stretch);
    m_panel.document().writeAttribute(element::Stretch, Variant(stretch));
    changed("Stretch");
}

QString PanelDesign::pictureFile() const
{
    return m_background->pictureFile();
}

void PanelDesign::setPictureFile(const QString& file)
{
    m_background->setPictureFile(file);
    m_panel.document().writeAttribute(element::PictureFile, Variant(file));
    changed("PictureFile");
}

Ref<surface::Picture> PanelDesign::picture() const
{
    return m_background->picture();
}

void PanelDesign::setPicture(const Ref<surface::Picture>& picture)
{
    m_background->setPicture(picture);
    changed("Picture");
}

Ref<surface::Picture> PanelDesign::ownPicture() const
{
    return m_background->isTemporary() ? m_background->picture() : nullptr;
}

void PanelDesign::refreshBackground()
{
    m_background->refresh();
}

} // namespace zan::window
