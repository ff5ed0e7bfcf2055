#include "surface/host/EventRouter.h"

#include "surface/host/KeyCodes.h"
#include "surface/host/PointerLoop.h"
#include "surface/host/ScreenPlace.h"
#include "surface/host/Surface.h"
#include "surface/host/SurfaceLayer.h"
#include "surface/host/WidgetStack.h"
#include "surface/text/ToolTipText.h"
#include "values/Twips.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>

#include <algorithm>
#include <optional>

namespace zan::surface {

namespace {

MouseInput inputOf(const QMouseEvent& event, QPointF place)
{
    MouseInput input;
    if (event.type() == QEvent::MouseMove) {
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            input.button |= event.buttons() & button ? classicButton(button) : 0;
    } else {
        input.button = classicButton(event.button());
    }
    input.shift = classicShift(event.modifiers());
    input.x = values::pixelsToTwips(place.x());
    input.y = values::pixelsToTwips(place.y());
    return input;
}

/// Place of a point of the surface inside a control, or on the surface itself.
QPointF placeIn(const LiveControl* control, QPointF onSurface)
{
    return control ? onSurface - control->bounds().topLeft() : onSurface;
}

/// The way back.
QPoint onSurface(const LiveControl* control, QPointF place)
{
    return (control ? place + control->bounds().topLeft() : place).toPoint();
}

} // namespace

bool EventRouter::surfaceEvent(QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return surfaceMouse(static_cast<QMouseEvent&>(event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        // What a control's widget left over comes by here again; it was told already.
        return m_surface.hasFocus() && key({}, static_cast<QKeyEvent&>(event));
    case QEvent::ShortcutOverride:
        return m_surface.hasFocus() && overridesShortcut(static_cast<QKeyEvent&>(event));
    case QEvent::ToolTip:
        return toolTip(static_cast<QHelpEvent&>(event));
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        return focus({}, event.type() == QEvent::FocusIn);
    default:
        return false;
    }
}

/// While a button is down all events belong to the control where it went down.
bool EventRouter::surfaceMouse(QMouseEvent& event)
{
    const QPointF place = event.position();
    const bool begins = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    Ref<LiveControl> control = m_pressActive && !begins ? m_pressed : m_surface.controlAt(place.toPoint());
    event.accept();
    // What a control's widget has left over, as a button leaves the right button, comes by here again: it was told.
    if (control && control->hosting() == LiveControl::Hosting::Widget)
        return true;
    if (begins) {
        press(control, placeIn(control.get(), place), event);
    } else if (event.type() == QEvent::MouseMove) {
        move(control, placeIn(control.get(), place), event);
    } else if (m_pressActive) {
        release(control, placeIn(control.get(), place), event, true);
    }
    return true;
}

bool EventRouter::press(Ref<LiveControl> control, QPointF place, QMouseEvent& event)
{
    const MouseInput input = inputOf(event, place);
    std::optional<PointerPress> held;
    if (input.button == 1)
        held.emplace(toScreen(m_surface, place + (control ? control->bounds().topLeft() : QPoint())).toPoint());
    if (m_surface.m_layer) {
        const QPointer<Surface> alive(&m_surface);
        m_pressActive = false;
        const bool taken = m_surface.m_layer->pressed(onSurface(control.get(), place), event);
        if (!alive)
            return true;
        m_pressTaken = taken;
        if (taken)
            return true;
    }
    m_pressed = control;
    m_pressActive = true;
    m_pressTaken = false;
    const bool twice =
        event.type() == QEvent::MouseButtonDblClick && (!control || control->habits().knowsDoubleClick);
    bool taken = false;
    const bool alive = m_surface.tell([&](SurfaceEvents& events) {
        if (twice && input.button == 1)
            events.doubleClicked(control.get());
        else
            taken = events.mouseDown(control.get(), input);
    });
    if (!alive)
        return true;
    m_pressTaken = taken;
    if (taken)
        m_pressActive = false;
    return taken || (control && !control->isLoaded());
}

void EventRouter::move(Ref<LiveControl> control, QPointF place, QMouseEvent& event)
{
    const MouseInput input = inputOf(event, place);
    if (m_surface.m_layer && !m_pressActive && m_surface.m_layer->pointerMoved(onSurface(control.get(), place)))
        return;
    m_surface.tell([&](SurfaceEvents& events) { events.mouseMove(control.get(), input); });
}

/// Step 1: mouse up. Step 2: the click, of a left button that went up where it went down; widgets that know clicks
/// of their own report them themselves.
bool EventRouter::release(Ref<LiveControl> control, QPointF place, QMouseEvent& event, bool clicks)
{
    const MouseInput input = inputOf(event, place);
    const QSize size = control ? control->bounds().size() : m_surface.size();
    const bool inside = QRectF(QPointF(0, 0), QSizeF(size)).contains(place);
    m_pressActive = false;
    m_pressed = {};
    if (m_surface.m_layer && control && input.button == 1) {
        const QPointer<Surface> alive(&m_surface);
        m_surface.m_layer->released(*control);
        if (!alive)
            return true;
    }
    if (!m_surface.tell([&](SurfaceEvents& events) { events.mouseUp(control.get(), input); }))
        return true;
    if (control && !control->isLoaded())
        return true;
    if (!clicks || !inside || input.button != 1)
        return false;
    return !m_surface.tell([&](SurfaceEvents& events) { events.clicked(control.get()); }) ||
           (control && !control->isLoaded());
}

bool EventRouter::widgetEvent(LiveControl& control, QObject& watched, QEvent& event)
{
    const Ref<LiveControl> alive(&control);
    auto& widget = static_cast<QWidget&>(watched);
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return widget.isEnabled() && widgetMouse(control, widget, static_cast<QMouseEvent&>(event));
    case QEvent::ContextMenu:
        return m_pressTaken; // the owner has shown a menu of its own
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        return focus(alive, event.type() == QEvent::FocusIn);
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return key(alive, static_cast<QKeyEvent&>(event));
    case QEvent::ShortcutOverride:
        return overridesShortcut(static_cast<QKeyEvent&>(event));
    default:
        return false;
    }
}

bool EventRouter::overridesShortcut(QKeyEvent& event)
{
    const bool onKeypad = event.modifiers() & Qt::KeypadModifier;
    const int code = classicKeyCode(Qt::Key(event.key()), onKeypad);
    bool wanted = false;
    if (!m_surface.tell(
            [&](SurfaceEvents& events) { wanted = events.wantsKey(code, classicShift(event.modifiers())); }))
        return true;
    if (wanted)
        event.accept();
    return wanted;
}

bool EventRouter::widgetMouse(LiveControl& control, QWidget& widget, QMouseEvent& event)
{
    const Ref<LiveControl> alive(&control);
    const QPointF place = placeIn(&control, widget.mapTo(&m_surface, event.position()));
    const bool painted = control.hosting() != LiveControl::Hosting::Widget;
    if (!painted && control.keepsMouse(place))
        return false;
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return press(alive, place, event) || painted;
    case QEvent::MouseMove:
        move(alive, place, event);
        return painted || !alive->isLoaded();
    default:
        break;
    }
    if (!m_pressActive) // its press was taken by the owner: the widget never saw it
        return true;
    const bool clicksItself = control.habits().clicksItself;
    return release(alive, place, event, !clicksItself) || painted;
}

