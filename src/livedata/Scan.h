#pragma once

#include "wrappers/ControlType.h"
#include "wrappers/PanelWindow.h"

namespace zan::livedata {

/// Refreshes a panel's controls from their channels and from the link, by the routines in the row of their type. A
/// type without a row or without the routine is passed over.
class Scan : public wrappers::LiveData
{
public:
    explicit Scan(wrappers::ControlTypes types)
        : m_types(types)
    {}
    void update(wrappers::iBenchControl& control, wrappers::BenchControls& controls) override;
    bool mayRest(const wrappers::iBenchControl& control) override;
    bool isWaiting(const wrappers::iBenchControl& control) override;
    void followLink(wrappers::iBenchControl& control, int state) override;
    void feedRecords(wrappers::iBenchControl& control, wrappers::BenchControls& controls) override;

private:
    const wrappers::ControlType* typeOf(const wrappers::iBenchControl& control) const;

    wrappers::ControlTypes m_types;
};

} // namespace zan::livedata
