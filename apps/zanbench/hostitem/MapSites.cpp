#include "zanbench/hostitem/MapSites.h"

#include "binding/MemberTable.h"
#include "values/Convert.h"

namespace zan::host {

int MapSites::find(const display::SiteChart& chart, const values::Variant& site)
{
    if (!site.isText()) {
        const std::int32_t number = values::toLong(site);
        return number >= 1 && number <= chart.shownCount() ? number : 0;
    }
    for (int number = 1; number <= chart.shownCount(); ++number) {
        if (chart.site(number).caption.compare(site.text(), Qt::CaseInsensitive) == 0)
            return number;
    }
    return 0;
}

values::Ref<MapSite> MapSites::Item(const values::Variant& site) const
{
    const int number = find(m_map->chart(), site);
    if (number == 0)
        values::raise(values::ErrorNumber::SubscriptOutOfRange);
    const display::SiteChart::Site& found = m_map->chart().site(number);
    return values::make<MapSite>(found.caption, found.label);
}

const binding::MemberTable& MapSite::members() const
{
    using C = MapSite;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("MapSite", nullptr,
                                    {readOnly<&C::Key>("Key"), readOnly<&C::Left>("Left"), readOnly<&C::Top>("Top"),
                                     readOnly<&C::Width>("Width"), readOnly<&C::Height>("Height")});
    });
}

const binding::MemberTable& MapSites::members() const
{
    using C = MapSites;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("MapSites", nullptr,
                                    {readOnly<&C::Count>("Count"), readOnly<&C::Item>("Item").asDefault()});
    });
}

} // namespace zan::host
