#pragma once

#include "display/ControlWidget.h"
#include "display/DisplayControl.h"

namespace zan::display {

/// A widget that holds one display control, with its design values told of.
class DisplayWidget : public ControlWidget, private DisplayControl::Host
{
    Q_OBJECT
public:
    ~DisplayWidget() override;

protected:
    DisplayWidget(surface::ControlCreator creator, QSize designSize, QWidget* parent);
    DisplayControl& displayControl() const noexcept { return static_cast<DisplayControl&>(liveControl()); }

private:
    void propertyChanged(binding::Name name) override;
};

} // namespace zan::display
