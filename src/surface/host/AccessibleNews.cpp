#include "surface/host/AccessibleNews.h"

#include "surface/host/PaintedFace.h"
#include "surface/host/Spoken.h"
#include "surface/host/Surface.h"
#include "surface/host/WidgetControl.h"

#include <QAccessible>
#include <QHash>
#include <QPointer>

#include <utility>
#include <vector>

namespace zan::surface::AccessibleNews {

namespace {

/// More controls than this that come or go in one pass are another picture, and not news of each.
constexpr std::size_t MostSingleNews = 64;

/// What was told of a control.
struct Told
{
    LiveControl* control;
    std::uint32_t revision;
    std::uint32_t pass; // the last one that saw it
    bool isDescribed;   // name and value are those that were told
    bool isEnabled;
    QString name;
    QString value;
};

/// What was told of a surface. Only what is loaded stands here, so that bare pointers will do.
struct Record
{
    QHash<const LiveControl*, Told> controls;
    const LiveControl* current = nullptr;
    std::uint32_t pass = 0;
    bool hasLost = false; // a control that was told of has been unloaded
};

using Records = QHash<const Surface*, Record>;

Records& records()
{
    static auto* table = new Records;
    return *table;
}

/// What there is to be looked at and told in one pass; shared handles, because every step may call outsiders.
struct Pass
{
    std::vector<Ref<LiveControl>> changed; // may say something else, new ones included
    std::vector<Ref<LiveControl>> shown;
    std::vector<Ref<LiveControl>> hidden;
    Ref<LiveControl> current; // when another one is
    bool otherChildren = false;
};

bool isPainted(const LiveControl& control)
{
    return control.hosting() != LiveControl::Hosting::Widget;
}

template <class Call>
void forVisible(const Surface& surface, Call call)
{
    for (const Ref<ControlArray>& array : surface.arrays()) {
        for (int index = 0; index <= array->uBound(); ++index) {
            if (LiveControl* control = array->find(index); control && control->visible())
                call(*control);
        }
    }
}

/// What has changed; counts and pointers only, nobody is asked anything.
Pass lookAt(const Surface& surface)
{
    Pass found;
    const bool isFirst = !records().contains(&surface);
    Record& record = records()[&surface];
    ++record.pass;
    forVisible(surface, [&](LiveControl& control) {
        auto told = record.controls.find(&control);
        const bool isNew = told == record.controls.end();
        if (isNew)
            told = record.controls.insert(&control, {&control, 0, 0, false, control.enabled(), {}, {}});
        told->pass = record.pass;
        if (isNew || told->revision != control.revision())
            found.changed.emplace_back(&control);
        told->revision = control.revision();
        if (isNew && !isFirst)
            found.shown.emplace_back(&control);
    });
    record.controls.removeIf([&](const auto& entry) {
        if (entry.value().pass == record.pass)
            return false;
        found.hidden.emplace_back(entry.value().control);
        return true;
    });
    const bool hasLost = std::exchange(record.hasLost, false);
    found.otherChildren = hasLost || !found.shown.empty() || !found.hidden.empty();
    LiveControl* const current = currentOf(surface);
    if (std::exchange(record.current, current) != current)
        found.current = Ref<LiveControl>(current);
    return found;
}

void send(LiveControl& control, QAccessible::Event kind)
{
    QAccessibleEvent event(PaintedFace::of(control), kind);
    QAccessible::updateAccessibility(&event);
}

void sendValue(LiveControl& control, const QString& value)
{
    const std::optional<AccessibleRange> range = control.accessibleRange();
    QAccessibleValueChangeEvent event(PaintedFace::of(control), range ? QVariant(range->value) : QVariant(value));
    QAccessible::updateAccessibility(&event);
}

void sendDisabled(LiveControl& control)
{
    QAccessible::State changed;
    changed.disabled = true;
    QAccessibleStateChangeEvent event(PaintedFace::of(control), changed);
    QAccessible::updateAccessibility(&event);
}

/// The name of an input control goes to its widget, which tells of it.
void nameWidget(const WidgetControl& control, const QString& name)
{
    QWidget* const widget = control.widget();
    const QString wanted = isNamedByOwner(control) ? name : QString();
    if (widget && control.accessibleRole() != AccessibleRole::Chart && widget->accessibleName() != wanted)
        widget->setAccessibleName(wanted);
}

/// Whether the control is still where it was when the pass began.
bool isOn(const LiveControl& control, const QPointer<Surface>& surface)
{
    return surface && control.isLoaded() && control.surface() == surface;
}

void tellControl(const QPointer<Surface>& surface, LiveControl& control)
{
    const Spoken now = spokenOf(control);
    if (!isOn(control, surface))
        return;
    const auto record = records().find(surface);
    const auto told =
        record == records().end() ? QHash<const LiveControl*, Told>::iterator() : record->controls.find(&control);
    if (record == records().end() || told == record->controls.end())
        return; // told of by somebody who came in between
    const Told before =
        std::exchange(*told, {&control, told->revision, told->pass, true, control.enabled(), now.name, now.value});
    if (!isPainted(control)) {
        nameWidget(static_cast<WidgetControl&>(control), now.name);
        return;
    }
    if (!before.isDescribed || !surface->isVisible())
        return;
    if (before.name != now.name)
        send(control, QAccessible::NameChanged);
    if (isOn(control, surface) && before.value != now.value && !now.name.endsWith(now.value))
        sendValue(control, now.value);
    if (isOn(control, surface) && before.isEnabled != control.enabled())
        sendDisabled(control);
}

void tellCurrent(const QPointer<Surface>& surface, LiveControl& control)
{
    QAccessibleInterface* face = nullptr;
    if (isPainted(control))
        face = PaintedFace::of(control);
    else if (QWidget* widget = static_cast<WidgetControl&>(control).widget())
        face = QAccessible::queryAccessibleInterface(widget);
    if (!face)
        return;
    QAccessibleEvent event(face, surface->hasFocus() ? QAccessible::Focus : QAccessible::Selection);
    QAccessible::updateAccessibility(&event);
}

void tellEach(const QPointer<Surface>& surface, const std::vector<Ref<LiveControl>>& controls,
              QAccessible::Event kind)
{
    if (controls.size() > MostSingleNews)
        return;
    for (const Ref<LiveControl>& control : controls) {
        if (isOn(*control, surface) && surface->isVisible() && isPainted(*control))
            send(*control, kind);
    }
}

} // namespace

void tell(Surface& surface)
{
    const QPointer<Surface> alive(&surface);
    const Pass found = lookAt(surface);
    for (const Ref<LiveControl>& control : found.changed) {
        if (isOn(*control, alive))
            tellControl(alive, *control);
    }
    if (found.otherChildren && alive && alive->isVisible()) {
        QAccessibleEvent event(&surface, QAccessible::ObjectReorder);
        QAccessible::updateAccessibility(&event);
    }
    tellEach(alive, found.hidden, QAccessible::ObjectHide);
    tellEach(alive, found.shown, QAccessible::ObjectShow);
    if (found.current && isOn(*found.current, alive) && found.current->visible())
        tellCurrent(alive, *found.current);
}

void forget(const LiveControl& control) noexcept
{
    if (records().isEmpty())
        return;
    const auto record = records().find(control.surface());
    if (record != records().end() && record->controls.remove(&control) > 0)
        record->hasLost = true;
}

void forget(const Surface& surface) noexcept
{
    records().remove(&surface);
}

void forgetAll() noexcept
{
    records().clear();
}

} // namespace zan::surface::AccessibleNews
