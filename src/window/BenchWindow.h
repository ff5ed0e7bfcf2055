#pragma once

#include "binding/PropertyBag.h"
#include "site/Logger.h"
#include "surface/forms/HostForms.h"
#include "surface/host/Surface.h"
#include "window/EditSteps.h"
#include "wrappers/BenchControls.h"

#include <functional>
#include <memory>

namespace zan::display {
class SiteMapControl;
class frmProgress;
} // namespace zan::display

namespace zan::window {

class ActionEngine;
class Background;
class BenchWindowObject;
class ControlFactory;
class PanelEditor;
class SiteMapPlacement;
struct NewControlMenuItem;

using binding::PropertyBag;
using values::Colour;
using values::Ref;

/// A live panel for a remote data logger.
///
/// A host places it like any widget, calls InitProperties (a new panel) or ReadProperties (one that it remembers),
/// sets the Logger and calls LoadWindow with a window's key. From then on the logger's events keep the controls up
/// to date and the user's clicks act on the logger. SaveWindow stores the panel with its scheme.
///
/// Hiding the panel itself ends its life as a panel; a host that wants to show it again later hides a parent of it
/// instead. A container that shows one of its pages at a time (stacked, tabbed, an MDI window) may hide the panel as
/// often as it likes; for any other that does, see setEndsWhenHidden. Run-time errors that nobody further down can take
/// arrive at the signal runtimeError.
class BenchWindow : public surface::Surface,
                    public EditedPanel,
                    private wrappers::PanelWindow,
                    private surface::SurfaceEvents
{
    Q_OBJECT
public:
    static constexpr float DefaultGridSize = 200;

    explicit BenchWindow(QWidget* parent = nullptr);
    /// A panel that knows these types of control, whose rows must outlive it.
    BenchWindow(wrappers::ControlTypes types, QWidget* parent = nullptr);
    ~BenchWindow() override;

    /// The panel as scripts and documents see it. Lives on when the panel goes; every access raises 91 then.
    Ref<BenchWindowObject> object() const;

    // Design values. Each write of a property that the bag knows is reported by PropertyChanged, and those that
    // belong to the window document are written to the container node.
    Colour BackColor() const { return backColor(); }
    void setBackColor(Colour colour);
    Colour ForeColor() const { return foreColor(); }
    void setForeColor(Colour colour);
    bool Enabled() const { return isEnabled(); }
    void setEnabled(bool enabled);
    Ref<surface::FontObject> Font() const { return surfaceFont(); }
    /// Every control that follows the window gets the same font object.
    void setFont(const Ref<surface::FontObject>& font);
    std::int16_t BackStyle() const { return backStyle(); }
    void setBackStyle(std::int16_t style);
    std::int16_t BorderStyle() const { return borderStyle(); }
    void setBorderStyle(std::int16_t style);
    float GridSize() const { return m_gridSize; } ///< twips per grid step
    void setGridSize(float size);
    bool SnapToGrid() const { return m_snapToGrid; }
    void setSnapToGrid(bool snap);
    bool LockPositions() const;
    void setLockPositions(bool lock);
    bool Stretch() const;
    void setStretch(bool stretch);
    bool ShowSiteMap() const { return m_showSiteMap; }
    /// Shows or hides the map at once; its place and its file are read when a window is loaded.
    void setShowSiteMap(bool show);
    /// The panel's site map, shown or not.
    Ref<display::SiteMapControl> SiteMap() const;
    bool LockMenu() const { return m_lockMenu; }
    void setLockMenu(bool lock);
    QString PictureFile() const;
    void setPictureFile(const QString& file);
    Ref<surface::Picture> Picture() const;
    void setPicture(const Ref<surface::Picture>& picture);

    bool HideProtectedControls() const;
    void setHideProtectedControls(bool hide);
    /// Empty after the panel was hidden.
    Ref<wrappers::BenchControls> Controls() const { return m_controls; }
    Ref<site::Logger> Logger() const { return m_logger; }
    /// Subscribes to the logger and its link. Raises 91 for no logger.
    void setLogger(const Ref<site::Logger>& logger);
    Ref<site::SchemeWindow> CurrentWindow() const { return m_currentWindow; }

    /// Refreshes every control from its channel; a failure ends the pass and reaches the caller.
    void Refresh();
    /// Shows the window of this key, found or created in the logger's scheme. The window shown before is emptied
    /// in its document: a host that shows several windows of one scheme gives each a panel of its own. Raises 91
    /// without a logger, 6 for a window of more than 32,767 controls (those are shown), and what the scheme raises.
    void LoadWindow(const QString& key);
    /// Empties the panel; what is placed afterwards belongs to a window of no scheme. Needs no logger.
    void Clear();
    /// Brings the document up to date without saving: for a host that saves several panels of one scheme at once.
    void UpdateDocument();
    /// Brings the document up to date and has the scheme saved; nothing without a current window. A save that fails is
    /// silent and leaves the document's mark of changes as it was.
    void SaveWindow();

    /// Opens the progress window, empty, over this panel; it follows the logger until that has finished.
    void ShowProgress();
    /// The progress window while it is open; null once it has been closed, by whomever.
    QPointer<display::frmProgress> progressWindow() const;
    ActionEngine& actions() const { return *m_actions; }
    PanelEditor& editor() const { return *m_editor; }
    /// Takes the user's last edit back; nothing when there is none. Every edit made by hand is a step: a move, a
    /// resize, a new, pasted or deleted control, a change of the stacking.
    void Undo();
    void Redo();
    bool CanUndo() const;
    bool CanRedo() const;
    /// What Undo would take back, as "Move"; empty for nothing.
    QString UndoText() const;
    QString RedoText() const;
    /// How many edits separate the panel from the window that was loaded.
    std::int32_t EditCount() const;
    /// Runs a command of the editor from an event: what it raises goes to the host.
    void edit(const std::function<void(PanelEditor&)>& command);

    /// Design values of a panel that is placed for the first time.
    void InitProperties();
    /// Design values that a host has kept.
    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    /// Whether hiding the panel itself ends it, as it does by default. For a host with a container that hides its pages
    /// themselves and that the panel does not know; the panel ends with its widget then.
    bool endsWhenHidden() const { return m_endsWhenHidden; }
    void setEndsWhenHidden(bool ends) { m_endsWhenHidden = ends; }
    /// The smallest size that shows every visible control whole, and the background at its own size.
    QSize sizeHint() const override;

    /// The types of control that the panel can make.
    wrappers::ControlTypes controlTypes() const override;
    const std::vector<NewControlMenuItem>& newControlMenu() const;
    /// What scripts of the panel may ask of the program around it, as `Window.Host`; nothing until a host gives one.
    Ref<binding::Object> Host() const { return m_host; }
    void setHost(const Ref<binding::Object>& host) { m_host = host; }
    /// Who shows message boxes; null gives real windows. Must outlive the panel.
    void setForms(surface::HostForms* forms);
    surface::HostForms& forms() const { return *m_forms; }

Q_SIGNALS:
    /// A property of the bag was written.
    void PropertyChanged(const QString& name);
    void Click();
    void DblClick();
    void KeyDown(int KeyCode, int Shift);
    void KeyPress(int KeyAscii);
    void KeyUp(int KeyCode, int Shift);
    void MouseDown(int Button, int Shift, float X, float Y);
    void MouseMove(int Button, int Shift, float X, float Y);
    void MouseUp(int Button, int Shift, float X, float Y);
    void LoadScheme(const QString& Scheme);
    /// An edit was made, taken back or made again, or another window has begun without any.
    void EditsChanged();
    /// LoadWindow or Clear, a host's or a script's, is about to take the window shown off the panel, which empties its
    /// document. The document still holds everything.
    void WindowLeaving();
    /// That call has ended, whether it failed or not: the panel shows CurrentWindow.
    void WindowEntered();

private:
    // wrappers::PanelWindow
    Ref<wrappers::iBenchControl> createControl(const QString& type) override;
    Ref<site::SchemeWindows> schemeWindows() override;
    void discardControl(const Ref<binding::Object>& control) override;
    void restoreControl(const wrappers::PlacedControl& placed) override;
    Ref<wrappers::BenchControls> editedControls() override { return m_controls; }
    void reportError(const values::RuntimeError& error) override;
    // surface::SurfaceEvents
    void clicked(surface::LiveControl* control) override;
    void doubleClicked(surface::LiveControl* control) override;
    bool mouseDown(surface::LiveControl* control, const surface::MouseInput& input) override;
    void mouseMove(surface::LiveControl* control, const surface::MouseInput& input) override;
    void mouseUp(surface::LiveControl* control, const surface::MouseInput& input) override;
    void resizeBegins(surface::LiveControl& control) override;
    void resizeEnded(surface::LiveControl& control) override;
    void gotFocus(surface::LiveControl* control) override;
    void keyDown(surface::LiveControl* control, int keyCode, int shift) override;
    void keyPress(surface::LiveControl* control, int keyAscii) override;
    void keyUp(surface::LiveControl* control, int keyCode, int shift) override;
    void resized() override;
    void shown() override;
    void hidden() override;

    void writeAttribute(values::Name name, const binding::Variant& value);
    template <class Apply>
    void forFollowers(Apply apply);
    wrappers::BenchControls& controlsOrRaise() const;
    void announceChange(void (BenchWindow::*signal)());
    const document::Node& container();
    Ref<site::SchemeWindow> storedWindow(const QString& key);
    Ref<site::SchemeWindow> unsavedWindow();
    document::Node applyContainer();
    void storeFont(const document::Node& parent, binding::Object& font);
    void followLink(site::LinkState state);
    void captionConnectButton(const Ref<surface::LiveControl>& button, site::LinkState state);
    Ref<wrappers::iBenchControl> wrapperOf(const surface::LiveControl& control) const;
    void clickedControl(surface::LiveControl& control);

    Ref<site::Logger> m_logger;
    Ref<site::Link> m_link;
    Ref<wrappers::BenchControls> m_controls;
    Ref<site::SchemeWindow> m_currentWindow;
    document::Node m_container; // null while the current window's has not been needed yet
    std::uint32_t m_loads = 0;  // how often another window has become the one that is edited
    Ref<BenchWindowObject> m_object;
    std::unique_ptr<ControlFactory> m_factory;
    std::unique_ptr<Background> m_background;
    std::unique_ptr<wrappers::LiveData> m_liveData;
    std::unique_ptr<SiteMapPlacement> m_siteMap;
    std::unique_ptr<PanelEditor> m_editor;
    std::unique_ptr<ActionEngine> m_actions;
    QPointer<display::frmProgress> m_progress;
    std::unique_ptr<surface::HostForms> m_ownForms;
    surface::HostForms* m_forms;
    Ref<binding::Object> m_host;
    float m_gridSize = DefaultGridSize;
    bool m_snapToGrid = true;
    bool m_showSiteMap = true;
    bool m_lockMenu = false;
    bool m_endsWhenHidden = true;
};

} // namespace zan::window
