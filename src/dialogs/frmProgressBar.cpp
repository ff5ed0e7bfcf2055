#include "dialogs/FormSteps.h"
#include "dialogs/SetupForms.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "values/Convert.h"
#include "wrappers/ValueText.h"

/// "Progress Bar Setup": the channel that drives a bar, its range, its direction and how it fills.
namespace zan::dialogs {

namespace element = document::element;
using document::XMLOps::SetAttribute;
using values::Variant;

namespace {

constexpr QStringView tabs[] = {u"&Actions"};

constexpr FieldRow fields[] = {
    channelFilter,
    {.name = ChannelListName, .kind = FieldKind::ChannelList, .caption = u"Test Channel"},
    {.name = u"txtMin",
     .kind = FieldKind::Text,
     .caption = u"Minimum",
     .at = At::Node,
     .value = &element::Min,
     .as = As::Single,
     .reads = Source::Property},
    {.name = u"txtMax",
     .kind = FieldKind::Text,
     .caption = u"Maximum",
     .at = At::Node,
     .value = &element::Max,
     .as = As::Single,
     .reads = Source::Property,
     .stores = Source::Property},

    {.name = u"fraOrientation", .kind = FieldKind::Frame, .caption = u"Orientation"},
    {.name = u"obHorizontal", .kind = FieldKind::Option, .caption = u"Horizontal", .frame = u"fraOrientation"},
    {.name = u"obVertical", .kind = FieldKind::Option, .caption = u"Vertical", .frame = u"fraOrientation"},

    {.name = u"fraScrolling", .kind = FieldKind::Frame, .caption = u"Scrolling", .beside = true},
    {.name = u"obStandard", .kind = FieldKind::Option, .caption = u"Standard", .frame = u"fraScrolling"},
    {.name = u"obSmooth", .kind = FieldKind::Option, .caption = u"Smooth", .frame = u"fraScrolling"},

    okButton,
    cancelButton,
    applyButton,
};

/// Two options that stand for 0 and 1 of one property.
struct Choice
{
    const values::Name& property;
    QStringView zero;
    QStringView one;
};

const Choice orientation{element::Orientation, u"obHorizontal", u"obVertical"};
const Choice scrolling{element::Scrolling, u"obStandard", u"obSmooth"};

void loadChoice(SetupForm& form, const Choice& choice)
{
    const bool isZero = values::toLong(form.live()->get(choice.property)) == 0;
    form.choose(form.field(isZero ? choice.zero : choice.one));
}

void loadScrolling(SetupForm& form)
{
    loadChoice(form, scrolling);
}

void loadOrientation(SetupForm& form)
{
    loadChoice(form, orientation);
}

constexpr Step fill[] = {
    call(fillChannelList), call(selectBoundChannel), call(ensureAction),    load(u"txtMin"),
    load(u"txtMax"),       call(loadScrolling),      call(loadOrientation),
};

/// COMPAT: the element of the minimum gets the maximum; what was typed as the minimum reaches the live bar only.
void writeMinimum(SetupForm& form)
{
    SetAttribute(form.node(), element::Min, wrappers::storedText(form.live()->get(element::Max)));
}

/// 0 is stored, where a write would leave it out.
void applyChoice(SetupForm& form, const Choice& choice)
{
    const std::int16_t number = form.field(choice.one).isChecked() ? 1 : 0;
    form.live()->put(choice.property, Variant(number));
    SetAttribute(form.node(), choice.property, QString::number(number), number == 0);
}

void applyOrientation(SetupForm& form)
{
    applyChoice(form, orientation);
}

void applyScrolling(SetupForm& form)
{
    applyChoice(form, scrolling);
}

constexpr Step apply[] = {
    call(bindSelectedChannel), put(u"txtMax"),         put(u"txtMin"),       write(u"txtMax"),
    call(writeMinimum),        call(applyOrientation), call(applyScrolling),
};

} // namespace

const FormDescription frmProgressBar{
    .name = u"frmProgressBar",
    .title = u"Progress Bar Setup",
    .width = 5370,
    .height = 6585,
    .tabs = tabs,
    .fields = fields,
    .escape = u"cmdApply", // COMPAT: Esc writes the settings and leaves the form open
    .fill = fill,
    .skipsFailures = true,
    .apply = apply,
};

} // namespace zan::dialogs
