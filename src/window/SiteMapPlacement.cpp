#include "window/SiteMapPlacement.h"

#include "binding/MemberTable.h"

namespace zan::window {

const binding::MemberTable& SiteMapPlacement::members() const
{
    using C = SiteMapPlacement;
    using binding::property;
    return binding::table([] {
        return binding::MemberTable("SiteMap", nullptr,
                                    {
                                        property<&C::Left, &C::setLeft>("Left"),
                                        property<&C::Top, &C::setTop>("Top"),
                                        property<&C::Width, &C::setWidth>("Width"),
                                        property<&C::Height, &C::setHeight>("Height"),
                                        binding::readOnly<&C::Font>("Font"),
                                    });
    });
}

} // namespace zan::window
