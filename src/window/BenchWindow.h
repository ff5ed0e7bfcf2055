#pragma once

#include "binding/PropertyBag.h"
#include "site/Logger.h"
#include "surface/forms/HostForms.h"
#include "surface/host/Picture.h"
#include "surface/text/FontObject.h"
#include "values/Colour.h"
#include "wrappers/BenchControls.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

namespace zan::display {
class SiteMapControl;
class frmProgress;
} // namespace zan::display

namespace zan::surface {
class Surface;
}

namespace zan::window {

class ActionEngine;
class BenchWindowObject;
class PanelDesign;
class PanelDocument;
class PanelEditor;
class PanelEvents;
class PanelSetup;
class PanelTime;
class PausingForms;
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
///
/// This class is the face of it. Behind it stand a surface with the controls, and one part each for the design values,
/// the window document, what arrives from the user and the link, the rules of editing and the actions.
class BenchWindow : public QWidget
{
    Q_OBJECT
public:
    explicit BenchWindow(QWidget* parent = nullptr);
    /// A panel that knows these types of control, whose rows must outlive it.
    BenchWindow(wrappers::ControlTypes types, QWidget* parent = nullptr);
    ~BenchWindow() override;

    /// The panel as scripts and documents see it. Lives on when the panel goes; every access raises 91 then.
    Ref<BenchWindowObject> object() const;
    /// Small number that names the panel's surface in the process; never 0.
    std::int32_t hWnd() const;
    /// What the controls lie on, to be looked at. It fills the panel and goes with it.
    const surface::Surface& surface() const { return *m_surface; }

    // Design values. Each write of a property that the bag knows is reported by PropertyChanged, and those that
    // belong to the window document are written to the container node.
    Colour BackColor() const;
    void setBackColor(Colour colour);
    Colour ForeColor() const;
    void setForeColor(Colour colour);
    bool Enabled() const { return isEnabled(); }
    void setEnabled(bool enabled);
    Ref<surface::FontObject> Font() const;
    /// Every control that follows the window gets the same font object.
    void setFont(const Ref<surface::FontObject>& font);
    std::int16_t BackStyle() const;
    void setBackStyle(std::int16_t style);
    std::int16_t BorderStyle() const;
    void setBorderStyle(std::int16_t style);
    float GridSize() const; ///< twips per grid step
    void setGridSize(float size);
    bool SnapToGrid() const;
    void setSnapToGrid(bool snap);
    bool LockPositions() const;
    void setLockPositions(bool lock);
    bool Stretch() const;
    void setStretch(bool stretch);
    bool ShowSiteMap() const;
    /// Shows or hides the map at once; its place and its file are read when a window is loaded.
    void setShowSiteMap(bool show);
    /// The panel's site map, shown or not.
    Ref<display::SiteMapControl> SiteMap() const;
    bool LockMenu() const;
    void setLockMenu(bool lock);
    QString PictureFile() const;
    void setPictureFile(const QString& file);
    Ref<surface::Picture> Picture() const;
    void setPicture(const Ref<surface::Picture>& picture);

    /// The server that labels bound to ECAN's web service ask: `host`, `host:port`, or http:// or https:// before that.
    /// Empty by default: then nobody is asked. It is the host program's alone, kept neither in a bag nor in a document.
    QString ECANHost() const;
    /// Raises 380 for a text that names no server.
    void setECANHost(const QString& host);

    bool HideProtectedControls() const;
    void setHideProtectedControls(bool hide);
    /// Empty after the panel was hidden.
    Ref<wrappers::BenchControls> Controls() const;
    Ref<site::Logger> Logger() const;
    /// Subscribes to the logger and its link. Raises 91 for no logger.
    void setLogger(const Ref<site::Logger>& logger);
    Ref<site::SchemeWindow> CurrentWindow() const;

    /// Refreshes every control from its channel; a failure ends the pass and reaches the caller. In the past the moment
    /// that is shown is read again.
    void Refresh();

