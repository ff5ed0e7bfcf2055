#include "zanbench/hostitem/HostTime.h"

namespace zan::host {

void HostTime::Wait(std::int32_t milliseconds)
{
    run().wait(milliseconds);
}

const binding::MemberTable& HostTime::members() const
{
    return binding::table(
        [] { return binding::MemberTable("HostTime", nullptr, {binding::method<&HostTime::Wait>("Wait")}); });
}

} // namespace zan::host
