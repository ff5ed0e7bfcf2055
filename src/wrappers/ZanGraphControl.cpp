#include "wrappers/ZanGraphControl.h"

#include "binding/MemberTable.h"
#include "document/Elements.h"
#include "document/LoadByName.h"
#include "document/XMLOps.h"
#include "values/Array.h"
#include "values/Convert.h"
#include "values/Failure.h"

#include <array>
#include <vector>

namespace zan::wrappers {

namespace element = document::element;
using document::Node;
using values::Name;

namespace {

const Name FilterName("Filter");
const Name DataSourceName("DataSource");
const Name ChannelsName("Channels");
const Name EnabledName("Enabled");
const Name ResetName("Reset");

/// What the elements of a filter are called, before the channel's number.
const QLatin1String ChannelPrefix("CHAN");

Ref<binding::Object> objectIn(const Variant& value)
{
    return value.isObject() && value.object() ? Ref<binding::Object>(&binding::objectOf(value))
                                              : Ref<binding::Object>();
}

/// Upper less lower bound of the list of channels.
/// COMPAT: of a list numbered from 1 the last channel is not stored.
std::int32_t lastStored(const Variant& channels)
{
    if (!channels.isArray() || channels.array().rank() != 1)
        values::raise(values::ErrorNumber::TypeMismatch);
    const values::Array::Bound bound = channels.array().bound(0);
    return bound.upper - bound.lower;
}

} // namespace

// Limit lines --------------------------------------------------------------------------------------------------

double ZanGraphControl::UpperLimitLine() const
{
    return document::XMLOps::GetNumber(node(), element::UpperLimit, 0, true);
}
void ZanGraphControl::setUpperLimitLine(double position)
{
    document::XMLOps::SetNumber(node(), element::UpperLimit, position, 0, true);
}
double ZanGraphControl::LowerLimitLine() const
{
    return document::XMLOps::GetNumber(node(), element::LowerLimit, 0, true);
}
void ZanGraphControl::setLowerLimitLine(double position)
{
    document::XMLOps::SetNumber(node(), element::LowerLimit, position, 0, true);
}
QString ZanGraphControl::UpperLimitLabel() const
{
    return document::XMLOps::GetText(node(), element::UpperLabel, {}, true);
}
void ZanGraphControl::setUpperLimitLabel(const QString& label)
{
    document::XMLOps::SetText(node(), element::UpperLabel, label, {}, true);
}
QString ZanGraphControl::LowerLimitLabel() const
{
    return document::XMLOps::GetText(node(), element::LowerLabel, {}, true);
}
void ZanGraphControl::setLowerLimitLabel(const QString& label)
{
    document::XMLOps::SetText(node(), element::LowerLabel, label, {}, true);
}

// Loading ------------------------------------------------------------------------------------------------------

void ZanGraphControl::loadLive(binding::Object& control)
{
    std::array special{document::SpecialChild{element::TitleFont, {}}, document::SpecialChild{element::Font, {}}};
    document::loadByName(node(), control, special);
}

/// The size is what the node says: it is not put a second time, as other controls have it.
void ZanGraphControl::loadFont(const Node& fontNode, binding::Object& font)
{
    document::loadByName(fontNode, font);
}

Ref<binding::Object> ZanGraphControl::filter() const
{
    Variant found;
    if (!Control() || Control()->tryGet(FilterName, found) != binding::AccessStatus::Ok)
        return {};
    return objectIn(found);
}

void ZanGraphControl::loadRest()
{
    const Ref<binding::Object> target = filter();
    if (!target)
        return;
    const Node stored = document::specialChild(node(), element::Filter);
    if (!stored) {
        values::attempt([&] { target->get(ResetName); });
        return;
    }
    for (Node child = stored.firstChildElement(); child; child = child.nextSiblingElement()) {
        const QString name = child.name().localPart().text();
        if (!name.startsWith(ChannelPrefix))
            continue;
        // CHAN0 and a word like CHANNEL name no channel.
        std::int32_t channel = 0;
        if (values::roundToLong(values::val(QStringView(name).mid(ChannelPrefix.size())), channel) !=
                values::ErrorNumber::None ||
            channel <= 0)
            continue;
        const Variant arguments[] = {channel, values::val(child.text()) != 0};
        values::attempt([&] { target->invoke(EnabledName, binding::Access::Put, arguments); });
    }
}

// Storing ------------------------------------------------------------------------------------------------------

void ZanGraphControl::UpdateNode()
{
    BenchControl::UpdateNode();
    values::attempt([this] { storeFilter(); });
}

/// Everything is asked for before anything is touched: a filter that cannot say what it shows leaves the stored one.
void ZanGraphControl::storeFilter()
{
    const Ref<binding::Object> source = filter();
    if (!source || !objectIn(source->get(DataSourceName)))
        return;
    const std::int32_t last = lastStored(source->get(ChannelsName));
    const Node next = document::XMLOps::CreateElement(element::Filter);
    for (std::int32_t channel = 1; channel <= last; ++channel) {
        const Variant number(channel);
        const bool isShown = values::toBoolean(source->get(EnabledName, {&number, 1}));
        document::XMLOps::SetAttribute(next, Name(ChannelPrefix + QString::number(channel)),
                                       isShown ? QStringLiteral("-1") : QStringLiteral("0"), true);
    }
    const Node stored = document::specialChild(node(), element::Filter);
    const bool isChanged = !stored || stored.xml() != next.xml();
    Node parent = node();
    if (stored)
        parent.removeChild(stored);
    parent.appendChild(next);
    if (isChanged)
        document::XMLOps::MarkChanged(parent);
}

const binding::MemberTable& ZanGraphControl::members() const
{
    using C = ZanGraphControl;
    using binding::property;
    return binding::table([] {
        return binding::MemberTable("ZanGraphControl", &wrapperMembers(),
                                    {
                                        property<&C::UpperLimitLine, &C::setUpperLimitLine>("UpperLimitLine"),
                                        property<&C::LowerLimitLine, &C::setLowerLimitLine>("LowerLimitLine"),
                                        property<&C::UpperLimitLabel, &C::setUpperLimitLabel>("UpperLimitLabel"),
                                        property<&C::LowerLimitLabel, &C::setLowerLimitLabel>("LowerLimitLabel"),
                                    });
    });
}

} // namespace zan::wrappers
