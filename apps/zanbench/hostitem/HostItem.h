#pragma once

#include "zanbench/hostitem/HostFamily.h"

#include <vector>

namespace zan::host {

/// The script item "Host" (and "WScript"): what a script file may do outside its panel. It has no members of its
/// own; each access goes to the family that has the name.
class HostItem : public binding::Object
{
public:
    explicit HostItem(HostRun& run);
    /// The run ends: every member raises 91 from now on, wherever a script has left the item.
    void detach() noexcept;

    const std::vector<Ref<HostFamily>>& families() const noexcept { return m_families; }

    Variant invoke(binding::Name name, binding::Access access, binding::Arguments arguments) override;
    const binding::MemberTable& members() const override;

private:
    std::vector<Ref<HostFamily>> m_families;
};

} // namespace zan::host
