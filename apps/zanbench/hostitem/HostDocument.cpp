#include "zanbench/hostitem/HostDocument.h"

#include "zanbench/hostitem/ControlLookup.h"

namespace zan::host {

QString HostDocument::Node(const Variant& control)
{
    const Ref<wrappers::iBenchControl> wrapper = wrapperOf(panel(), control);
    wrapper->UpdateNode();
    return wrapper->XMLNode().xml();
}

const binding::MemberTable& HostDocument::members() const
{
    return binding::table([] {
        return binding::MemberTable("HostDocument", nullptr, {binding::method<&HostDocument::Node>("Node")});
    });
}

} // namespace zan::host
