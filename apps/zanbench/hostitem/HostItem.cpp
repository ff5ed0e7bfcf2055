#include "zanbench/hostitem/HostItem.h"

#include "zanbench/hostitem/HostBoxes.h"
#include "zanbench/hostitem/HostDocument.h"
#include "zanbench/hostitem/HostEditing.h"
#include "zanbench/hostitem/HostForms.h"
#include "zanbench/hostitem/HostInput.h"
#include "zanbench/hostitem/HostLogger.h"
#include "zanbench/hostitem/HostMap.h"
#include "zanbench/hostitem/HostPicture.h"
#include "zanbench/hostitem/HostRecords.h"
#include "zanbench/hostitem/HostReport.h"
#include "zanbench/hostitem/HostText.h"
#include "zanbench/hostitem/HostTime.h"

#include <array>

namespace zan::host {

namespace {

using FamilyMaker = Ref<HostFamily> (*)(HostRun&);

template <class Family>
Ref<HostFamily> makeFamily(HostRun& run)
{
    return values::make<Family>(run);
}

/// Every family, one row each. No two of them have a member of the same name.
constexpr std::array<FamilyMaker, 12> FamilyMakers = {
    &makeFamily<HostReport>,  &makeFamily<HostTime>,     &makeFamily<HostInput>,   &makeFamily<HostBoxes>,
    &makeFamily<HostText>,    &makeFamily<HostDocument>, &makeFamily<HostPicture>, &makeFamily<HostLogger>,
    &makeFamily<HostEditing>, &makeFamily<HostMap>,      &makeFamily<HostForms>,   &makeFamily<HostRecords>,
};

} // namespace

HostItem::HostItem(HostRun& run)
{
    for (const FamilyMaker make : FamilyMakers)
        m_families.push_back(make(run));
}

void HostItem::detach() noexcept
{
    for (const Ref<HostFamily>& family : m_families)
        family->detach();
}

Variant HostItem::invoke(binding::Name name, binding::Access access, binding::Arguments arguments)
{
    for (const Ref<HostFamily>& family : m_families) {
        if (family->members().find(name)) {
            const Ref<HostFamily> alive = family; // the member may let go of this item
            return alive->invoke(name, access, arguments);
        }
    }
    return Object::invoke(name, access, arguments);
}

const binding::MemberTable& HostItem::members() const
{
    return binding::table([] { return binding::MemberTable("Host", nullptr, {}); });
}

} // namespace zan::host