    /// Shows the panel as it was at a moment (a Date, local time): labels, bars, lights and boxes show what the logger's
    /// history has stored, in a frame with the moment's date and time. Until ShowLive nothing acts: no click, no script,
    /// no edit, and the logger's events touch no control. Raises 13 for what is no date, 91 without a logger, 5 for a
    /// logger without a history, for a moment that is still to come and while the layout is being edited, and what
    /// logger and history raise; the panel then shows what it showed before.
    void ShowAt(const binding::Variant& time);
    /// The same for a moment as histories count it.
    void showMoment(site::HistoryTime moment);
    /// Shows what is now, at once.
    void ShowLive();
    bool IsLive() const;
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

    /// Lays out a window of an older text terminal and stores it in the logger's scheme as "KEEL": navy, its texts and
    /// values at their places of the character grid, a connect button at the top. COMPAT: the answer is always False. A
    /// failure reaches the caller, with the window as far as it was built and drawing stopped until
    /// WindowOps::UnlockUpdates: 91 without a logger, 53, 75 and 321 for a file that is missing, cannot be read or is no
    /// such window (its text names line and column), 6 for a place that no control can stand at, and what logger and
    /// scheme raise.
    bool ImportKeel(const QString& KeelFile);

    /// Opens the progress window, empty, over this panel; it follows the logger until that has finished.
    void ShowProgress();
    /// The progress window while it is open; null once it has been closed, by whomever.
    QPointer<display::frmProgress> progressWindow() const;
    // The parts, for each other.
    PanelDesign& design() const { return *m_design; }
    PanelDocument& document() const { return *m_document; }
    PanelEvents& events() const { return *m_events; }
    PanelEditor& editor() const { return *m_editor; }
    PanelSetup& setup() const { return *m_setup; }
    ActionEngine& actions() const { return *m_actions; }
    PanelTime& time() const { return *m_time; }
    /// Whether edges, centres and equal gaps of other controls pull what is dragged, and are drawn as guides. Off by
    /// default; Alt has the same effect for as long as it is held. What is aligned at the end stays off the grid.
    bool AlignmentGuides() const;
    void setAlignmentGuides(bool on);
    /// Whether an unlocked panel is rearranged by keyboard too: arrows, Del, Ctrl+C, Ctrl+V, Tab. Off by default.
    bool KeyboardEditing() const;
    void setKeyboardEditing(bool on);
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
    /// Shows what has changed now instead of at the end of this turn of the event loop.
    void flush();
    /// The smallest size that shows every visible control whole, and the background at its own size.
    QSize sizeHint() const override;

    /// The types of control that the panel can make.
    wrappers::ControlTypes controlTypes() const;
    const std::vector<NewControlMenuItem>& newControlMenu() const;
    /// What scripts of the panel may ask of the program around it, as `Window.Host`; nothing until a host gives one.
    Ref<binding::Object> Host() const { return m_host; }
    void setHost(const Ref<binding::Object>& host) { m_host = host; }
    /// Who shows message boxes; null gives real windows. Must outlive the panel.
    void setForms(surface::HostForms* forms);
    /// The same for the parts of the panel: while a form waits for a person, the panel's scripts take no time.
    surface::HostForms& forms() const;

Q_SIGNALS:
    /// A handler or an event of the logger raised a run-time error; nobody further down can take it.
    void runtimeError(int number, const QString& description);
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
    /// The panel shows another moment, or is live again.
    void MomentShown();
    /// That call has ended, whether it failed or not: the panel shows CurrentWindow.
    void WindowEntered();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void reportError(const values::RuntimeError& error);

    surface::Surface* m_surface;
    Ref<BenchWindowObject> m_object;
    std::unique_ptr<surface::HostForms> m_ownForms;
    std::unique_ptr<PausingForms> m_forms;
    Ref<binding::Object> m_host;
    std::unique_ptr<PanelTime> m_time; // goes last: the other parts ask it
    std::unique_ptr<PanelDocument> m_document;
    std::unique_ptr<PanelDesign> m_design;
    std::unique_ptr<PanelEditor> m_editor;
    std::unique_ptr<PanelSetup> m_setup;
    std::unique_ptr<PanelEvents> m_events;
    std::unique_ptr<ActionEngine> m_actions;
    QPointer<display::frmProgress> m_progress;
    bool m_endsWhenHidden = true;
};

} // namespace zan::window
