#include "zanbench/hostitem/HostLogger.h"

namespace zan::host {

std::int32_t HostLogger::TakeRefusedWrites()
{
    return run().takeRefusedWrites();
}

const binding::MemberTable& HostLogger::members() const
{
    static const binding::MemberTable table("HostLogger", nullptr,
                                            {binding::method<&HostLogger::TakeRefusedWrites>("TakeRefusedWrites")});
    return table;
}

} // namespace zan::host
