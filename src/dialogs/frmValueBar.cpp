#include "dialogs/FormSteps.h"
#include "dialogs/SetupForms.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "values/Convert.h"
#include "wrappers/ValueText.h"

/// "Value Bar Setup": the channel that a bar shows, its scale, and its limits, which are fixed or follow a second
/// channel.
namespace zan::dialogs {

namespace element = document::element;

namespace {

constexpr QStringView tabs[] = {u"&Actions"};

void showFixedFrame(SetupForm& form, Field&)
{
    form.setVisible(form.field(u"fraFixed"), true);
    form.setVisible(form.field(u"fraBound"), false);
}

void showBoundFrame(SetupForm& form, Field&)
{
    form.setVisible(form.field(u"fraBound"), true);
    form.setVisible(form.field(u"fraFixed"), false);
}

// What the bar has made of a value is what is stored of it.
constexpr FieldRow fields[] = {
    channelFilter,
    {.name = ChannelListName, .kind = FieldKind::ChannelList, .caption = u"Test Channel"},
    {.name = u"obFixed",
     .kind = FieldKind::Option,
     .caption = u"Fixed mode",
     .toolTip = u"Thresholds are fixed",
     .click = showFixedFrame},
    {.name = u"obBound",
     .kind = FieldKind::Option,
     .caption = u"Bound Mode",
     .toolTip = u"Thresholds are bound to a channel",
     .beside = true,
     .click = showBoundFrame},
    {.name = u"txtMin",
     .kind = FieldKind::Text,
     .caption = u"Min",
     .at = At::Node,
     .value = &element::Min,
     .as = As::Double,
     .force = true,
     .reads = Source::Property,
     .stores = Source::Property},
    {.name = u"txtMax",
     .kind = FieldKind::Text,
     .caption = u"Max",
     .beside = true,
     .at = At::Node,
     .value = &element::Max,
     .as = As::Double,
     .force = true,
     .reads = Source::Property,
     .stores = Source::Property},

    {.name = u"fraFixed", .kind = FieldKind::Frame, .spot = 1},
    {.name = u"txtLow",
     .kind = FieldKind::Text,
     .caption = u"Low Threshold",
     .frame = u"fraFixed",
     .at = At::Node,
     .value = &element::LowLimit,
     .as = As::Double,
     .force = true,
     .reads = Source::Property,
     .stores = Source::Property},
    {.name = u"txtHigh",
     .kind = FieldKind::Text,
     .caption = u"High Threshold",
     .frame = u"fraFixed",
     .at = At::Node,
     .value = &element::HighLimit,
     .as = As::Double,
     .force = true,
     .reads = Source::Property,
     .stores = Source::Property},

    {.name = u"fraBound", .kind = FieldKind::Frame, .spot = 1, .visible = false},
    {.name = u"cboLimitChannel",
     .kind = FieldKind::ChannelDropDown,
     .caption = u"Limit Channel",
     .frame = u"fraBound",
     .at = At::Node,
     .value = &element::LimitChannel,
     .as = As::RowKey,
     .force = true},
    {.name = u"txtLimitOffset",
     .kind = FieldKind::Text,
     .caption = u"Limit Offset",
     .frame = u"fraBound",
     .at = At::Node,
     .value = &element::LimitOffset,
     .as = As::Double,
     .force = true},

    {.name = u"picLow",
     .kind = FieldKind::Swatch,
     .caption = u"Low Colour",
     .at = At::Node,
     .value = &element::LowColour,
     .as = As::Colour,
     .force = true,
     .reads = Source::Property,
     .stores = Source::Property,
     .doubleClick = pickSwatchColour},
    {.name = u"picHigh",
     .kind = FieldKind::Swatch,
     .caption = u"High Colour",
     .at = At::Node,
     .value = &element::HighColour,
     .as = As::Colour,
     .force = true,
     .reads = Source::Property,
     .stores = Source::Property,
     .doubleClick = pickSwatchColour},
    {.name = u"picNormal",
     .kind = FieldKind::Swatch,
     .caption = u"Normal Colour",
     .at = At::Node,
     .value = &element::NormalColour,
     .as = As::Colour,
     .force = true,
     .reads = Source::Property,
     .stores = Source::Property,
     .doubleClick = pickSwatchColour},
    {.name = u"cbFlash",
     .kind = FieldKind::CheckBox,
     .caption = u"Flash",
     .at = At::Node,
     .value = &element::Flash,
     .as = As::Flag,
     .force = true,
     .reads = Source::Property,
     .stores = Source::Property},

    okButton,
    cancelButton,
    applyButton,
};

/// COMPAT: from here on a failure is the caller's, and the form is not shown.
void loadLimitChannel(SetupForm& form)
{
    Field& list = form.field(u"cboLimitChannel");
    const QString bound = document::XMLOps::GetAttribute(form.node(), element::LimitChannel);
    values::attempt([&] { form.selectKey(list, bound); });
    form.setSkipsFailures(false);
    if (!list.selectedRow())
        form.select(list, 0);
}

void loadBound(SetupForm& form)
{
    const QString bound =
        document::XMLOps::GetAttribute(form.node(), element::BoundLimit, wrappers::storedText(false));
    form.choose(form.field(values::val(bound) == 0 ? u"obFixed" : u"obBound"));
}

constexpr Step fill[] = {
    call(fillChannelList),   call(selectBoundChannel), load(u"picLow"), load(u"picHigh"), load(u"picNormal"),
    load(u"cbFlash"),        load(u"txtMin"),          load(u"txtMax"), load(u"txtLow"),  load(u"txtHigh"),
    load(u"txtLimitOffset"), call(loadLimitChannel),   call(loadBound),
};

void writeBound(SetupForm& form)
{
    document::XMLOps::SetAttribute(form.node(), element::BoundLimit,
                                   wrappers::storedText(form.field(u"obBound").isChecked()), true);
}

// What stands in the frame that is hidden is written all the same.
constexpr Step apply[] = {
    call(bindSelectedChannel),
    put(u"txtMin"),
    put(u"txtMax"),
    put(u"txtLow"),
    put(u"txtHigh"),
    put(u"picLow"),
    put(u"picHigh"),
    put(u"picNormal"),
    put(u"cbFlash"),
    write(u"txtMin"),
    write(u"txtMax"),
    write(u"txtLow"),
    write(u"txtHigh"),
    write(u"picLow"),
    write(u"picHigh"),
    write(u"picNormal"),
    write(u"cbFlash"),
    write(u"txtLimitOffset"),
    write(u"cboLimitChannel"),
    call(writeBound),
};

} // namespace

const FormDescription frmValueBar{
    .name = u"frmValueBar",
    .title = u"Value Bar Setup",
    .width = 5400,
    .height = 7560,
    .tabs = tabs,
    .fields = fields,
    .escape = u"cmdApply", // COMPAT: Esc writes the settings and leaves the form open
    .fill = fill,
    .skipsFailures = true,
    .apply = apply,
};

} // namespace zan::dialogs
