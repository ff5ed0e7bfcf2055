#pragma once

#include "display/DisplayWidget.h"
#include "display/ValueBarControl.h"

namespace zan::display {

/// The value bar as a widget, for a host that has no panel. Everything but the events is at control().
class ValueBar : public DisplayWidget
{
    Q_OBJECT
public:
    explicit ValueBar(QWidget* parent = nullptr);
    ValueBarControl& control() const noexcept { return static_cast<ValueBarControl&>(displayControl()); }
};

} // namespace zan::display
