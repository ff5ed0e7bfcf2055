#include "dialogs/FormSteps.h"
#include "dialogs/SetupForms.h"
#include "document/Elements.h"
#include "document/XMLOps.h"

/// "Status Light Setup": what decides a light's state, a comparison with a channel or the logger link, and how each of
/// its two states looks.
namespace zan::dialogs {

namespace element = document::element;
using document::XMLOps::GetAttribute;
using document::XMLOps::SetAttribute;

namespace {

constexpr QStringView tabs[] = {u"&Actions", u"&Format"};

// What the document stores, compared exactly.
const QString ChannelMode = QStringLiteral("CHANNEL");
const QString ProgramMode = QStringLiteral("PROGRAM");
const QString ConnectionStatus = QStringLiteral("CONNECTIONSTATUS");
const QString DataStatus = QStringLiteral("DATASTATUS");

constexpr QStringView comparisons[] = {u"<", u"<=", u"=", u">=", u">", u"NOT=", u"BIT SET=", u"BIT CLEAR="};

void showChannelFrame(SetupForm& form, Field&)
{
    form.setVisible(form.field(u"fraChannel"), true);
    form.setVisible(form.field(u"fraProgram"), false);
}

void showProgramFrame(SetupForm& form, Field&)
{
    form.setVisible(form.field(u"fraProgram"), true);
    form.setVisible(form.field(u"fraChannel"), false);
}

constexpr FieldRow fields[] = {
    {.name = u"obChannel", .kind = FieldKind::Option, .caption = u"Channel Status", .click = showChannelFrame},
    {.name = u"obProgram",
     .kind = FieldKind::Option,
     .caption = u"Program Status",
     .beside = true,
     .click = showProgramFrame},

    {.name = u"fraChannel", .kind = FieldKind::Frame, .caption = u"Channel", .spot = 1},
    {.name = channelFilter.name,
     .kind = channelFilter.kind,
     .toolTip = channelFilter.toolTip,
     .frame = u"fraChannel"},
    {.name = ChannelListName, .kind = FieldKind::ChannelList, .spoken = u"Channel", .frame = u"fraChannel"},
    // One line that reads as a condition.
    {.name = u"lblChannel", .kind = FieldKind::Caption, .caption = u"Channel", .frame = u"fraChannel"},
    {.name = u"cboComparison",
     .kind = FieldKind::DropDown,
     .spoken = u"Comparison",
     .frame = u"fraChannel",
     .at = At::Node,
     .value = &element::Comparison,
     .as = As::Entry,
     .fallback = u"="},
    {.name = u"txtValue",
     .kind = FieldKind::Text,
     .spoken = u"Value",
     .frame = u"fraChannel",
     .beside = true,
     .at = At::Node,
     .value = &element::CompareValue,
     .fallback = u"0"},

    {.name = u"fraProgram", .kind = FieldKind::Frame, .caption = u"Program", .spot = 1, .visible = false},
    {.name = u"obConStat", .kind = FieldKind::Option, .caption = u"Connected", .frame = u"fraProgram"},
    {.name = u"obDataStat", .kind = FieldKind::Option, .caption = u"Data Valid", .frame = u"fraProgram"},

    // COMPAT: the caption of the one state comes from the live control, that of the other from the document.
    {.name = u"txtTRUECaption",
     .kind = FieldKind::Text,
     .caption = u"TRUE caption",
     .at = At::Node,
     .value = &element::TrueCaption,
     .force = true,
     .reads = Source::Property},
    {.name = u"picTRUEColour",
     .kind = FieldKind::Swatch,
     .caption = u"TRUE Colour",
     .at = At::Node,
     .value = &element::TrueColour,
     .as = As::Colour,
     .fallback = u"255",
     .doubleClick = pickSwatchColour},
    {.name = u"cbHideWhenTrue",
     .kind = FieldKind::CheckBox,
     .caption = u"Hide",
     .spoken = u"Hide when TRUE",
     .beside = true,
     .at = At::Node,
     .value = &element::HideWhenTrue,
     .as = As::Flag,
     .fallback = u"0",
     .force = true},
    {.name = u"txtFALSECaption",
     .kind = FieldKind::Text,
     .caption = u"FALSE caption",
     .at = At::Node,
     .value = &element::FalseCaption,
     .fallback = u"FALSE",
     .force = true},
    {.name = u"picFALSEColour",
     .kind = FieldKind::Swatch,
     .caption = u"FALSE Colour",
     .at = At::Node,
     .value = &element::FalseColour,
     .as = As::Colour,
     .fallback = u"128",
     .doubleClick = pickSwatchColour},
    {.name = u"cbHideWhenFalse",
     .kind = FieldKind::CheckBox,
     .caption = u"Hide",
     .spoken = u"Hide when FALSE",
     .beside = true,
     .at = At::Node,
     .value = &element::HideWhenFalse,
     .as = As::Flag,
     .fallback = u"0",
     .force = true},
    {.name = u"cbFlash",
     .kind = FieldKind::CheckBox,
     .caption = u"Flash when TRUE",
     .at = At::Node,
     .value = &element::Flash,
     .as = As::Flag,
     .fallback = u"0",
     .force = true},

    tooltipField,
    fontButton,
    {.name = u"Frame1", .kind = FieldKind::Frame, .caption = u"Example", .tab = 1},
    {.name = u"lblExample", .kind = FieldKind::Label, .caption = u"EXAMPLE", .tab = 1, .frame = u"Frame1"},

    okButton,
    cancelButton,
    applyButton,
};

void showExample(SetupForm& form)
{
    form.setFont(form.field(u"lblExample"), form.editFont);
}

void fillComparisons(SetupForm& form)
{
    Field& list = form.field(u"cboComparison");
    for (const QStringView comparison : comparisons)
        form.addRow(list, {.text = comparison.toString(), .key = {}, .parent = {}});
    form.listFilled(list);
}

constexpr Step begin[] = {call(fillComparisons)};

void loadMode(SetupForm& form)
{
    const bool isChannel = GetAttribute(form.node(), element::Mode, ChannelMode) == ChannelMode;
    form.choose(form.field(isChannel ? u"obChannel" : u"obProgram"));
}

void loadProgram(SetupForm& form)
{
    const bool isData = GetAttribute(form.node(), element::Program, ConnectionStatus) == DataStatus;
    form.choose(form.field(isData ? u"obDataStat" : u"obConStat"));
}

constexpr Step fill[] = {
    call(takeFont),           call(fillChannelList),    call(selectBoundChannel), call(loadMode),
    call(loadProgram),        load(u"txtValue"),        load(u"cboComparison"),   load(u"txtTRUECaption"),
    load(u"txtFALSECaption"), load(u"picTRUEColour"),   load(u"picFALSEColour"),  load(u"cbFlash"),
    load(u"cbHideWhenTrue"),  load(u"cbHideWhenFalse"), call(takeFont),           load(TooltipName),
    call(showExample),
};

void writeMode(SetupForm& form)
{
    SetAttribute(form.node(), element::Mode, form.field(u"obChannel").isChecked() ? ChannelMode : ProgramMode);
}

void writeProgram(SetupForm& form)
{
    SetAttribute(form.node(), element::Program,
                 form.field(u"obDataStat").isChecked() ? DataStatus : ConnectionStatus);
}

// What stands in the frame that is hidden is written all the same.
constexpr Step apply[] = {
    call(applyFont),           write(TooltipName),       call(bindSelectedChannel), put(u"txtTRUECaption"),
    put(u"txtFALSECaption"),   put(u"picTRUEColour"),    put(u"picFALSEColour"),    put(u"cbFlash"),
    write(u"cboComparison"),   write(u"txtValue"),       write(u"txtTRUECaption"),  write(u"txtFALSECaption"),
    write(u"picTRUEColour"),   write(u"picFALSEColour"), write(u"cbFlash"),         write(u"cbHideWhenTrue"),
    write(u"cbHideWhenFalse"), call(writeMode),          call(writeProgram),
};

} // namespace

const FormDescription frmStatusLight{
    .name = u"frmStatusLight",
    .title = u"Status Light Setup",
    .width = 5385,
    .height = 6615,
    .tabs = tabs,
    .fields = fields,
    .escape = u"cmdApply", // COMPAT: Esc writes the settings and leaves the form open
    .begin = begin,
    .fill = fill,
    .skipsFailures = true,
    .apply = apply,
    .showExample = showExample,
};

} // namespace zan::dialogs
