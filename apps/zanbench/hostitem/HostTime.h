#pragma once

#include "zanbench/hostitem/HostFamily.h"

namespace zan::host {

/// How time passes: Wait.
class HostTime : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// Lets the panel live for so many milliseconds.
    void Wait(std::int32_t milliseconds);

    const binding::MemberTable& members() const override;
};

} // namespace zan::host
