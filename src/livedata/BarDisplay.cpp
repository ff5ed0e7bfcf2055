#include "livedata/BarDisplay.h"

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "livedata/LiveTarget.h"
#include "values/Compare.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "values/Format.h"

namespace zan::livedata {

namespace element = document::element;
using document::Node;
using document::XMLOps::GetAttribute;
using document::XMLOps::SetAttribute;
using values::attempt;
using values::Name;
using values::Ref;
using values::Variant;
using wrappers::BenchControls;
using wrappers::iBenchControl;

namespace {

const Name CaptionName("Caption");
const Name EnabledName("Enabled");
const Name HighLimitName("HighLimit");
const Name LowLimitName("LowLimit");
const Name MaxName("Max");
const Name MinName("Min");
const Name ToolTipTextName("ToolTipText");
const Name ValueName("Value");
const QString Zero = QStringLiteral("0");

double number(const Node& node, Name name)
{
    return values::val(GetAttribute(node, name, Zero));
}

/// The ACTION child, made when the node has none.
Node actionOf(Node node)
{
    Node action = node.child(element::Action);
    if (!action) {
        action = node.createElement(element::Action);
        node.appendChild(action);
    }
    return action;
}

QString valueTip(const site::Channel& channel)
{
    QString tip = channel.Label() + QLatin1Char(' ') + values::format(channel.Value(), channel.Format());
    const QString units = channel.Units();
    if (!units.isEmpty())
        tip += QLatin1String(" (") + units + QLatin1String(") ");
    return tip;
}

void moveLimits(const iBenchControl& control, const Node& node, const BenchControls& controls)
{
    const QString reference = GetAttribute(node, element::LimitChannel);
    const Ref<site::Scheme> scheme = values::given(values::given(controls.logger())->Scheme());
    Ref<site::Channel> limit = site::findChannel(scheme->Windows(), reference);
    if (wrappers::PastView* past = control.past())
        limit = past->channel(limit, reference);
    if (!limit)
        return;
    const double offset = number(node, element::LimitOffset);
    const Ref<binding::Object> live = liveTarget(control);
    live->put(HighLimitName, Variant(values::toDouble(limit->Value()) + offset));
    live->put(LowLimitName, Variant(values::toDouble(limit->Value()) - offset));
}

} // namespace

void UpdateCheckBox(iBenchControl& control)
{
    // Without a channel the box is unchecked, and enabled: its click runs the action again.
    const Ref<site::Channel> channel = control.Channel();
    if (!channel) {
        const Ref<binding::Object> live = liveTarget(control);
        live->put(CaptionName, QStringLiteral("No channel"));
        live->put(ValueName, std::int16_t(0));
        return;
    }
    // After a click the channel still holds the old value until the next data: one scan is left out.
    // A look at the past takes nothing of that.
    const Node node = control.XMLNode();
    if (!control.past() && number(node, element::IgnoreScan) != 0) {
        SetAttribute(node, element::IgnoreScan, Zero);
        return;
    }
    // State and caption. Writing Value raises the click, which runs the action of an enabled box only.
    const Node action = actionOf(node);
    const bool isChecked = values::compareWithNumber(channel->Value(), number(action, element::UncheckedValue)) !=
                           values::Ordering::Equal;
    const Ref<binding::Object> live = liveTarget(control);
    live->put(EnabledName, false);
    live->put(ValueName, std::int16_t(isChecked ? 1 : 0));
    live->put(EnabledName, true);
    live->put(CaptionName, GetAttribute(action, isChecked ? element::CheckedCaption : element::UncheckedCaption));
}

void UpdateValueBar(iBenchControl& control, const BenchControls& controls)
{
    if (const Ref<site::Channel> channel = control.Channel()) {
        liveTarget(control)->put(ValueName, channel->Value());
        control.setToolTipText(valueTip(*channel));
    }
    const Node node = control.XMLNode();
    if (number(node, element::BoundLimit) != 0)
        moveLimits(control, node, controls);
}

void UpdateProgressBar(iBenchControl& control)
{
    const Ref<site::Channel> channel = control.Channel();
    const Ref<binding::Object> live = control.Control();
    if (!channel || !live)
        return;
    // A step that fails is passed over; the next one goes on with what there is.
    attempt([&] { live->put(ValueName, channel->Value()); });
    QString tip;
    attempt([&] {
        tip = channel->Label() + QLatin1String(" = ") + values::format(channel->Value(), channel->Format()) +
              QLatin1Char(' ');
    });
    attempt([&] { tip += channel->Units(); });
    attempt([&] {
        tip += QLatin1String("  (Min=") + values::toText(live->get(MinName)) + QLatin1String(" Max=") +
               values::toText(live->get(MaxName)) + QLatin1Char(')');
    });
    attempt([&] { live->put(ToolTipTextName, tip); });
}

} // namespace zan::livedata
