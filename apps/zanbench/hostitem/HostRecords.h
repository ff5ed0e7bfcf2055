#pragma once

#include "zanbench/hostitem/HostFamily.h"

namespace zan::host {

/// Host.Graph and Host.Table: what the controls of stored records show.
class HostRecords : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// Both raise as every lookup of a control does, and 13 for a control of another type.
    Ref<binding::Object> Graph(const Variant& control);
    Ref<binding::Object> Table(const Variant& control);
    const binding::MemberTable& members() const override;
};

} // namespace zan::host
