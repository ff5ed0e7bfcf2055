#include "zanbench/hostitem/HostRecords.h"

#include "zanbench/hostitem/ControlLookup.h"
#include "zanbench/hostitem/ShownRecords.h"

#include "window/BenchWindow.h"

namespace zan::host {

namespace {

template <class Control>
Ref<Control> controlOf(window::BenchWindow& panel, const Variant& control)
{
    const Ref<surface::LiveControl> live = liveOf(panel, control);
    auto* wanted = dynamic_cast<Control*>(live.get());
    if (!wanted)
        values::raise(values::ErrorNumber::TypeMismatch);
    return Ref<Control>(wanted);
}

} // namespace

Ref<binding::Object> HostRecords::Graph(const Variant& control)
{
    const auto graph = controlOf<zandata::ZanGraph>(panel(), control);
    panel().flush();
    graph->complete();
    return values::make<ShownGraph>(graph);
}

Ref<binding::Object> HostRecords::Table(const Variant& control)
{
    return values::make<ShownTable>(controlOf<zandata::ENTViewer>(panel(), control));
}

const binding::MemberTable& HostRecords::members() const
{
    return binding::table([] {
        return binding::MemberTable("HostRecords", nullptr,
                                    {
                                        binding::readOnly<&HostRecords::Graph>("Graph"),
                                        binding::readOnly<&HostRecords::Table>("Table"),
                                    });
    });
}

} // namespace zan::host