/// Step 1: key down or up, which the owner may take. Step 2: the character. Step 3: Enter, Esc and the arrows among options. A true result
/// keeps the key from the widget.
bool EventRouter::key(Ref<LiveControl> control, QKeyEvent& event)
{
    const bool onKeypad = event.modifiers() & Qt::KeypadModifier;
    const int code = classicKeyCode(Qt::Key(event.key()), onKeypad);
    const int shift = classicShift(event.modifiers());
    const auto gone = [&] { return control && !control->isLoaded(); };
    if (event.type() == QEvent::KeyRelease) {
        const bool alive = m_surface.tell([&](SurfaceEvents& events) { events.keyUp(control.get(), code, shift); });
        return !alive || gone();
    }
    bool taken = false;
    if (!m_surface.tell([&](SurfaceEvents& events) { taken = events.keyDown(control.get(), code, shift); }) ||
        taken || gone())
        return true;
    for (const QChar character : event.text()) {
        const int ascii = character.unicode();
        if (!m_surface.tell([&](SurfaceEvents& events) { events.keyPress(control.get(), ascii); }) || gone())
            return true;
    }
    return dialogKey(control.get(), event);
}

bool EventRouter::dialogKey(LiveControl* control, const QKeyEvent& event)
{
    const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const bool escape = event.key() == Qt::Key_Escape;
    if (control && control->habits().isChoice) {
        if (event.key() == Qt::Key_Down || event.key() == Qt::Key_Right)
            return moveToChoice(*control, 1);
        if (event.key() == Qt::Key_Up || event.key() == Qt::Key_Left)
            return moveToChoice(*control, -1);
    }
    if (!enter && !escape)
        return false;
    const DialogKey key = enter ? DialogKey::Enter : DialogKey::Escape;
    if (control) {
        const Ref<LiveControl> alive(control);
        if (alive->answerKey(key, true))
            return true;
        if (alive->keepsKey(key))
            return false;
    }
    for (const Ref<LiveControl>& other : m_surface.controls()) {
        if (other->visible() && other->enabled() && other->answerKey(key, false))
            return true;
    }
    return false;
}

