#include "zanbench/hostitem/HandleList.h"

#include "binding/MemberTable.h"
#include "display/cGrabHandles.h"
#include "surface/edit/HandleTable.h"
#include "values/Twips.h"

namespace zan::host {

float ShownHandle::Left() const
{
    return values::pixelsToTwips(m_place.x());
}

float ShownHandle::Top() const
{
    return values::pixelsToTwips(m_place.y());
}

const binding::MemberTable& ShownHandle::members() const
{
    using C = ShownHandle;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("Handle", nullptr,
                                    {
                                        readOnly<&C::Left>("Left"),
                                        readOnly<&C::Top>("Top"),
                                        readOnly<&C::Visible>("Visible"),
                                        readOnly<&C::Cursor>("Cursor"),
                                    });
    });
}

HandleList::HandleList(const wrappers::iBenchControl& wrapper, surface::LiveControl& live)
{
    if (live.hWnd() == 0)
        return;
    const auto places = surface::handleRectangles(live.bounds(), display::cGrabHandles::DefaultSize);
    for (std::size_t index = 0; index < places.size(); ++index)
        m_handles.push_back(values::make<ShownHandle>(places[index],
                                                      wrapper.ShowGrabHandles() && !places[index].isNull(),
                                                      surface::handleTable[index].cursor));
}

Ref<ShownHandle> HandleList::Item(std::int32_t place) const
{
    if (place < 1 || place > Count())
        values::raise(values::ErrorNumber::SubscriptOutOfRange);
    return m_handles[std::size_t(place) - 1];
}

const binding::MemberTable& HandleList::members() const
{
    using C = HandleList;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("Handles", nullptr,
                                    {readOnly<&C::Count>("Count"), readOnly<&C::Item>("Item").asDefault()});
    });
}

} // namespace zan::host
