#pragma once

#include "component/Module.h"

#include <QWidget>

namespace zan::component {

/// The window that a created control stands in. The control fills it. Closing or hiding it hides the control's parent
/// and not the control, which ends no panel.
class FrameWindow : public QWidget
{
    Q_OBJECT
public:
    /// Takes the control over.
    explicit FrameWindow(QWidget* control);
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has closed the window. It is hidden and can be shown again.
    void Closed();
    /// The inner size has changed, in pixels.
    void Resized(int Width, int Height);

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* m_control;
    Alive m_alive;
};

} // namespace zan::component
