#include "display/DisplayWidget.h"

namespace zan::display {

DisplayWidget::DisplayWidget(surface::ControlCreator creator, QSize designSize, QWidget* parent)
    : ControlWidget(std::move(creator), designSize, Unit::Pixels, parent)
{
    displayControl().setHost(this);
}

DisplayWidget::~DisplayWidget()
{
    displayControl().setHost(nullptr);
}

void DisplayWidget::propertyChanged(binding::Name name)
{
    Q_EMIT PropertyChanged(name.text());
}

} // namespace zan::display
