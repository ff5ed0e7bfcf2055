#pragma once

#include "wrappers/PanelWindow.h"

namespace zan::livedata {

/// Refreshes a panel's controls from their channels and from the link, by control type.
class Scan : public wrappers::LiveData
{
public:
    void update(wrappers::iBenchControl& control, wrappers::BenchControls& controls) override;
    bool watch(const wrappers::iBenchControl& control) override;
    void followLink(wrappers::iBenchControl& control, int state) override;
    void feedRecords(wrappers::iBenchControl& control, wrappers::BenchControls& controls) override;
};

} // namespace zan::livedata
