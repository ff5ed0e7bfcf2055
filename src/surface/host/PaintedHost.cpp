#include "surface/host/PaintedHost.h"

#include "surface/host/Surface.h"

#include <QPainter>

namespace zan::surface {

PaintedHost::PaintedHost(Surface& surface, LiveControl& control)
    : QWidget(&surface)
    , m_surface(surface)
    , m_control(&control)
{
    setFocusPolicy(Qt::NoFocus);
}

void PaintedHost::paintEvent(QPaintEvent*)
{
    if (m_surface.hostedControl(*this) != m_control)
        return; // the control has gone, and this widget waits for its end
    QPainter painter(this);
    m_surface.paintControl(painter, *m_control, rect());
}

} // namespace zan::surface
