#include "surface/host/PaintedHost.h"

#include "surface/host/Surface.h"

#include <QPaintEvent>
#include <QPainter>

namespace zan::surface {

PaintedHost::PaintedHost(Surface& surface, LiveControl& control)
    : QWidget(&surface)
    , m_surface(surface)
    , m_control(&control)
{
    setFocusPolicy(Qt::NoFocus);
}

void PaintedHost::paintEvent(QPaintEvent* event)
{
    if (m_surface.controlOfWidget(*this) != m_control)
        return; // the control has gone, and this widget waits for its end
    QPainter painter(this);
    painter.setClipRect(event->rect()); // the control may be far larger than what is seen of it
    m_surface.paintControl(painter, *m_control, rect());
}

} // namespace zan::surface
