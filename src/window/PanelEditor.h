#pragma once

#include "surface/host/SurfaceEvents.h"
#include "window/EditHistory.h"
#include "window/EditKeys.h"
#include "window/PanelGuides.h"
#include "window/Placement.h"
#include "wrappers/BenchControls.h"

#include <QPointer>

#include <optional>

namespace zan::surface {
class Surface;
struct Drop;
struct PopupMenu;
} // namespace zan::surface

namespace zan::window {

class BenchWindow;

using values::Ref;

/// The rules of rearranging a panel by mouse and menu. There is no mode: what a press does depends on LockMenu (all
/// presses are the host's) and LockPositions (nothing is moved or sized, menus stay).
///
/// Every call may run handlers, menus and pointer loops in which the panel goes away; the caller touches nothing of
/// the panel afterwards without looking.
class PanelEditor
{
public:
    PanelEditor(BenchWindow& panel, surface::Surface& surface, EditedPanel& edited);
    ~PanelEditor();

    EditHistory& history() noexcept { return m_history; }
    const EditHistory& history() const noexcept { return m_history; }

    /// The control that menus act on; null for none.
    const Ref<wrappers::iBenchControl>& currentControl() const noexcept { return m_current; }
    void setCurrentControl(const Ref<wrappers::iBenchControl>& control);
    PanelGuides& guides() noexcept { return m_guides; }
    EditKeys& keys() noexcept { return m_keys; }
    /// The shape that is being dragged; null for none.
    const Ref<surface::LiveControl>& selectedShape() const noexcept { return m_shape; }

    /// A press on a control, or on the surface itself (null). True when it must not reach the control's widget.
    bool press(surface::LiveControl* control, const surface::MouseInput& input);
    /// The pointer moves over a control, or over the surface.
    void move(surface::LiveControl* control, const surface::MouseInput& input);
    /// The button went up over the surface.
    void release();
    void focus(surface::LiveControl& control);
    /// A key by its classic code and shift state. True when it was meant for the editor: Esc puts a shape back that is
    /// being dragged, and see EditKeys.
    bool key(int keyCode, int shift);
    /// A handle sizes a control, from its press to its release.
    void resizeBegins(const surface::LiveControl& control);
    void resizeEnded();
    /// Another window is about to be shown: nothing of this one is selected, dragged or taken back any more. The current
    /// control stays what it is.
    void leaveWindow();
    /// What a plain click on the surface, a picture, an option button or a text box does to the selection.
    void ClearSelection();

    /// Moves a live control to a place in twips, or, when positions snap, to the grid with all its measures.
    /// COMPAT: while nothing snaps, width and height are passed on as 0. Raises 11 for a grid of 0 twips.
    void PlaceControl(surface::LiveControl& control, std::optional<float> left = {}, std::optional<float> top = {});
    /// Shows the marker of the selected shape, or hides it.
    void ShowMarker(bool show);
    /// Positions, or the menus, have been locked or unlocked.
    void lockChanged();

    // The menus' commands ------------------------------------------------------------------------------------

    /// Makes a control of a type where the surface was last right-clicked.
    void newControl(const QString& typeKey);
    void paste();
    void copy();
    void remove();
    void sendToBack();
    void toggleLockPositions();

private:
    bool pressControl(surface::LiveControl& control, const surface::MouseInput& input);
    bool pressSurface(const surface::MouseInput& input);
    void selectShape(float x, float y);
    void openSurfaceMenu(const surface::MouseInput& input);
    void openMenu(const surface::LiveControl* control, const surface::MouseInput& input,
                  const std::shared_ptr<surface::PopupMenu>& menu);
    void dragAndDrop(surface::LiveControl& source, const surface::MouseInput& input);
    void dropOnControl(surface::LiveControl& source, surface::LiveControl& target, float x, float y,
                       PanelGuides::Held held);
    void dropOnSurface(surface::LiveControl& source, float x, float y, PanelGuides::Held held);
    void dragShape(const surface::MouseInput& input);
    void placeUnlessHeld(surface::LiveControl& control, PanelGuides::Held held, std::optional<float> left = {},
                         std::optional<float> top = {});
    void PlaceMarker();
    Ref<wrappers::BenchControls> controls() const;
    Ref<wrappers::iBenchControl> wrapperOf(const surface::LiveControl& control) const;
    bool isUsed(const surface::LiveControl& shape) const;
    bool isThere(const surface::LiveControl& shape) const;
    void dropShape();
    void takeKeyboardFrom(const wrappers::iBenchControl& control);
    template <class Visit>
    void forEachShape(Visit visit) const;

    /// The wrapper for a step of the history; nothing when there is none.
    Ref<wrappers::iBenchControl> editedWrapper(const surface::LiveControl& control) const;

    BenchWindow& m_panel;
    surface::Surface& m_surface;
    EditHistory m_history;
    PanelGuides m_guides;
    EditKeys m_keys;
    std::optional<EditHistory::Command> m_resize;    ///< under way
    std::optional<EditHistory::Command> m_shapeDrag; ///< under way
    Ref<wrappers::iBenchControl> m_current;
    Ref<surface::LiveControl> m_shape;
    ShapeGrab m_shapeGrab = ShapeGrab::Move;
    wrappers::TwipsRectangle m_shapeStart{}; ///< where the shape lay when it was pressed
    float m_grabX = 0; ///< of a drag: the press inside the control; of a shape: its place less the press
    float m_grabY = 0;
    float m_menuX = 0; ///< where the surface was last right-clicked
    float m_menuY = 0;
};

} // namespace zan::window
