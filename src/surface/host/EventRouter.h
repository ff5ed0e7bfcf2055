#pragma once

#include "surface/host/LiveControl.h"
#include "surface/host/SurfaceEvents.h"

#include <QPoint>
#include <QPointF>

class QEvent;
class QHelpEvent;
class QKeyEvent;
class QMouseEvent;
class QObject;
class QWidget;

namespace zan::surface {

using values::Ref;

/// Turns the toolkit's events on the surface, on its painted controls and on its widgets into those of
/// SurfaceEvents. After each of them the control, its widget or the whole surface may be gone, so nothing is
/// touched afterwards that was not checked.
class EventRouter
{
public:
    explicit EventRouter(Surface& surface)
        : m_surface(surface)
    {}

    /// An event of the surface's own. True when it is dealt with.
    bool surfaceEvent(QEvent& event);
    /// An event of a control's widget, before the widget gets it. True when the widget must not get it.
    bool widgetEvent(LiveControl& control, QObject& watched, QEvent& event);
    /// A control goes: a press that began on it leads to nothing.
    void forget(const LiveControl& control);

private:
    bool surfaceMouse(QMouseEvent& event);
    bool widgetMouse(LiveControl& control, QWidget& widget, QMouseEvent& event);
    bool press(Ref<LiveControl> control, QPointF place, QMouseEvent& event);
    void move(Ref<LiveControl> control, QPointF place, QMouseEvent& event);
    bool release(Ref<LiveControl> control, QPointF place, QMouseEvent& event, bool clicks);
    bool focus(Ref<LiveControl> control, bool got);
    bool key(Ref<LiveControl> control, QKeyEvent& event);
    bool overridesShortcut(QKeyEvent& event);
    bool dialogKey(LiveControl* control, const QKeyEvent& event);
    bool moveToChoice(LiveControl& choice, int step);
    bool toolTip(const QHelpEvent& event);

    Surface& m_surface;
    Ref<LiveControl> m_pressed; // where the button went down; empty for the surface
    bool m_pressActive = false; // a press was passed on and not yet followed by its release
    bool m_pressTaken = false;  // the owner took the last press for itself
};

} // namespace zan::surface
