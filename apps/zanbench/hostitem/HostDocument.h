#pragma once

#include "zanbench/hostitem/HostFamily.h"

namespace zan::host {

/// The window document: Node.
class HostDocument : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// The document text of a control, brought up to date.
    QString Node(const Variant& control);

    const binding::MemberTable& members() const override;
};

} // namespace zan::host
