#pragma once

#include "surface/Forward.h"

#include <QWidget>

namespace zan::surface {

/// The widget of a painted control that lies over other widgets.
class PaintedHost : public QWidget
{
public:
    /// The control must outlive the host, or the host be hidden and dropped with it.
    PaintedHost(Surface& surface, LiveControl& control);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Surface& m_surface;
    LiveControl* m_control;
};

} // namespace zan::surface
