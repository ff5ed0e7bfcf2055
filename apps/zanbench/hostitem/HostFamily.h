#pragma once

#include "zanbench/hostitem/HostRun.h"

#include "binding/MemberTable.h"
#include "binding/Object.h"

namespace zan::host {

using binding::Ref;
using binding::Variant;

/// Members of the item Host that belong together: a class with a member table of its own. A new family is such a
/// class and one row in HostItem.cpp.
class HostFamily : public binding::Object
{
public:
    explicit HostFamily(HostRun& run)
        : m_run(&run)
    {}
    /// The run ends: every access raises 91 from now on.
    void detach() noexcept { m_run = nullptr; }

protected:
    /// Raises 91 after the end of the run.
    HostRun& run() const;
    /// Raises 91 for a run without a panel.
    window::BenchWindow& panel() const;

private:
    HostRun* m_run;
};

} // namespace zan::host
