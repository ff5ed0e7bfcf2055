#include "livedata/Scan.h"

namespace zan::livedata {

using wrappers::ControlType;

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

bool Scan::mayRest(const wrappers::iBenchControl& control)
{
    const ControlType* type = typeOf(control);
    return !type || (type->live.due == wrappers::UpdateDue::AfterAChange && !isWaiting(control));
}

bool Scan::isWaiting(const wrappers::iBenchControl& control)
{
    const ControlType* type = typeOf(control);
    return type && type->live.isWaiting && type->live.isWaiting(control);
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
