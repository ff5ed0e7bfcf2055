#include "site/Channel.h"

#include "binding/MemberTable.h"
#include "site/NodeObject.h"

#include <array>

namespace zan::site {

using binding::MemberTable;
using binding::property;
using binding::readOnly;

const MemberTable& Channel::members() const
{
    return binding::table([] {
        return MemberTable("Channel", nullptr,
                           {
                               property<&Channel::BaseAddress, &Channel::setBaseAddress>("BaseAddress"),
                               property<&Channel::CDT, &Channel::setCDT>("CDT"),
                               property<&Channel::DataType, &Channel::setDataType>("DataType"),
                               property<&Channel::Bytes, &Channel::setBytes>("Bytes"),
                               property<&Channel::Multiplier, &Channel::setMultiplier>("Multiplier"),
                               property<&Channel::Offset, &Channel::setOffset>("Offset"),
                               property<&Channel::Formula, &Channel::setFormula>("Formula"),
                               property<&Channel::Label, &Channel::setLabel>("Label"),
                               property<&Channel::Format, &Channel::setFormat>("Format"),
                               property<&Channel::Units, &Channel::setUnits>("Units"),
                               property<&Channel::Visible, &Channel::setVisible>("Visible"),
                               readOnly<&Channel::Value>("Value").asDefault(),
                               readOnly<&Channel::Key>("Key"),
                               property<&Channel::UseCount, &Channel::setUseCount>("UseCount"),
                               readOnly<&Channel::XMLNode>("XMLNode"),
                           });
    });
}

QString dataTypeName(std::int32_t type)
{
    static const std::array<QString, DataTypeCount> names{
        QStringLiteral("Unsigned Byte"), QStringLiteral("Signed Byte"),    QStringLiteral("Unsigned Word"),
        QStringLiteral("Signed Word"),   QStringLiteral("Unsigned Long"),  QStringLiteral("Signed Long"),
        QStringLiteral("String"),        QStringLiteral("Single Prec FP"), QStringLiteral("Double Prec FP"),
    };
    return type >= 0 && type < DataTypeCount ? names[std::size_t(type)] : QString();
}

} // namespace zan::site
