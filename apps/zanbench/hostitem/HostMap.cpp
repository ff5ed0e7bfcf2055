#include "zanbench/hostitem/HostMap.h"

#include "zanbench/headless/SimulatedInput.h"
#include "zanbench/hostitem/MapSites.h"

#include "display/SiteMapView.h"
#include "surface/host/Surface.h"
#include "values/Convert.h"
#include "window/BenchWindow.h"

namespace zan::host {

using values::ErrorNumber;

namespace {

[[noreturn]] void hitsNothing(const QString& why)
{
    values::raise(ErrorNumber::InvalidCall, QStringLiteral("This hits nothing: %1.").arg(why));
}

QString describe(const display::SiteChart& chart, int site)
{
    return QStringLiteral("site %1 (%2)").arg(site).arg(chart.site(site).caption);
}

} // namespace

display::SiteMapControl& HostMap::map() const
{
    const Ref<display::SiteMapControl> map = panel().SiteMap();
    if (!map)
        values::raise(ErrorNumber::ObjectNotSet);
    return *map;
}

Ref<binding::Object> HostMap::Map()
{
    return values::make<MapSites>(Ref<display::SiteMapControl>(&map()));
}

/// The middle of a site's label on the panel, when a press there reaches it.
QPoint HostMap::middleOf(const Variant& site) const
{
    window::BenchWindow& window = panel();
    display::SiteMapControl& control = map();
    const display::SiteChart& chart = control.chart();
    const int number = MapSites::find(chart, site);
    if (number == 0)
        hitsNothing(QStringLiteral("the map has no site '%1'").arg(values::toText(site)));
    window.flush();
    auto* view = static_cast<display::SiteMapView*>(control.widget());
    if (!control.visible() || !view)
        hitsNothing(QStringLiteral("the site map is hidden"));
    if (!control.enabled() || !window.isEnabled())
        hitsNothing(QStringLiteral("the site map is disabled"));
    view->reveal(number);
    const QPoint middle = view->labelRectangle(number).center();
    if (const int hit = view->siteAt(middle); hit != number)
        hitsNothing(hit > 0 ? QStringLiteral("%1 lies under %2").arg(describe(chart, number), describe(chart, hit))
                            : QStringLiteral("%1 takes no presses").arg(describe(chart, number)));
    const QPoint place = view->viewport()->mapTo(static_cast<QWidget*>(&window), middle);
    if (!view->viewport()->rect().contains(middle) || !window.rect().contains(place))
        hitsNothing(describe(chart, number) + QStringLiteral(" lies outside the panel"));
    if (const Ref<surface::LiveControl> hit = window.surface().controlAt(place); hit.get() != &control)
        hitsNothing(QStringLiteral("the site map lies under another control"));
    return place;
}

void HostMap::ClickSite(const Variant& site)
{
    const QPoint place = middleOf(site);
    SimulatedInput(panel()).click(place);
}

void HostMap::DoubleClickSite(const Variant& site)
{
    const QPoint place = middleOf(site);
    SimulatedInput(panel()).doubleClick(place);
}

const binding::MemberTable& HostMap::members() const
{
    using C = HostMap;
    using binding::method;
    return binding::table([] {
        return binding::MemberTable("HostMap", nullptr,
                                    {
                                        binding::readOnly<&C::Map>("Map"),
                                        method<&C::ClickSite>("ClickSite"),
                                        method<&C::DoubleClickSite>("DoubleClickSite"),
                                    });
    });
}

} // namespace zan::host
