#include "zanbench/hostitem/HostTime.h"

namespace zan::host {

void HostTime::Wait(std::int32_t milliseconds)
{
    run().wait(milliseconds);
}

const binding::MemberTable& HostTime::members() const
{
    static const binding::MemberTable table("HostTime", nullptr, {binding::method<&HostTime::Wait>("Wait")});
    return table;
}

} // namespace zan::host
