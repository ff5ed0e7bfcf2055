#include "zanbench/hostitem/BoxList.h"

#include "binding/MemberTable.h"

namespace zan::host {

using binding::readOnly;

const binding::MemberTable& ShownBox::members() const
{
    using C = ShownBox;
    static const binding::MemberTable table("Box", nullptr,
                                            {
                                                readOnly<&C::Text>("Text").asDefault(),
                                                readOnly<&C::Buttons>("Buttons"),
                                                readOnly<&C::Icon>("Icon"),
                                                readOnly<&C::Title>("Title"),
                                            });
    return table;
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
    static const binding::MemberTable table("Boxes", nullptr,
                                            {
                                                readOnly<&C::Count>("Count"),
                                                readOnly<&C::Item>("Item").asDefault(),
                                            });
    return table;
}

} // namespace zan::host
