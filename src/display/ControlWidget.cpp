#include "display/ControlWidget.h"

#include "display/DesignProperties.h"
#include "surface/host/Surface.h"
#include "values/Twips.h"

#include <QResizeEvent>

namespace zan::display {

ControlWidget::ControlWidget(surface::ControlCreator creator, QSize designSize, Unit unit, QWidget* parent)
    : QWidget(parent)
    , m_surface(new surface::Surface(this))
    , m_designSize(designSize)
    , m_unit(unit)
{
    surface::ControlArray& array = m_surface->addArray(QStringLiteral("Control"), std::move(creator));
    m_control = array.item(surface::ControlArray::TemplateIndex);
    m_control->setVisible(true);
    m_surface->setEvents(this);
    connect(m_surface, &surface::Surface::runtimeError, this, &ControlWidget::runtimeError);
    m_surface->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_surface);
    new DesignProperties(*this, m_control);
    resize(designSize);
}

ControlWidget::~ControlWidget()
{
    m_surface->setEvents(nullptr);
}

QSize ControlWidget::sizeHint() const
{
    return m_designSize;
}

void ControlWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_surface->setGeometry(rect());
    m_control->move(0, 0.0F, values::pixelsToTwips(width()), values::pixelsToTwips(height()));
}

// A click beside the control cannot be, but the keyboard's events name no control: all of them are the control's.

void ControlWidget::clicked(surface::LiveControl*)
{
    Q_EMIT Click();
}

void ControlWidget::doubleClicked(surface::LiveControl*)
{
    Q_EMIT DblClick();
}

bool ControlWidget::mouseDown(surface::LiveControl*, const surface::MouseInput& input)
{
    Q_EMIT MouseDown(input.button, input.shift, inUnit(input.x), inUnit(input.y));
    return false;
}

void ControlWidget::mouseMove(surface::LiveControl*, const surface::MouseInput& input)
{
    Q_EMIT MouseMove(input.button, input.shift, inUnit(input.x), inUnit(input.y));
}

void ControlWidget::mouseUp(surface::LiveControl*, const surface::MouseInput& input)
{
    Q_EMIT MouseUp(input.button, input.shift, inUnit(input.x), inUnit(input.y));
}

bool ControlWidget::keyDown(surface::LiveControl*, int keyCode, int shift)
{
    Q_EMIT KeyDown(keyCode, shift);
    return false;
}

void ControlWidget::keyPress(surface::LiveControl*, int keyAscii)
{
    Q_EMIT KeyPress(keyAscii);
}

void ControlWidget::keyUp(surface::LiveControl*, int keyCode, int shift)
{
    Q_EMIT KeyUp(keyCode, shift);
}

float ControlWidget::inUnit(float twips) const
{
    return m_unit == Unit::Twips ? twips : float(double(twips) / values::TwipsPerPixel);
}

} // namespace zan::display
