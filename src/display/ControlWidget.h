#pragma once

#include "surface/host/ControlArray.h"
#include "surface/host/LiveControl.h"
#include "surface/host/SurfaceEvents.h"

#include <QWidget>

namespace zan::surface {
class Surface;
}

namespace zan::display {

using values::Ref;

/// A widget that holds one live control and nothing else, so that a host can place the control on any widget of its own.
/// The control fills the widget; its events come as signals.
class ControlWidget : public QWidget, private surface::SurfaceEvents
{
    Q_OBJECT
public:
    ~ControlWidget() override;
    QSize sizeHint() const override;

Q_SIGNALS:
    /// A handler or the control raised a run-time error in an event.
    void runtimeError(int number, const QString& description);
    void Click();
    void DblClick();
    /// Keys by their classic key codes; `shift` is the sum of 1 Shift, 2 Ctrl, 4 Alt.
    void KeyDown(int keyCode, int shift);
    void KeyPress(int keyAscii);
    void KeyUp(int keyCode, int shift);
    /// Buttons are 1 left, 2 right, 4 middle; places are in the unit of the control (see Unit), inside it.
    void MouseDown(int button, int shift, float x, float y);
    void MouseMove(int button, int shift, float x, float y);
    void MouseUp(int button, int shift, float x, float y);
    /// A property has got a value that is worth saving.
    void PropertyChanged(const QString& name);

protected:
    /// What the control measures places in.
    enum class Unit { Pixels, Twips };

    ControlWidget(surface::ControlCreator creator, QSize designSize, Unit unit, QWidget* parent);
    surface::LiveControl& liveControl() const noexcept { return *m_control; }
    surface::Surface& surface() const noexcept { return *m_surface; }
    void resizeEvent(QResizeEvent* event) override;

private:
    void clicked(surface::LiveControl* control) override;
    void doubleClicked(surface::LiveControl* control) override;
    bool mouseDown(surface::LiveControl* control, const surface::MouseInput& input) override;
    void mouseMove(surface::LiveControl* control, const surface::MouseInput& input) override;
    void mouseUp(surface::LiveControl* control, const surface::MouseInput& input) override;
    bool keyDown(surface::LiveControl* control, int keyCode, int shift) override;
    void keyPress(surface::LiveControl* control, int keyAscii) override;
    void keyUp(surface::LiveControl* control, int keyCode, int shift) override;
    surface::Meaning meaningOf(const surface::LiveControl*) override { return {accessibleName(), {}}; }
    float inUnit(float twips) const;

    surface::Surface* m_surface; // our child
    Ref<surface::LiveControl> m_control;
    QSize m_designSize;
    Unit m_unit;
};

} // namespace zan::display
