#include "zanbench/PanelHost.h"

#include "binding/MemberTable.h"

namespace zan::host {

void PanelHost::Show(const QString& key)
{
    if (!m_show)
        values::raise(values::ErrorNumber::ObjectNotSet);
    const ShowWindow show = m_show; // showing a window may end the program's own
    show(key);
}

const binding::MemberTable& PanelHost::members() const
{
    return binding::table(
        [] { return binding::MemberTable("PanelHost", nullptr, {binding::method<&PanelHost::Show>("Show")}); });
}

} // namespace zan::host
