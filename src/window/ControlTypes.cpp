#include "window/ControlTypes.h"

#include <algorithm>
#include <array>

namespace zan::window {

namespace {

constexpr unsigned CopiesAll = CopiesFont | CopiesBackColor | CopiesForeColor;

constexpr std::array<ControlType, 13> table{{
    {u"VB.Label", u"&Label", u"Label", 4560, 1560, 825, 225,
     CopiesFont | CopiesForeColor | ShowsBorderWhenUnlocked | ClearsCaption},
    {u"VB.TextBox", u"&Text Box", u"Text", 4560, 960, 1335, 285, CopiesFont | CopiesForeColor | ClearsText},
    {u"VB.CommandButton", u"&Command Button", u"CommandButton", 4560, 240, 1215, 375,
     CopiesFont | CopiesBackColor | ClearsCaption},
    {u"VB.Picture", u"&Picture", u"Pic", 2400, 480, 1815, 1095, NoStyling},
    {u"VB.CheckBox", u"&Checkbox", u"cbCheck", 4560, 1320, 1095, 195, CopiesAll | ClearsCaption},
    {u"VB.Shape", u"&Shape", u"Shape", 240, 2400, 2655, 1215, NoStyling},
    {u"ZanDataControls.ENTViewer", u"Log &Buffer", u"ENT", 3240, 1920, 3255, 1815, OwnSettings | TakesLogger},
    {u"ZanBenchWindow.StatusLight", u"S&tatus Light", u"StatusLight1", 240, 1800, 975, 255, CopiesFont},
    {u"ZanDataControls.ZanGraph", u"&Graph", u"ZanGraph1", 240, 3840, 4935, 1815, CopiesFont | OwnSettings},
    {u"MSComctlLib.ProgressBar", u"Progress &Bar", u"pbar", 7680, 2040, 495, 3405, NoStyling},
    {u"ZanBenchWindow.ValueBar", u"&Value Bar", u"ValueBar", 5880, 600, 1695, 5055, CopiesFont},
    {u"VB.OptionButton", u"", u"obOption", 4560, 720, 1095, 255, CopiesAll | ClearsCaption},
    {u"SITEMAP", u"", u"SiteMap1", 360, -120, 1695, 3495, NoStyling},
}};

} // namespace

std::span<const ControlType> controlTypes()
{
    return table;
}

const ControlType* findControlType(QStringView key)
{
    const auto row =
        std::find_if(table.begin(), table.end(), [&](const ControlType& type) { return type.key == key; });
    return row == table.end() ? nullptr : &*row;
}

} // namespace zan::window
