#include "site/History.h"

#include "binding/MemberTable.h"

namespace zan::site {

const binding::MemberTable& History::members() const
{
    return binding::table([] {
        return binding::MemberTable("History", nullptr,
                                    {
                                        binding::readOnly<&History::State>("State"),
                                    });
    });
}

} // namespace zan::site
