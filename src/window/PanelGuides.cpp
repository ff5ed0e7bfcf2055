#include "window/PanelGuides.h"

#include "surface/edit/EditLayer.h"
#include "surface/host/Surface.h"

namespace zan::window {

using surface::Alignment;
using surface::EditLayer;
using surface::LiveControl;

void PanelGuides::begin()
{
    m_alignment.reset();
    m_held = {};
    // The layer asks during its own loops; it goes with the surface, and this with the panel around both.
    EditLayer::of(m_surface).setAdjust(
        [this](LiveControl& control, const QRect& proposed, std::uint8_t edges, Qt::KeyboardModifiers modifiers) {
            return adjusted(control, proposed, edges, modifiers & Qt::AltModifier);
        });
}

QRect PanelGuides::adjusted(const LiveControl& control, const QRect& proposed, std::uint8_t edges, bool isAltHeld)
{
    EditLayer& layer = EditLayer::of(m_surface);
    m_held = {};
    if (!m_isOn && !isAltHeld) {
        layer.setGuides({});
        return proposed;
    }
    if (!m_alignment) {
        std::vector<QRect> others;
        for (const values::Ref<LiveControl>& other : m_surface.controls()) {
            if (other.get() != &control && other->visible() && !other->bounds().isEmpty())
                others.push_back(other->bounds());
        }
        m_alignment.emplace(std::move(others));
    }
    const Alignment::Result result =
        edges == 0 ? m_alignment->moved(proposed) : m_alignment->sized(proposed, edges);
    m_held = {result.isAlignedX, result.isAlignedY};
    layer.setGuides(result.guides);
    return result.place;
}

PanelGuides::Held PanelGuides::end()
{
    if (EditLayer* layer = EditLayer::find(m_surface))
        layer->setGuides({});
    m_alignment.reset();
    return std::exchange(m_held, {});
}

} // namespace zan::window
