#include "livedata/Scan.h"

#include "document/Elements.h"
#include "livedata/BarDisplay.h"
#include "livedata/StatusDisplay.h"
#include "livedata/TextDisplay.h"

#include <QStringView>

#include <algorithm>
#include <array>

namespace zan::livedata {

namespace {

using wrappers::BenchControls;
using wrappers::iBenchControl;

constexpr QStringView StatusLightType = u"ZanBenchWindow.StatusLight";

using Routine = void (*)(iBenchControl& control, BenchControls& controls);

/// What else than its channel and its own properties an update reads.
enum class Reads {
    LabelElements, ///< SHOWLABELS and ADDLABELSEPERATORS of the node
    NoElement,
    Anything, ///< or it writes whether anything has changed or not
};

struct ScanRow
{
    QStringView type;
    Routine routine;
    Reads reads;
};

// Types are told apart exactly, case included; a type without a row is passed over.
constexpr std::array<ScanRow, 6> scanTable{{
    {u"VB.CheckBox", [](iBenchControl& control, BenchControls&) { UpdateCheckBox(control); }, Reads::Anything},
    {u"VB.Label", [](iBenchControl& control, BenchControls&) { UpdateLabel(control); }, Reads::LabelElements},
    {u"VB.TextBox", [](iBenchControl& control, BenchControls&) { UpdateTextBox(control); }, Reads::NoElement},
    {u"MSComctlLib.ProgressBar", [](iBenchControl& control, BenchControls&) { UpdateProgressBar(control); },
     Reads::NoElement},
    {StatusLightType, [](iBenchControl& control, BenchControls& controls) { UpdateStatusLight(control, controls); },
     Reads::Anything},
    {u"ZanBenchWindow.ValueBar",
     [](iBenchControl& control, BenchControls& controls) { UpdateValueBar(control, controls); }, Reads::Anything},
}};

const ScanRow* rowOf(const iBenchControl& control)
{
    const QString type = control.ControlType();
    const auto row = std::find_if(scanTable.begin(), scanTable.end(),
                                  [&](const ScanRow& candidate) { return candidate.type == type; });
    return row == scanTable.end() ? nullptr : &*row;
}

/// Watches the text of a child; false when it holds elements, whose changes would not be noticed.
bool watchText(const document::Node& node, values::Name name)
{
    const document::Node child = node.child(name);
    child.watch(document::Node::Watch::Display);
    return !child.firstChildElement();
}

} // namespace

void Scan::update(wrappers::iBenchControl& control, wrappers::BenchControls& controls)
{
    if (const ScanRow* row = rowOf(control))
        row->routine(control, controls);
}

bool Scan::watch(const wrappers::iBenchControl& control)
{
    namespace element = document::element;
    const document::Node node = control.XMLNode();
    const ScanRow* row = rowOf(control);
    if (!node || (row && row->reads == Reads::Anything))
        return false;
    node.watch(document::Node::Watch::Display); // elements that are not there yet may come
    bool isPlain = watchText(node, element::Type);
    if (row && row->reads == Reads::LabelElements) {
        for (const values::Name name : {element::ShowLabels, element::AddLabelSeperators})
            isPlain = watchText(node, name) && isPlain;
    }
    return isPlain;
}

void Scan::followLink(wrappers::iBenchControl& control, int state)
{
    if (control.ControlType() == StatusLightType)
        FollowLink(control, state);
}

void Scan::feedRecords(wrappers::iBenchControl&, wrappers::BenchControls&)
{
    // No control type on a panel shows log buffers yet.
}

} // namespace zan::livedata
