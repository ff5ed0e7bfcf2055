#pragma once

#include "surface/Forward.h"

#include <QString>

namespace zan::surface {

/// What a control stands for, which is not always to be seen on it.
struct Meaning
{
    QString subject;   ///< "Pump 1 level"
    QString units;     ///< of a number it shows
    bool acts = false; ///< a click on it does something
};

/// A mouse event in the classic vocabulary.
struct MouseInput
{
    int button = 0; ///< 1 left, 2 right, 4 middle; on a move the sum of the buttons held
    int shift = 0;  ///< sum of 1 Shift, 2 Ctrl, 4 Alt
    float x = 0;    ///< twips inside the control or the surface
    float y = 0;
};

/// What the surface tells its owner. `control` is the live control concerned, null for the surface itself.
/// Every function may unload controls and may delete the surface (but for the last three), and may raise a RuntimeError: the surface hands that
/// on through its signal runtimeError.
class SurfaceEvents
{
public:
    virtual ~SurfaceEvents() = default;

    /// A click of the mouse or the keyboard, or a value changed by program where the type says so.
    virtual void clicked(LiveControl* /*control*/) {}
    virtual void doubleClicked(LiveControl* /*control*/) {}
    /// True takes the press away from the control: a button is not pressed, a text box opens no menu of its own,
    /// and no click follows.
    virtual bool mouseDown(LiveControl* /*control*/, const MouseInput& /*input*/) { return false; }
    virtual void mouseMove(LiveControl* /*control*/, const MouseInput& /*input*/) {}
    virtual void mouseUp(LiveControl* /*control*/, const MouseInput& /*input*/) {}
    /// A resize by one of the control's handles is about to begin, and has ended.
    virtual void resizeBegins(LiveControl& /*control*/) {}
    virtual void resizeEnded(LiveControl& /*control*/) {}
    virtual void gotFocus(LiveControl* /*control*/) {}
    virtual void lostFocus(LiveControl* /*control*/) {}
    /// Keys by their classic key codes, `shift` as in MouseInput. True takes the key away from the control: nothing is
    /// typed, no focus moves.
    virtual bool keyDown(LiveControl* /*control*/, int /*keyCode*/, int /*shift*/) { return false; }
    /// Whether a key would be taken, so that it is no shortcut of the window's either. Changes nothing.
    virtual bool wantsKey(int /*keyCode*/, int /*shift*/) { return false; }
    virtual void keyPress(LiveControl* /*control*/, int /*keyAscii*/) {}
    virtual void keyUp(LiveControl* /*control*/, int /*keyCode*/, int /*shift*/) {}
    /// Asked while an assistive tool listens; null asks for the name of the surface itself. Changes nothing.
    virtual Meaning meaningOf(const LiveControl* /*control*/) { return {}; }
    /// The text of a text box has changed, by the user or by program.
    virtual void textChanged(LiveControl& /*control*/) {}

    // The surface as a whole. These come in the middle of the toolkit's own work on it: they may do anything but
    // delete the surface.
    virtual void resized() {}
    virtual void shown() {}
    virtual void hidden() {}
};

} // namespace zan::surface
