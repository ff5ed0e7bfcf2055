#include "livedata/TextDisplay.h"

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "livedata/LiveTarget.h"
#include "livedata/RestrictionDisplay.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "values/Format.h"

namespace zan::livedata {

namespace element = document::element;
using document::XMLOps::GetAttribute;
using values::Name;
using values::Ref;
using values::Variant;
using wrappers::BenchControls;
using wrappers::iBenchControl;

namespace {

const Name CaptionName("Caption");
const Name TextName("Text");

QString labelledText(const iBenchControl& control, const site::Channel& channel)
{
    // A labelled caption shows a zero before the first data, but no number that was never measured.
    const bool isNotStored = control.past() && channel.Value().isEmpty();
    const Variant value = channel.Value().isEmpty() ? Variant(std::int16_t(0)) : channel.Value();
    const QString separators = GetAttribute(control.XMLNode(), element::AddLabelSeperators, QStringLiteral("0"));
    QString text = channel.Label();
    if (values::val(separators) != 0)
        text += QLatin1String(": ");
    text += isNotStored ? NotStored : values::format(value, channel.Format());
    // The blank stands also where there are no units.
    text += QLatin1Char(' ');
    text += channel.Units();
    return text;
}

QString plainText(const iBenchControl& control, const site::Channel& channel)
{
    if (channel.Value().isEmpty())
        return control.past() ? NotStored : QString();
    return values::format(channel.Value(), channel.Format());
}

void updateLabel(iBenchControl& control, const BenchControls& controls)
{
    const Ref<site::Channel> channel = control.Channel();
    if (!channel) {
        UpdateRestrictions(control, controls);
        return;
    }
    // Compared as text: "00" counts as labelled.
    const QString showLabels = GetAttribute(control.XMLNode(), element::ShowLabels, QStringLiteral("0"));
    const bool plain = showLabels == QLatin1String("0");
    const QString caption = plain ? plainText(control, *channel) : labelledText(control, *channel);
    values::given(control.Control())->put(CaptionName, Variant(caption));
}

void showFailure(iBenchControl& control, Name property, const QString& text)
{
    if (const Ref<binding::Object> live = control.Control())
        live->tryPut(property, Variant(text));
}

} // namespace

void UpdateLabel(iBenchControl& control, const BenchControls& controls)
{
    if (!values::attempt([&] { updateLabel(control, controls); }))
        showFailure(control, CaptionName, QStringLiteral("ERROR!"));
}

void UpdateTextBox(iBenchControl& control)
{
    const auto update = [&] {
        const Ref<site::Channel> channel = values::given(control.Channel());
        values::given(control.Control())->put(TextName, Variant(plainText(control, *channel)));
    };
    if (!values::attempt(update))
        showFailure(control, TextName, QStringLiteral("No channel"));
}

} // namespace zan::livedata
