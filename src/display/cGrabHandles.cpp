#include "display/cGrabHandles.h"

#include "surface/edit/HandleTable.h"
#include "surface/edit/WindowMoves.h"
#include "surface/host/Handles.h"

namespace zan::display {

using surface::EditLayer;

namespace {

EditLayer* layerOver(std::int32_t parent)
{
    QWidget* place = surface::Handles::widget(parent);
    return place ? &EditLayer::of(*place) : nullptr;
}

} // namespace

cGrabHandles::cGrabHandles(std::int32_t parent, std::int32_t target, bool show, values::Colour colour, int size)
{
    InitializeGrabHandles(parent, target, show, colour, size);
}

void cGrabHandles::InitializeGrabHandles(std::int32_t parent, std::int32_t target, bool show, values::Colour colour,
                                         int size)
{
    if (m_parent != 0) {
        if (EditLayer* former = layerOver(m_parent))
            former->detach(*this);
    }
    m_show = show;
    m_size = size == -1 ? DefaultSize : size;
    m_colour = colour;
    m_parent = parent;
    m_target = 0;
    m_handled = target;
    EditLayer* layer = layerOver(parent);
    if (!layer)
        return;
    layer->attach(*this, target, m_size, m_colour);
    SubClassTarget(target);
}

void cGrabHandles::SubClassTarget(std::int32_t target)
{
    EditLayer* layer = layerOver(m_parent);
    if (!layer)
        return;
    // Whatever the handle names now: a control that was gone may be there again.
    layer->detach(*this);
    m_target = 0;
    m_handled = target;
    layer->attach(*this, target, m_size, m_colour);
    layer->setShown(*this, m_show);
    if (layer->own(*this))
        m_target = target;
}

void cGrabHandles::setShowHandles(bool show)
{
    if (m_show == show)
        return;
    m_show = show;
    if (EditLayer* layer = layerOver(m_parent))
        layer->setShown(*this, show);
}

std::array<QRect, cGrabHandles::HandleCount> cGrabHandles::rectangles(const QRect& target) const
{
    return surface::handleRectangles(target, m_size);
}

void cGrabHandles::handlePressed(std::size_t index)
{
    const std::weak_ptr<char> alive = m_life;
    const surface::PointerEnd end = surface::resizeWindow(m_handled, surface::handleTable[index].edges);
    // Esc has put the target back: there was no resize.
    if (end != surface::PointerEnd::Cancelled && !alive.expired() && m_show && EndResize)
        EndResize();
}

void cGrabHandles::targetMoved(bool sized)
{
    if (sized && TargetReSized)
        TargetReSized();
}

void cGrabHandles::targetReleased()
{
    if (EndResize)
        EndResize();
}

} // namespace zan::display
