#include "zanbench/hostitem/HostFamily.h"

namespace zan::host {

using values::ErrorNumber;

HostRun& HostFamily::run() const
{
    if (!m_run)
        values::raise(ErrorNumber::ObjectNotSet);
    return *m_run;
}

window::BenchWindow& HostFamily::panel() const
{
    window::BenchWindow* panel = run().panel();
    if (!panel)
        values::raise(ErrorNumber::ObjectNotSet,
                      QStringLiteral("This run has no panel: give --scheme and --window."));
    return *panel;
}

} // namespace zan::host