/// Chooses the next of a group in the order of the Tab key, round the end.
bool EventRouter::moveToChoice(LiveControl& choice, int step)
{
    std::vector<Ref<LiveControl>> group;
    for (const Ref<LiveControl>& other : m_surface.controls()) {
        if (other->habits().isChoice && other->visible() && other->enabled())
            group.push_back(other);
    }
    std::stable_sort(group.begin(), group.end(),
                     [](const auto& a, const auto& b) { return a->tabPlace() < b->tabPlace(); });
    const auto here =
        std::find_if(group.begin(), group.end(), [&](const auto& member) { return member.get() == &choice; });
    if (here == group.end())
        return false;
    const auto count = std::ptrdiff_t(group.size());
    const Ref<LiveControl> next = group[std::size_t((here - group.begin() + step + count) % count)];
    next->takeKeyboard(Qt::TabFocusReason);
    if (next->isLoaded())
        next->choose();
    return true;
}

bool EventRouter::toolTip(const QHelpEvent& event)
{
    const Ref<LiveControl> control = m_surface.controlAt(event.pos());
    if (!control || control->toolTipText().isEmpty())
        return false;
    QToolTip::showText(event.globalPos(), plainToolTip(control->toolTipText()), &m_surface, control->bounds());
    return true;
}

/// The focus can move while the surface is in the middle of changing its widgets; the owner is told afterwards.
bool EventRouter::focus(Ref<LiveControl> control, bool got)
{
    const auto tell = [surface = &m_surface, control, got] {
        if (control && !control->isLoaded())
            return true;
        const bool alive = surface->tell(
            [&](SurfaceEvents& events) { got ? events.gotFocus(control.get()) : events.lostFocus(control.get()); });
        return !alive || (control && !control->isLoaded());
    };
    if (m_surface.m_busy == 0)
        return tell();
    QMetaObject::invokeMethod(
        &m_surface, [tell] { tell(); }, Qt::QueuedConnection);
    return false;
}

void EventRouter::forget(const LiveControl& control)
{
    if (m_pressed.get() != &control)
        return;
    m_pressed = {};
    m_pressActive = false;
}

} // namespace zan::surface
