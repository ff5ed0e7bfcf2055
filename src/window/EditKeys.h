#pragma once

#include "values/Ref.h"
#include "wrappers/iBenchControl.h"

namespace zan::surface {
class LiveControl;
class Surface;
} // namespace zan::surface

namespace zan::window {

class BenchWindow;
class PanelEditor;

using values::Ref;

/// Rearranging a panel by keyboard, where the host has switched it on and positions are unlocked: the arrows move the
/// current control by a grid step, with Shift by a pixel, and with Ctrl they size it; Del deletes it, Ctrl+C and Ctrl+V
/// copy and paste, Tab and Shift+Tab walk the controls in their order. The current control wears a frame meanwhile.
///
/// Each press of a key is one step of the history, also those that a held key repeats.
class EditKeys
{
public:
    EditKeys(BenchWindow& panel, surface::Surface& surface, PanelEditor& editor)
        : m_panel(panel)
        , m_surface(surface)
        , m_editor(editor)
    {}

    bool isOn() const noexcept { return m_isOn; }
    void setOn(bool on);

    /// Whether a key, by its classic code and shift state, is one of these now.
    bool wants(int keyCode, int shift) const;
    /// Does what the key says. True when it was one of these.
    bool press(int keyCode, int shift);
    /// Shows the frame around the current control, or takes it away.
    void refresh() const;

private:
    bool isActive() const;
    /// The current control, while it is one of the panel's.
    Ref<wrappers::iBenchControl> current() const;
    void change(wrappers::iBenchControl& control, int keyCode, int shift) const;
    void walk(bool back) const;
    void paste() const;
    void remove() const;

    BenchWindow& m_panel;
    surface::Surface& m_surface;
    PanelEditor& m_editor;
    bool m_isOn = false;
};

} // namespace zan::window
