#include "window/ControlTypes.h"

#include "dialogs/SetupForms.h"
#include "display/SiteMapControl.h"
#include "display/StatusLightControl.h"
#include "display/ValueBarControl.h"
#include "livedata/BarDisplay.h"
#include "livedata/GraphFeed.h"
#include "livedata/RestrictionDisplay.h"
#include "livedata/StatusDisplay.h"
#include "livedata/TextDisplay.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/OptionButton.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/Shape.h"
#include "surface/intrinsic/TextBox.h"
#include "wrappers/ZanGraphControl.h"

#include <array>
#include <type_traits>

namespace zan::window {

using wrappers::BenchControls;
using wrappers::ControlType;
using wrappers::iBenchControl;
using wrappers::LockBorder;
using wrappers::OnClick;
using wrappers::OnDoubleClick;
using wrappers::OnDrop;
using wrappers::OnPress;
using wrappers::UpdateDue;
using namespace display;
using namespace livedata;
using namespace surface;

namespace {

template <class Control>
values::Ref<LiveControl> make()
{
    return values::make<Control>();
}

template <class Wrapper>
values::Ref<wrappers::BenchControl> wrap()
{
    return values::make<Wrapper>();
}

/// A routine of the live data in the form of the table; some need no more than the control.
template <auto Routine>
void by(iBenchControl& control, [[maybe_unused]] BenchControls& controls)
{
    if constexpr (std::is_invocable_v<decltype(Routine), iBenchControl&>)
        Routine(control);
    else
        Routine(control, controls);
}

constexpr unsigned Font = wrappers::CopiesFont;
constexpr unsigned Back = wrappers::CopiesBackColor;
constexpr unsigned Fore = wrappers::CopiesForeColor;

constexpr std::array<ControlType, 13> table{{
    {.key = u"VB.Label",
     .menuCaption = u"&Label",
     .arrayName = u"Label",
     .design = {4560, 1560, 825, 225},
     .create = make<Label>,
     .styling = Font | Fore | wrappers::ShowsBorderWhenUnlocked | wrappers::ClearsCaption,
     .restylesTemplate = true,
     .border = LockBorder{0, 1},
     .press = OnPress::HostDrag,
     .selectsOnHover = true,
     .drop = OnDrop::MovesIt,
     .live = {.update = by<UpdateLabel>,
              .isWaiting = WaitsForRestrictions,
              .writes = {u"Caption"},
              .tellsOfNoValue = true},
     .setup = &dialogs::frmChannel},
    {.key = u"VB.TextBox",
     .menuCaption = u"&Text Box",
     .arrayName = u"Text",
     .design = {4560, 960, 1335, 285},
     .create = make<TextBox>,
     .styling = Font | Fore | wrappers::ClearsText,
     .restylesTemplate = true,
     .click = OnClick::ClearsSelection,
     .doubleClick = OnDoubleClick::SetsChannel,
     .press = OnPress::SystemMove,
     .selectsOnHover = true,
     .selectsOnFocus = true,
     .live = {.update = by<UpdateTextBox>, .writes = {u"Text"}, .tellsOfNoValue = true},
     .setup = &dialogs::frmChannel},
    {.key = u"VB.CommandButton",
     .menuCaption = u"&Command Button",
     .arrayName = u"CommandButton",
     .design = {4560, 240, 1215, 375},
     .create = make<CommandButton>,
     .styling = Font | Back | wrappers::ClearsCaption,
     .restylesTemplate = true,
     .click = OnClick::RunsAction,
     .wearsLinkState = true,
     .press = OnPress::SystemMove,
     .selectsOnHover = true,
     .selectsOnFocus = true,
     .setup = &dialogs::frmCmd},
    {.key = u"VB.Picture",
     .menuCaption = u"&Picture",
     .arrayName = u"Pic",
     .design = {2400, 480, 1815, 1095},
     .create = make<PictureBox>,
     .restylesTemplate = true,
     .click = OnClick::ClearsSelection,
     .press = OnPress::SystemMove,
     .setup = &dialogs::frmPicture},
    {.key = u"VB.CheckBox",
     .menuCaption = u"&Checkbox",
     .arrayName = u"cbCheck",
     .design = {4560, 1320, 1095, 195},
     .create = make<CheckBox>,
     .styling = Font | Back | Fore | wrappers::ClearsCaption,
     .restylesTemplate = true,
     .click = OnClick::HoldsScanAndRunsAction,
     .press = OnPress::SystemMove,
     .selectsOnHover = true,
     .selectsOnFocus = true,
     .drop = OnDrop::PassesOnToSurface,
     .live = {.update = by<UpdateCheckBox>,
              .due = UpdateDue::AtEachScan,
              .writes = {u"Enabled", u"Value", u"Caption"}},
     .setup = &dialogs::frmCheckBox},
    // A shape has no window: the surface's own mouse routines serve it.
    {.key = u"VB.Shape",
     .menuCaption = u"&Shape",
     .arrayName = u"Shape",
     .design = {240, 2400, 2655, 1215},
     .create = make<Shape>,
     .border = LockBorder{1, 4}},
    {.key = u"ZanDataControls.ENTViewer",
     .menuCaption = u"Log &Buffer",
     .arrayName = u"ENT",
     .design = {3240, 1920, 3255, 1815},
     .styling = wrappers::OwnSettings | wrappers::TakesLogger,
     .press = OnPress::HostDrag,
     .selectsOnHover = true,
     .drop = OnDrop::MovesIt},
    {.key = u"ZanBenchWindow.StatusLight",
     .menuCaption = u"S&tatus Light",
     .arrayName = u"StatusLight1",
     .design = {240, 1800, 975, 255},
     .create = make<StatusLightControl>,
     .styling = Font,
     .press = OnPress::HostDrag,
     .selectsOnHover = true,
     .drop = OnDrop::MovesIt,
     .live = {.update = by<UpdateStatusLight>,
              .due = UpdateDue::AtEachScan,
              .followLink = FollowLink,
              .writes = {u"Value"}},
     .setup = &dialogs::frmStatusLight},
    {.key = u"ZanDataControls.ZanGraph",
     .menuCaption = u"&Graph",
     .arrayName = u"ZanGraph1",
     .design = {240, 3840, 4935, 1815},
     .wrap = wrap<wrappers::ZanGraphControl>,
     .styling = Font | wrappers::OwnSettings,
     .press = OnPress::HostDrag,
     .selectsOnHover = true,
     .live = {.feedRecords = FeedGraph},
     .setup = &dialogs::frmGraph},
    {.key = u"MSComctlLib.ProgressBar",
     .menuCaption = u"Progress &Bar",
     .arrayName = u"pbar",
     .design = {7680, 2040, 495, 3405},
     .create = make<ProgressBar>,
     .press = OnPress::SystemMove,
     .selectsOnHover = true,
     .live = {.update = by<UpdateProgressBar>, .writes = {u"Value", u"ToolTipText"}},
     .setup = &dialogs::frmProgressBar},
    {.key = u"ZanBenchWindow.ValueBar",
     .menuCaption = u"&Value Bar",
     .arrayName = u"ValueBar",
     .design = {5880, 600, 1695, 5055},
     .create = make<ValueBarControl>,
     .styling = Font,
     .press = OnPress::HostDrag,
     .selectsOnHover = true,
     .drop = OnDrop::MovesIt,
     .live = {.update = by<UpdateValueBar>,
              .due = UpdateDue::AtEachScan,
              .writes = {u"Value", u"HighLimit", u"LowLimit", u"ToolTipText"}},
     .setup = &dialogs::frmValueBar},
    {.key = u"VB.OptionButton",
     .menuCaption = u"",
     .arrayName = u"obOption",
     .design = {4560, 720, 1095, 255},
     .create = make<OptionButton>,
     .styling = Font | Back | Fore | wrappers::ClearsCaption,
     .restylesTemplate = true,
     .click = OnClick::ClearsSelection,
     .press = OnPress::SystemMove,
     .selectsOnHover = true,
     .selectsOnFocus = true},
    {.key = SiteMapType,
     .menuCaption = u"",
     .arrayName = u"SiteMap1",
     .design = {360, -120, 1695, 3495},
     .create = make<SiteMapControl>,
     .isSingle = true,
     .press = OnPress::HostDrag,
     .selectsOnHover = true,
     .drop = OnDrop::MovesIt},
}};

} // namespace

wrappers::ControlTypes controlTypes()
{
    return std::span<const ControlType>(table);
}

} // namespace zan::window
