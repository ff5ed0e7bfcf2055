#include "dialogs/FormSteps.h"
#include "dialogs/Names.h"
#include "dialogs/SetupForms.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "values/Convert.h"

#include <array>

/// "Command Button Setup": what a click on a button does, stored in its ACTION for the action engine.
namespace zan::dialogs {

namespace element = document::element;
using document::XMLOps::GetAttribute;
using document::XMLOps::SetAttribute;
using values::Variant;

namespace {

void actionClicked(SetupForm& form, Field& field);
void fillSet(SetupForm& form);
void fillScript(SetupForm& form);
void applySet(SetupForm& form);
void applyVesper(SetupForm& form);
void applyScript(SetupForm& form);

constexpr Step fillPut[] = {load(u"txtValue"), load(u"txtAddress"), load(u"cboDataType")};
constexpr Step fillVesper[] = {load(u"cboFunction"), load(u"cbShowProgress")};
constexpr Step fillSetSteps[] = {call(fillSet)};
constexpr Step fillScriptSteps[] = {call(fillScript)};
constexpr Step applySetSteps[] = {call(applySet)};
constexpr Step applyPut[] = {write(u"txtValue"), write(u"txtAddress"), write(u"cboDataType")};
constexpr Step applyVesperSteps[] = {call(applyVesper), write(u"cbShowProgress")};
constexpr Step applyScriptSteps[] = {call(applyScript)};

/// An action: its entry in the list, its TYPE, the frame with its fields, and how those are filled and stored.
struct ActionRow
{
    QStringView entry;
    QStringView type;
    QStringView frame;
    bool choosesFirst; ///< the entry is chosen before the fields are filled
    std::span<const Step> fill;
    std::span<const Step> apply;
};

constexpr ActionRow actions[] = {
    {u"Set Channel", u"SET", u"fraSet", false, fillSetSteps, applySetSteps},
    {u"Put Value", u"PUT", u"fraPut", false, fillPut, applyPut},
    {u"Vesper", u"VESPER", u"fraVesperV4", true, fillVesper, applyVesperSteps},
    {u"Run Script", u"SCRIPT", u"fraScript", true, fillScriptSteps, applyScriptSteps},
};

struct FunctionRow
{
    QStringView entry;
    QStringView function;
};

constexpr FunctionRow functions[] = {
    {u"Connect", u"CONNECT"},
    {u"Program", u"PROGRAM"},
    {u"Unload", u"UNLOAD"},
};

constexpr QStringView tabs[] = {u"&Actions", u"&Format"};

constexpr FieldRow fields[] = {
    {.name = u"Label1", .kind = FieldKind::Caption, .caption = u"Actions"},
    {.name = u"cboActions", .kind = FieldKind::DropDown, .caption = u"Actions", .click = actionClicked},
    {.name = u"cbHide",
     .kind = FieldKind::CheckBox,
     .caption = u"&Hide when Protected",
     .at = At::Node,
     .value = &element::HideWhenProtected,
     .as = As::OneOrZero,
     .fallback = u"0"},

    {.name = u"fraSet", .kind = FieldKind::Frame, .caption = u"Set channel ", .spot = 1},
    {.name = u"txtFilter",
     .kind = FieldKind::Filter,
     .toolTip = u"Show only channels whose label, key or window contains this",
     .frame = u"fraSet"},
    {.name = ChannelListName, .kind = FieldKind::ChannelList, .spoken = u"Channel", .frame = u"fraSet"},

    {.name = u"fraPut", .kind = FieldKind::Frame, .caption = u"PUT value to datalogger", .spot = 1},
    {.name = u"txtValue",
     .kind = FieldKind::Text,
     .caption = u"Value",
     .frame = u"fraPut",
     .at = At::Action,
     .value = &element::PutValue,
     .fallback = u"0"},
    {.name = u"txtAddress",
     .kind = FieldKind::Text,
     .caption = u"Address",
     .frame = u"fraPut",
     .at = At::Action,
     .value = &element::PutAddress,
     .as = As::Double,
     .fallback = u"0"},
    {.name = u"cboDataType",
     .kind = FieldKind::DropDown,
     .caption = u"Data Type",
     .frame = u"fraPut",
     .at = At::Action,
     .value = &element::PutDataType,
     .as = As::Index,
     .fallback = u"0"},

    {.name = u"fraVesperV4", .kind = FieldKind::Frame, .caption = u"VesperV4 Functions", .spot = 1},
    {.name = u"cboFunction",
     .kind = FieldKind::DropDown,
     .caption = u"Function",
     .frame = u"fraVesperV4",
     .at = At::Action,
     .value = &element::Function,
     .as = As::Entry,
     .fallback = u"CONNECT"},
    {.name = u"cbShowProgress",
     .kind = FieldKind::CheckBox,
     .caption = u"&Show Progress",
     .frame = u"fraVesperV4",
     .at = At::Action,
     .value = &element::ShowProgress,
     .as = As::OneOrZero,
     .fallback = u"1",
     .force = true},

    {.name = u"fraScript", .kind = FieldKind::Frame, .caption = u"Execute Script", .spot = 1},
    {.name = u"txtScript", .kind = FieldKind::MultilineText, .frame = u"fraScript"},

    {.name = u"txtCaption",
     .kind = FieldKind::Text,
     .caption = u"Caption",
     .tab = 1,
     .at = At::Node,
     .value = &name::Caption,
     .reads = Source::Property},
    tooltipField,
    fontButton,
    {.name = u"Frame1", .kind = FieldKind::Frame, .caption = u"Example", .tab = 1},
    {.name = u"cmdExample", .kind = FieldKind::Button, .caption = u"Command Button", .tab = 1, .frame = u"Frame1"},

    okButton,
    cancelButton,
    applyButton,
};

void fillList(SetupForm& form, Field& list, const auto& rows)
{
    for (const auto& row : rows)
        form.addRow(list, {.text = row.entry.toString(), .key = {}, .parent = {}});
    form.listFilled(list);
}

void fillLists(SetupForm& form)
{
    fillList(form, form.field(u"cboActions"), actions);
    fillList(form, form.field(u"cboFunction"), functions);
    fillDataTypes(form, form.field(u"cboDataType"));
    form.setText(form.field(u"txtValue"), QStringLiteral("0"));
    form.setText(form.field(u"txtAddress"), QStringLiteral("0"));
}

/// The frame of the chosen action is enabled and in front of the others, which are not hidden.
void actionClicked(SetupForm& form, Field& field)
{
    for (std::size_t place = 0; place < std::size(actions); ++place) {
        Field& frame = form.field(actions[place].frame);
        const bool isChosen = int(place) == field.listIndex();
        form.setEnabled(frame, isChosen);
        if (isChosen)
            form.bringToFront(frame);
    }
}

// Filling ------------------------------------------------------------------------------------------------------

void showExample(SetupForm& form)
{
    form.setFont(form.field(u"cmdExample"), form.editFont);
}

/// From here on failures are passed over to the end of the filling.
void fillSet(SetupForm& form)
{
    form.setSkipsFailures(true);
    form.statement([&form] { selectBoundChannel(form); });
}

/// A line break is stored as the two characters \n, a tab as \t.
void fillScript(SetupForm& form)
{
    QString script = GetAttribute(form.action(), element::Script);
    script.replace(QLatin1String("\\n"), QLatin1String("\r\n")).replace(QLatin1String("\\t"), QLatin1String("\t"));
    form.setText(form.field(u"txtScript"), script);
}

/// Only the fields of the action that the button has are filled.
void fillAction(SetupForm& form)
{
    const QString type = GetAttribute(form.action(), element::Type, QStringLiteral("SET"));
    Field& list = form.field(u"cboActions");
    for (std::size_t place = 0; place < std::size(actions); ++place) {
        if (actions[place].type != type)
            continue;
        if (actions[place].choosesFirst)
            form.select(list, int(place));
        form.run(actions[place].fill);
        if (!actions[place].choosesFirst)
            form.statement([&] { form.select(list, int(place)); });
        return;
    }
}

constexpr Step begin[] = {call(fillLists)};

constexpr Step fill[] = {
    call(takeFont),   call(fillChannelList), load(u"txtCaption"), call(ensureAction), load(u"cbHide"),
    call(fillAction), call(takeFont),        load(TooltipName),   call(showExample),
};

// Applying -----------------------------------------------------------------------------------------------------

/// COMPAT: the channel that was bound before keeps its count, so that each Apply of one channel adds 1.
void applySet(SetupForm& form)
{
    const ListRow* row = form.field(ChannelListName).selectedRow();
    const Ref<wrappers::iBenchControl> control = form.control();
    const QString key = row ? row->key : QString();
    control->setChannel(site::findChannel(form.windows(), key));
    if (const Ref<site::Channel> channel = control->Channel(); row && channel)
        countUse(form, *channel, 1);
}

void applyVesper(SetupForm& form)
{
    const int chosen = form.field(u"cboFunction").listIndex();
    const QString function =
        chosen >= 0 && chosen < int(std::size(functions)) ? functions[chosen].function.toString() : QString();
    SetAttribute(form.action(), element::Function, function);
}

void applyScript(SetupForm& form)
{
    QString script = form.field(u"txtScript").text();
    script.replace(QLatin1String("\r\n"), QLatin1String("\\n")).replace(QLatin1String("\t"), QLatin1String("\\t"));
    SetAttribute(form.action(), element::Script, script);
}

/// What another action has stored stays: TYPE alone says what counts.
void applyAction(SetupForm& form)
{
    const int chosen = form.field(u"cboActions").listIndex();
    if (chosen < 0 || chosen >= int(std::size(actions)))
        return;
    SetAttribute(form.action(), element::Type, actions[chosen].type.toString());
    form.run(actions[chosen].apply);
}

constexpr Step apply[] = {
    call(applyFont),  write(TooltipName), put(u"txtCaption"), write(u"txtCaption"),
    write(u"cbHide"), call(ensureAction), call(applyAction),
};

} // namespace

const FormDescription frmCmd{
    .name = u"frmCmd",
    .title = u"Command Button Setup",
    .width = 5385,
    .height = 6570,
    .isCentred = true,
    .tabs = tabs,
    .fields = fields,
    .escape = u"cmdApply", // COMPAT: Esc writes the settings and leaves the form open
    .begin = begin,
    .fill = fill,
    .apply = apply,
    .showExample = showExample,
};

} // namespace zan::dialogs
