#include "livedata/Scan.h"

#include "document/Elements.h"

namespace zan::livedata {

using wrappers::ControlType;
using wrappers::Reads;

namespace {

/// Watches the text of a child; false when it holds elements, whose changes would not be noticed.
bool watchText(const document::Node& node, values::Name name)
{
    const document::Node child = node.child(name);
    child.watch(document::Node::Watch::Display);
    return !child.firstChildElement();
}

} // namespace

const ControlType* Scan::typeOf(const wrappers::iBenchControl& control) const
{
    return m_types.find(control.ControlType());
}

void Scan::update(wrappers::iBenchControl& control, wrappers::BenchControls& controls)
{
    const ControlType* type = typeOf(control);
    if (type && type->live.update)
        type->live.update(control, controls);
}

bool Scan::watch(const wrappers::iBenchControl& control)
{
    namespace element = document::element;
    const document::Node node = control.XMLNode();
    const ControlType* type = typeOf(control);
    if (!node || (type && type->live.reads == Reads::Anything))
        return false;
    node.watch(document::Node::Watch::Display); // elements that are not there yet may come
    bool isPlain = watchText(node, element::Type);
    if (type && type->live.reads == Reads::LabelElements) {
        for (const values::Name name : {element::ShowLabels, element::AddLabelSeperators})
            isPlain = watchText(node, name) && isPlain;
    }
    return isPlain;
}

void Scan::followLink(wrappers::iBenchControl& control, int state)
{
    const ControlType* type = typeOf(control);
    if (type && type->live.followLink)
        type->live.followLink(control, state);
}

void Scan::feedRecords(wrappers::iBenchControl& control, wrappers::BenchControls& controls)
{
    const ControlType* type = typeOf(control);
    if (type && type->live.feedRecords)
        type->live.feedRecords(control, controls);
}

} // namespace zan::livedata
