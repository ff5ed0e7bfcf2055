#include "wrappers/iBenchControl.h"

#include "binding/MemberTable.h"
#include "site/NodeObject.h"

namespace zan::wrappers {

const binding::MemberTable& iBenchControl::members() const
{
    return wrapperMembers();
}

const binding::MemberTable& iBenchControl::wrapperMembers()
{
    using C = iBenchControl;
    using binding::method;
    using binding::property;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable(
            "iBenchControl", nullptr,
            {
                property<&C::XMLNode, &C::setXMLNode>("XMLNode"),
                property<&C::BackColour, &C::setBackColour>("BackColour"),
                property<&C::BindTo, &C::setBindTo>("BindTo"),
                property<&C::Channel, &C::setChannel>("Channel"),
                property<&C::Control, &C::setControl>("Control"),
                property<&C::ControlType, &C::setControlType>("ControlType"),
                property<&C::Font, &C::setFont>("Font"),
                property<&C::ForeColour, &C::setForeColour>("ForeColour"),
                property<&C::Height, &C::setHeight>("Height"),
                readOnly<&C::hWnd>("hWnd"),
                property<&C::Index, &C::setIndex>("Index"),
                property<&C::Key, &C::setKey>("Key"),
                property<&C::Left, &C::setLeft>("Left"),
                property<&C::ShowGrabHandles, &C::setShowGrabHandles>("ShowGrabHandles"),
                property<&C::ToolTipText, &C::setToolTipText>("ToolTipText"),
                property<&C::Top, &C::setTop>("Top"),
                property<&C::UseWindowSettings, &C::setUseWindowSettings>("UseWindowSettings"),
                property<&C::Visible, &C::setVisible>("Visible"),
                property<&C::Width, &C::setWidth>("Width"),
                method<&C::Drag>("Drag"),
                method<&C::InitGrabHandles>("InitGrabHandles"),
                method<&C::Move>("Move"),
                method<&C::UpdateNode>("UpdateNode"),
                method<&C::ZOrder>("ZOrder"),
                property<&C::Updated, &C::setUpdated>("Updated"),
            });
    });
}

} // namespace zan::wrappers
