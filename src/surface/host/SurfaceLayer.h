#pragma once

#include "surface/Forward.h"

#include <QPoint>
#include <QRect>

class QMouseEvent;

namespace zan::surface {

/// What lies over all controls of a surface and looks at the mouse before they do: the layer of editing. The surface
/// tells it what happens to the controls below.
class SurfaceLayer
{
public:
    virtual ~SurfaceLayer() = default;

    /// A button goes down at this place (pixels of the surface). True when the layer has dealt with it.
    virtual bool pressed(QPoint place, const QMouseEvent& event) = 0;
    /// The pointer moves over the surface or one of its controls, with no press under way that the layer has taken.
    /// True when it is over something of the layer, and so over no control.
    virtual bool pointerMoved(QPoint place) = 0;
    /// The left button went up over a control, before its owner is told.
    virtual void released(LiveControl& control) = 0;
    /// A control has another place or size.
    virtual void controlMoved(LiveControl& control, const QRect& from) = 0;
    /// The stacking order has changed, or widgets have been raised.
    virtual void restacked() = 0;
    /// A control leaves the surface.
    virtual void controlGone(LiveControl& control) = 0;
    virtual void surfaceResized() = 0;
    /// The control that keys edit; null for none.
    virtual LiveControl* current() const = 0;
    /// What has changed is to be shown now.
    virtual void flush() = 0;
};

} // namespace zan::surface
