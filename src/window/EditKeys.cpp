#include "window/EditKeys.h"

#include "surface/edit/EditLayer.h"
#include "surface/host/PointerLoop.h"
#include "surface/host/Surface.h"
#include "values/Twips.h"
#include "window/BenchWindow.h"
#include "window/ControlTypes.h"
#include "window/PanelEditor.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

namespace zan::window {

using binding::Variant;
using surface::EditLayer;
using surface::LiveControl;
using wrappers::BenchControls;
using wrappers::iBenchControl;

namespace {

enum Key : int {
    TabKey = 9,
    LeftKey = 37,
    UpKey = 38,
    RightKey = 39,
    DownKey = 40,
    DeleteKey = 46,
    CKey = 'C',
    VKey = 'V'
};
enum Shift : int { NoShift = 0, ShiftHeld = 1, CtrlHeld = 2 };

bool isArrow(int keyCode)
{
    return keyCode >= LeftKey && keyCode <= DownKey;
}

Ref<LiveControl> liveOf(const iBenchControl& control)
{
    return Ref<LiveControl>(dynamic_cast<LiveControl*>(control.Control().get()));
}

} // namespace

void EditKeys::setOn(bool on)
{
    m_isOn = on;
    refresh();
}

/// A panel whose menus are locked is there to be looked at.
bool EditKeys::isActive() const
{
    return m_isOn && m_panel.Controls() && !m_panel.LockPositions() && !m_panel.LockMenu() &&
           !surface::PointerLoop::isRunning();
}

Ref<iBenchControl> EditKeys::current() const
{
    const Ref<iBenchControl> control = m_editor.currentControl();
    const Ref<BenchControls> list = m_panel.Controls();
    return control && list && list->placeOfControl(*control) != 0 ? control : nullptr;
}

bool EditKeys::wants(int keyCode, int shift) const
{
    if (!isActive())
        return false;
    if (isArrow(keyCode))
        return (shift & ~(ShiftHeld | CtrlHeld)) == 0 && current();
    switch (keyCode) {
    case TabKey:
        return (shift & ~ShiftHeld) == 0 && m_panel.Controls()->Count() > 0;
    case DeleteKey:
        return shift == NoShift && current();
    case CKey:
        return shift == CtrlHeld && current();
    case VKey:
        return shift == CtrlHeld;
    default:
        return false;
    }
}

bool EditKeys::press(int keyCode, int shift)
{
    if (!wants(keyCode, shift))
        return false;
    const Ref<iBenchControl> control = current();
    if (isArrow(keyCode))
        change(*control, keyCode, shift);
    else if (keyCode == TabKey)
        walk(shift & ShiftHeld);
    else if (keyCode == DeleteKey)
        remove();
    else if (keyCode == CKey)
        m_editor.copy();
    else
        paste();
    return true;
}

void EditKeys::change(iBenchControl& control, int keyCode, int shift) const
{
    const Ref<LiveControl> live = liveOf(control);
    if (!live)
        return;
    const bool sizes = shift & CtrlHeld;
    const float grid = std::abs(m_panel.GridSize());
    const float step = shift & ShiftHeld || !(grid > 0) ? float(values::TwipsPerPixel) : grid;
    const float by = keyCode == LeftKey || keyCode == UpKey ? -step : step;
    wrappers::TwipsRectangle to{live->left(), live->top(), live->width(), live->height()};
    const bool isAcross = keyCode == LeftKey || keyCode == RightKey;
    float& measure = isAcross ? (sizes ? to.width : to.left) : (sizes ? to.height : to.top);
    measure = std::max(0.0F, measure + by);
    EditHistory::Command command(m_editor.history(), sizes ? QStringLiteral("Resize") : QStringLiteral("Move"));
    command.watch(Ref<iBenchControl>(&control));
    live->move(to.left, to.top, to.width, to.height);
    if (control.ControlType() != SiteMapType) // its place is stored with the window
        control.UpdateNode();
}

/// The next control that can be seen, round the end. The keyboard goes to the panel itself, so that nothing is typed
/// into the control that had it.
void EditKeys::walk(bool back) const
{
    const Ref<BenchControls> list = m_panel.Controls();
    const std::int32_t count = list->Count();
    const Ref<iBenchControl> from = current();
    std::int32_t place = from ? list->placeOfControl(*from) : back ? 1 : count;
    for (std::int32_t tried = 0; tried < count; ++tried) {
        place = back ? (place > 1 ? place - 1 : count) : (place < count ? place + 1 : 1);
        const Ref<iBenchControl> control = list->Control(Variant(place));
        if (const Ref<LiveControl> live = liveOf(*control); live && live->visible()) {
            m_editor.setCurrentControl(control);
            break;
        }
    }
    const QPointer<surface::Surface> surface(&m_surface);
    if (!surface->hasFocus())
        surface->setFocus(Qt::TabFocusReason);
}

/// What is pasted is the current control then: it can be moved at once.
void EditKeys::paste() const
{
    const Ref<BenchControls> list = m_panel.Controls();
    const QPointer<BenchWindow> alive(&m_panel);
    const std::int32_t before = list->Count();
    m_editor.paste();
    if (alive && m_panel.Controls() == list && list->Count() == before + 1)
        m_editor.setCurrentControl(list->Control(Variant(list->Count())));
}

void EditKeys::remove() const
{
    const QPointer<BenchWindow> alive(&m_panel);
    m_editor.remove();
    if (alive)
        m_editor.setCurrentControl(nullptr);
}

void EditKeys::refresh() const
{
    const Ref<iBenchControl> control = isActive() ? current() : nullptr;
    const Ref<LiveControl> live = control ? liveOf(*control) : nullptr;
    if (live)
        EditLayer::of(m_surface).setFramed(live.get());
    else if (EditLayer* layer = EditLayer::find(m_surface))
        layer->setFramed(nullptr);
}

} // namespace zan::window
