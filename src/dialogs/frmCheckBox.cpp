#include "dialogs/FormSteps.h"
#include "dialogs/SetupForms.h"
#include "document/Elements.h"
#include "document/XMLOps.h"

#include <array>

/// "Check Box Setup": the channel that a check box shows and toggles, and a value and a caption for each of its states.
namespace zan::dialogs {

namespace element = document::element;

namespace {

constexpr QStringView tabs[] = {u"&Actions", u"&Format"};

constexpr FieldRow fields[] = {
    channelFilter,
    {.name = ChannelListName, .kind = FieldKind::ChannelList, .caption = u"Test Channel"},
    {.name = u"txtCheckedValue",
     .kind = FieldKind::Text,
     .caption = u"Checked Value",
     .at = At::Action,
     .value = &element::CheckedValue,
     .force = true},
    {.name = u"txtCheckedCaption",
     .kind = FieldKind::Text,
     .caption = u"Checked Caption",
     .at = At::Action,
     .value = &element::CheckedCaption},
    {.name = u"txtUncheckedValue",
     .kind = FieldKind::Text,
     .caption = u"Unchecked Value",
     .at = At::Action,
     .value = &element::UncheckedValue,
     .force = true},
    {.name = u"txtUncheckedCaption",
     .kind = FieldKind::Text,
     .caption = u"Unchecked Caption",
     .at = At::Action,
     .value = &element::UncheckedCaption},

    tooltipField,
    fontButton,
    // COMPAT: the two colour buttons have nothing behind them; the colours of a check box come from elsewhere.
    {.name = u"cmdForeCol",
     .kind = FieldKind::Button,
     .caption = u"&Forecolour",
     .toolTip = ForeColourButtonTip,
     .tab = 1,
     .beside = true},
    {.name = u"cmdBackCol",
     .kind = FieldKind::Button,
     .caption = u"&Backcolour",
     .toolTip = BackColourButtonTip,
     .tab = 1,
     .beside = true},
    {.name = u"Frame1", .kind = FieldKind::Frame, .caption = u"Example", .tab = 1},
    {.name = u"cbExample",
     .kind = FieldKind::CheckBox,
     .caption = u"Example Checkbox",
     .tab = 1,
     .frame = u"Frame1"},

    okButton,
    cancelButton,
    applyButton,
};

void showExample(SetupForm& form)
{
    Field& example = form.field(u"cbExample");
    form.setFont(example, form.editFont);
    form.setBackColour(example, form.backColour);
    form.setForeColour(example, form.foreColour);
}

void takeBackColour(SetupForm& form)
{
    form.backColour = form.control()->BackColour();
}

void takeForeColour(SetupForm& form)
{
    form.foreColour = form.control()->ForeColour();
}

constexpr Step fill[] = {
    call(takeFont),           call(fillChannelList),      call(selectBoundChannel),   call(ensureAction),
    load(u"txtCheckedValue"), load(u"txtCheckedCaption"), load(u"txtUncheckedValue"), load(u"txtUncheckedCaption"),
    call(takeFont),           call(takeBackColour),       call(takeForeColour),       load(TooltipName),
    call(showExample),
};

void writeType(SetupForm& form)
{
    document::XMLOps::SetAttribute(form.action(), element::Type, QStringLiteral("TOGGLE"));
}

constexpr Step apply[] = {
    call(applyFont),
    write(TooltipName),
    call(bindSelectedChannel),
    call(ensureAction),
    call(writeType),
    write(u"txtCheckedCaption"),
    write(u"txtUncheckedCaption"),
    write(u"txtCheckedValue"),
    write(u"txtUncheckedValue"),
};

} // namespace

const FormDescription frmCheckBox{
    .name = u"frmCheckBox",
    .title = u"Check Box Setup",
    .width = 5400,
    .height = 6615,
    .tabs = tabs,
    .fields = fields,
    .escape = u"cmdApply", // COMPAT: Esc writes the settings and leaves the form open
    .fill = fill,
    .skipsFailures = true,
    .apply = apply,
    .showExample = showExample,
};

} // namespace zan::dialogs
