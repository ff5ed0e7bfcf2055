#include "livedata/Scan.h"

#include "livedata/BarDisplay.h"
#include "livedata/StatusDisplay.h"
#include "livedata/TextDisplay.h"

#include <QStringView>

#include <algorithm>
#include <array>

namespace zan::livedata {

namespace {

using controls::BenchControls;
using controls::iBenchControl;

constexpr QStringView StatusLightType = u"ZanBenchWindow.StatusLight";

using Routine = void (*)(iBenchControl& control, BenchControls& controls);

struct ScanRow
{
    QStringView type;
    Routine routine;
};

// Types are told apart exactly, case included; a type without a row is passed over.
constexpr std::array<ScanRow, 6> scanTable{{
    {u"VB.CheckBox", [](iBenchControl& control, BenchControls&) { UpdateCheckBox(control); }},
    {u"VB.Label", [](iBenchControl& control, BenchControls&) { UpdateLabel(control); }},
    {u"VB.TextBox", [](iBenchControl& control, BenchControls&) { UpdateTextBox(control); }},
    {u"MSComctlLib.ProgressBar", [](iBenchControl& control, BenchControls&) { UpdateProgressBar(control); }},
    {StatusLightType,
     [](iBenchControl& control, BenchControls& controls) { UpdateStatusLight(control, controls); }},
    {u"ZanBenchWindow.ValueBar",
     [](iBenchControl& control, BenchControls& controls) { UpdateValueBar(control, controls); }},
}};

} // namespace

void Scan::update(controls::iBenchControl& control, controls::BenchControls& controls)
{
    const QString type = control.ControlType();
    const auto row = std::find_if(scanTable.begin(), scanTable.end(),
                                  [&](const ScanRow& candidate) { return candidate.type == type; });
    if (row != scanTable.end())
        row->routine(control, controls);
}

void Scan::followLink(controls::iBenchControl& control, int state)
{
    if (control.ControlType() == StatusLightType)
        FollowLink(control, state);
}

void Scan::feedRecords(controls::iBenchControl&, controls::BenchControls&)
{
    // No control type on a panel shows log buffers yet.
}

} // namespace zan::livedata
