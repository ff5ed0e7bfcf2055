#include "zanbench/hostitem/HostLogger.h"

namespace zan::host {

std::int32_t HostLogger::TakeRefusedWrites()
{
    return run().takeRefusedWrites();
}

const binding::MemberTable& HostLogger::members() const
{
    return binding::table([] {
        return binding::MemberTable("HostLogger", nullptr,
                                    {binding::method<&HostLogger::TakeRefusedWrites>("TakeRefusedWrites")});
    });
}

} // namespace zan::host
