#include "window/PanelImage.h"

#include "values/Failure.h"
#include "window/BenchWindow.h"
#include "window/PanelDesign.h"
#include "window/PanelDocument.h"

#include <QPointer>

namespace zan::window {

PanelImage::PanelImage(BenchWindow& panel)
    : m_container(panel.document().container())
    , m_settings(m_container)
    , m_backColor(panel.BackColor())
    , m_foreColor(panel.ForeColor())
    , m_font(panel.Font())
    , m_fontValues(m_font ? surface::copyFont(*m_font) : nullptr)
    , m_stretch(panel.Stretch())
    , m_snapToGrid(panel.SnapToGrid())
    , m_gridSize(panel.GridSize())
    , m_pictureFile(panel.PictureFile())
{
    // One that cannot be read any more cannot be given back either.
    values::attempt([&] { m_ownPicture = panel.design().ownPicture(); });
}

bool PanelImage::hasSamePicture(const PanelImage& other) const
{
    return m_pictureFile == other.m_pictureFile && bool(m_ownPicture) == bool(other.m_ownPicture);
}

bool PanelImage::operator==(const PanelImage& other) const
{
    return m_settings == other.m_settings && m_backColor == other.m_backColor && m_foreColor == other.m_foreColor &&
           bool(m_font) == bool(other.m_font) &&
           (!m_font || surface::fontsEqual(*m_fontValues, *other.m_fontValues)) && m_stretch == other.m_stretch &&
           m_snapToGrid == other.m_snapToGrid && m_gridSize == other.m_gridSize && hasSamePicture(other);
}

/// No file of the panel's own is left behind.
void PanelImage::applyPicture(BenchWindow& panel, const PanelImage& from) const
{
    if (m_pictureFile.isEmpty() || m_ownPicture)
        return panel.setPicture(m_ownPicture);
    if (from.m_ownPicture)
        panel.setPicture({});
    panel.setPictureFile(m_pictureFile);
}

void PanelImage::apply(BenchWindow& panel, const PanelImage& from) const
{
    // Whoever hears of a property may load another window, or end the panel.
    const QPointer<BenchWindow> alive(&panel);
    const auto step = [&](bool isDue, auto&& change) {
        if (isDue && alive && panel.document().container() == m_container)
            values::attempt(change);
    };
    step(m_foreColor != from.m_foreColor, [&] { panel.setForeColor(m_foreColor); });
    step(m_backColor != from.m_backColor, [&] { panel.setBackColor(m_backColor); });
    step(m_font && from.m_font && !surface::fontsEqual(*m_fontValues, *from.m_fontValues),
         [&] { panel.setFont(m_font); });
    step(m_stretch != from.m_stretch, [&] { panel.setStretch(m_stretch); });
    step(!hasSamePicture(from), [&] { applyPicture(panel, from); });
    step(m_snapToGrid != from.m_snapToGrid, [&] { panel.setSnapToGrid(m_snapToGrid); });
    step(m_gridSize != from.m_gridSize, [&] { panel.setGridSize(m_gridSize); });
    step(true, [&] { from.m_settings.applyChange(m_container, m_settings); });
}

} // namespace zan::window
