#pragma once

#include "zanbench/hostitem/HostFamily.h"

#include "display/SiteMapControl.h"

namespace zan::host {

/// Host.Map, ClickSite and DoubleClickSite: the site map of the run's panel. A site is named by its caption, whatever
/// the case (of several the first), or by its number from 1.
class HostMap : public HostFamily
{
public:
    using HostFamily::HostFamily;

    Ref<binding::Object> Map();
    /// Scrolls the site into sight and clicks in the middle of its label. Raises 5 for a site that is not there or that
    /// a click cannot reach.
    void ClickSite(const Variant& site);
    void DoubleClickSite(const Variant& site);
    const binding::MemberTable& members() const override;

private:
    display::SiteMapControl& map() const;
    QPoint middleOf(const Variant& site) const;
};

} // namespace zan::host
