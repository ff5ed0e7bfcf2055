#include "display/DisplayWidget.h"

#include "surface/host/Surface.h"
#include "values/Twips.h"

#include <QResizeEvent>

namespace zan::display {

namespace {

float pixels(float twips)
{
    return float(double(twips) / values::TwipsPerPixel);
}

} // namespace

DisplayWidget::DisplayWidget(surface::ControlCreator creator, QSize designSize, QWidget* parent)
    : QWidget(parent)
    , m_surface(new surface::Surface(this))
    , m_designSize(designSize)
{
    surface::ControlArray& array = m_surface->addArray(QStringLiteral("Control"), std::move(creator));
    m_control =
        Ref<DisplayControl>(static_cast<DisplayControl*>(array.item(surface::ControlArray::TemplateIndex).get()));
    m_control->setVisible(true);
    m_control->setHost(this);
    m_surface->setEvents(this);
    m_surface->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_surface);
    resize(designSize);
}

DisplayWidget::~DisplayWidget()
{
    m_control->setHost(nullptr);
    m_surface->setEvents(nullptr);
}

QSize DisplayWidget::sizeHint() const
{
    return m_designSize;
}

void DisplayWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_surface->setGeometry(rect());
    m_control->move(0, 0.0F, values::pixelsToTwips(width()), values::pixelsToTwips(height()));
}

// A click beside the control cannot be, but the keyboard's events name no control: all of them are the control's.

void DisplayWidget::clicked(surface::LiveControl*)
{
    Q_EMIT Click();
}

void DisplayWidget::doubleClicked(surface::LiveControl*)
{
    Q_EMIT DblClick();
}

bool DisplayWidget::mouseDown(surface::LiveControl*, const surface::MouseInput& input)
{
    Q_EMIT MouseDown(input.button, input.shift, pixels(input.x), pixels(input.y));
    return false;
}

void DisplayWidget::mouseMove(surface::LiveControl*, const surface::MouseInput& input)
{
    Q_EMIT MouseMove(input.button, input.shift, pixels(input.x), pixels(input.y));
}

void DisplayWidget::mouseUp(surface::LiveControl*, const surface::MouseInput& input)
{
    Q_EMIT MouseUp(input.button, input.shift, pixels(input.x), pixels(input.y));
}

void DisplayWidget::keyDown(surface::LiveControl*, int keyCode, int shift)
{
    Q_EMIT KeyDown(keyCode, shift);
}

void DisplayWidget::keyPress(surface::LiveControl*, int keyAscii)
{
    Q_EMIT KeyPress(keyAscii);
}

void DisplayWidget::keyUp(surface::LiveControl*, int keyCode, int shift)
{
    Q_EMIT KeyUp(keyCode, shift);
}

void DisplayWidget::propertyChanged(binding::Name name)
{
    Q_EMIT PropertyChanged(name.text());
}

} // namespace zan::display
