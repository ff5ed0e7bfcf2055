#pragma once

#include "display/DisplayWidget.h"
#include "display/StatusLightControl.h"

namespace zan::display {

/// The status light as a widget, for a host that has no panel. Everything but the events is at control().
class StatusLight : public DisplayWidget
{
    Q_OBJECT
public:
    explicit StatusLight(QWidget* parent = nullptr);
    StatusLightControl& control() const noexcept { return static_cast<StatusLightControl&>(displayControl()); }
};

} // namespace zan::display
