#include "component/FrameWindow.h"

#include <QCloseEvent>

namespace zan::component {

FrameWindow::FrameWindow(QWidget* control)
    : m_control(control)
{
    control->setParent(this);
    control->setVisible(true);
    setFocusProxy(control);
    resize(control->size());
}

QSize FrameWindow::sizeHint() const
{
    return m_control->sizeHint();
}

void FrameWindow::closeEvent(QCloseEvent* event)
{
    event->accept();
    Q_EMIT Closed();
}

void FrameWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_control->resize(size());
    Q_EMIT Resized(width(), height());
}

} // namespace zan::component
