#include "zanbench/hostitem/HostBoxes.h"

#include "zanbench/hostitem/BoxList.h"

#include "surface/forms/RecordingForms.h"

namespace zan::host {

Ref<binding::Object> HostBoxes::Boxes()
{
    return values::make<BoxList>(run().forms().boxes());
}

void HostBoxes::Answer(const QString& text)
{
    run().forms().answer(text);
}

const binding::MemberTable& HostBoxes::members() const
{
    using C = HostBoxes;
    return binding::table([] {
        return binding::MemberTable("HostBoxes", nullptr,
                                    {binding::readOnly<&C::Boxes>("Boxes"), binding::method<&C::Answer>("Answer")});
    });
}

} // namespace zan::host
