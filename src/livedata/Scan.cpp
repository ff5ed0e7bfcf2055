#include "livedata/Scan.h"

#include "livedata/TextDisplay.h"

#include <QStringView>

#include <algorithm>
#include <array>

namespace zan::livedata {

namespace {

using Routine = void (*)(controls::iBenchControl& control, controls::BenchControls& controls);

struct ScanRow
{
    QStringView type;
    Routine routine;
};

// Types are told apart exactly, case included; a type without a row is passed over.
constexpr std::array<ScanRow, 2> scanTable{{
    {u"VB.Label", [](controls::iBenchControl& control, controls::BenchControls&) { UpdateLabel(control); }},
    {u"VB.TextBox", [](controls::iBenchControl& control, controls::BenchControls&) { UpdateTextBox(control); }},
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

void Scan::followLink(controls::iBenchControl&, int)
{
    // No control type on a panel follows the link outside the scan yet.
}

void Scan::feedRecords(controls::iBenchControl&, controls::BenchControls&)
{
    // No control type on a panel shows log buffers yet.
}

} // namespace zan::livedata
