#pragma once

#include "zanbench/hostitem/HostFamily.h"

namespace zan::host {

/// What the panel looks like: Shot.
class HostPicture : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// Saves a picture of the panel, in the format that the file's extension names, relative to the script's folder.
    /// Raises 5 for a format that is not known, 75 when it cannot be written.
    void Shot(const QString& file);

    const binding::MemberTable& members() const override;
};

} // namespace zan::host
