#pragma once

#include "zanbench/hostitem/HostFamily.h"

namespace zan::host {

/// What the logger has done to the panel's writes: TakeRefusedWrites.
class HostLogger : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// How many writes the logger has refused since the last call. The run fails for those that nobody has taken.
    std::int32_t TakeRefusedWrites();

    const binding::MemberTable& members() const override;
};

} // namespace zan::host
