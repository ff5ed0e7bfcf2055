#include "zanbench/hostitem/ControlLookup.h"

#include "binding/Marshal.h"
#include "surface/host/Surface.h"
#include "values/Convert.h"

namespace zan::host {

using values::ErrorNumber;

namespace {

void check(const Ref<surface::LiveControl>& live, const window::BenchWindow& window)
{
    if (!live || !live->isLoaded())
        values::raise(ErrorNumber::ObjectNotSet);
    if (live->surface() != &window.surface())
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("This control is on another panel."));
}

} // namespace

Ref<wrappers::iBenchControl> wrapperOf(const window::BenchWindow& window, const Variant& control)
{
    const Ref<wrappers::BenchControls> list = window.Controls();
    if (!list)
        values::raise(ErrorNumber::ObjectNotSet);
    if (!control.isObject())
        return list->Control(control);
    if (auto* wrapper = dynamic_cast<wrappers::iBenchControl*>(control.object()))
        return Ref<wrappers::iBenchControl>(wrapper);
    const auto& live = binding::Marshal<Ref<surface::LiveControl>>::from(control);
    check(live, window);
    const Ref<wrappers::iBenchControl> wrapper = list->Control(Variant(values::toInteger(Variant(live->tag()))));
    if (wrapper->Control().get() != live.get()) // it was removed, and another one has its place
        values::raise(ErrorNumber::ObjectNotSet);
    return wrapper;
}

Ref<surface::LiveControl> liveOf(const window::BenchWindow& window, const Variant& control)
{
    const Ref<binding::Object> shown = wrapperOf(window, control)->Control();
    const Ref<surface::LiveControl> live(dynamic_cast<surface::LiveControl*>(shown.get()));
    check(live, window);
    return live;
}

} // namespace zan::host
