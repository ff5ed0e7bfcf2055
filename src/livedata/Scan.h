#pragma once

#include "controls/PanelWindow.h"

namespace zan::livedata {

/// Refreshes a panel's controls from their channels and from the link, by control type.
class Scan : public controls::LiveData
{
public:
    void update(controls::iBenchControl& control, controls::BenchControls& controls) override;
    bool watch(const controls::iBenchControl& control) override;
    void followLink(controls::iBenchControl& control, int state) override;
    void feedRecords(controls::iBenchControl& control, controls::BenchControls& controls) override;
};

} // namespace zan::livedata
