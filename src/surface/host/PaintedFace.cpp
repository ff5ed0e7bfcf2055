#include "surface/host/PaintedFace.h"

#include "surface/host/ScreenPlace.h"
#include "surface/host/Surface.h"
#include "surface/host/SurfaceLayer.h"

#include <QHash>
#include <QWindow>

namespace zan::surface {

namespace {

using Faces = QHash<const LiveControl*, QAccessible::Id>;

Faces& faces()
{
    static auto* table = new Faces;
    return *table;
}

} // namespace

LiveControl* currentOf(const Surface& surface)
{
    return surface.layer() ? surface.layer()->current() : nullptr;
}

PaintedFace* PaintedFace::of(LiveControl& control)
{
    QAccessible::Id& id = faces()[&control];
    if (id == 0)
        id = QAccessible::registerAccessibleInterface(new PaintedFace(control));
    return static_cast<PaintedFace*>(QAccessible::accessibleInterface(id));
}

void PaintedFace::forget(const LiveControl& control) noexcept
{
    if (faces().isEmpty())
        return;
    if (const QAccessible::Id id = faces().take(&control))
        QAccessible::deleteAccessibleInterface(id);
}

QWindow* PaintedFace::window() const
{
    return isValid() ? m_control->surface()->window()->windowHandle() : nullptr;
}

QAccessibleInterface* PaintedFace::parent() const
{
    return isValid() ? QAccessible::queryAccessibleInterface(m_control->surface()) : nullptr;
}

QString PaintedFace::text(QAccessible::Text kind) const
{
    if (!isValid())
        return {};
    const Spoken spoken = spokenOf(*Ref<LiveControl>(m_control)); // this face may be gone now
    switch (kind) {
    case QAccessible::Name:
        return spoken.name;
    case QAccessible::Value:
        return spoken.value;
    case QAccessible::Description:
        return spoken.description;
    default:
        return {};
    }
}

QRect PaintedFace::rect() const
{
    if (!isValid())
        return {};
    const Surface& surface = *m_control->surface();
    const QRect seen = m_control->bounds() & surface.rect();
    return partOnScreen(surface, seen.isEmpty() ? m_control->bounds() : seen);
}

QAccessible::State PaintedFace::state() const
{
    QAccessible::State state;
    state.invalid = !isValid();
    state.readOnly = true;
    if (state.invalid) {
        state.invisible = true;
        return state;
    }
    const Surface& surface = *m_control->surface();
    state.invisible = !m_control->visible() || !surface.isVisible();
    state.offscreen = !m_control->bounds().intersects(surface.rect());
    state.disabled = !m_control->enabled() || !surface.isEnabled();
    if (currentOf(surface) == m_control.get()) {
        state.focusable = state.selectable = state.selected = true;
        state.focused = surface.hasFocus();
    }
    return state;
}

void* PaintedFace::interface_cast(QAccessible::InterfaceType type)
{
    if (!isValid())
        return nullptr;
    if (type == QAccessible::ValueInterface && m_control->accessibleRange())
        return static_cast<QAccessibleValueInterface*>(this);
    // There for every control: whether it acts may change at any time.
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList PaintedFace::actionNames() const
{
    if (!isValid() || !m_control->visible() || !m_control->enabled())
        return {};
    return spokenOf(*Ref<LiveControl>(m_control)).acts ? QStringList{pressAction()} : QStringList();
}

void PaintedFace::doAction(const QString& name)
{
    const Ref<LiveControl> control = m_control;
    if (name != pressAction() || actionNames().isEmpty() || !control->isLoaded())
        return;
    control->surface()->tell([&](SurfaceEvents& events) { events.clicked(control.get()); });
}

QVariant PaintedFace::number(double AccessibleRange::*field) const
{
    const std::optional<AccessibleRange> range = isValid() ? m_control->accessibleRange() : std::nullopt;
    return range ? QVariant((*range).*field) : QVariant();
}

QVariant PaintedFace::currentValue() const
{
    return number(&AccessibleRange::value);
}

QVariant PaintedFace::maximumValue() const
{
    return number(&AccessibleRange::maximum);
}

QVariant PaintedFace::minimumValue() const
{
    return number(&AccessibleRange::minimum);
}

} // namespace zan::surface
