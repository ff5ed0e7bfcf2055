#include "zanbench/hostitem/BoxList.h"

#include "binding/MemberTable.h"

namespace zan::host {

using binding::readOnly;

const binding::MemberTable& ShownBox::members() const
{
    using C = ShownBox;
    return binding::table([] {
        return binding::MemberTable("Box", nullptr,
                                    {
                                        readOnly<&C::Text>("Text").asDefault(),
                                        readOnly<&C::Buttons>("Buttons"),
                                        readOnly<&C::Icon>("Icon"),
                                        readOnly<&C::Title>("Title"),
                                    });
    });
}

values::Ref<ShownBox> BoxList::Item(std::int32_t place) const
{
    if (place < 1 || place > Count())
        values::raise(values::ErrorNumber::SubscriptOutOfRange);
    return values::make<ShownBox>(m_boxes[std::size_t(place) - 1]);
}

const binding::MemberTable& BoxList::members() const
{
    using C = BoxList;
    return binding::table([] {
        return binding::MemberTable("Boxes", nullptr,
                                    {
                                        readOnly<&C::Count>("Count"),
                                        readOnly<&C::Item>("Item").asDefault(),
                                    });
    });
}

} // namespace zan::host
