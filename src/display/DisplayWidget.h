#pragma once

#include "display/DisplayControl.h"
#include "surface/host/ControlArray.h"
#include "surface/host/SurfaceEvents.h"

#include <QWidget>

namespace zan::surface {
class Surface;
}

namespace zan::display {

/// A widget that holds one display control and nothing else, so that a host can place the control on any widget of its
/// own. The control fills the widget; its events come as signals.
class DisplayWidget : public QWidget, private surface::SurfaceEvents, private DisplayControl::Host
{
    Q_OBJECT
public:
    ~DisplayWidget() override;
    QSize sizeHint() const override;

Q_SIGNALS:
    void Click();
    void DblClick();
    /// Keys by their classic key codes; `shift` is the sum of 1 Shift, 2 Ctrl, 4 Alt.
    void KeyDown(int keyCode, int shift);
    void KeyPress(int keyAscii);
    void KeyUp(int keyCode, int shift);
    /// Buttons are 1 left, 2 right, 4 middle; places are pixels inside the control.
    void MouseDown(int button, int shift, float x, float y);
    void MouseMove(int button, int shift, float x, float y);
    void MouseUp(int button, int shift, float x, float y);
    /// A property has got a value that is worth saving.
    void PropertyChanged(const QString& name);

protected:
    DisplayWidget(surface::ControlCreator creator, QSize designSize, QWidget* parent);
    DisplayControl& displayControl() const noexcept { return *m_control; }
    void resizeEvent(QResizeEvent* event) override;

private:
    void clicked(surface::LiveControl* control) override;
    void doubleClicked(surface::LiveControl* control) override;
    bool mouseDown(surface::LiveControl* control, const surface::MouseInput& input) override;
    void mouseMove(surface::LiveControl* control, const surface::MouseInput& input) override;
    void mouseUp(surface::LiveControl* control, const surface::MouseInput& input) override;
    void keyDown(surface::LiveControl* control, int keyCode, int shift) override;
    void keyPress(surface::LiveControl* control, int keyAscii) override;
    void keyUp(surface::LiveControl* control, int keyCode, int shift) override;
    void propertyChanged(binding::Name name) override;

    surface::Surface* m_surface; // our child
    Ref<DisplayControl> m_control;
    QSize m_designSize;
};

} // namespace zan::display
