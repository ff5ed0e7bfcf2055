#pragma once

#include "binding/Object.h"
#include "surface/Forward.h"
#include "values/ChangeCount.h"
#include "values/Colour.h"

#include <QPointF>
#include <QRect>
#include <QString>

#include <cstdint>
#include <optional>

class QPainter;
class QPalette;

namespace zan::surface {

using binding::Object;
using values::Colour;
using values::Ref;
using values::Variant;

/// What a control paints with.
struct PaintContext
{
    QPainter& painter;
    const QPalette& palette;
    TextPainter& text;
};

/// What a control is for accessibility tools.
enum class AccessibleRole {
    Text,
    EditText,
    Button,
    CheckBox,
    RadioButton,
    Graphic,
    Shape,
    Progress,
    Indicator, ///< in one of a few states
    Level,     ///< a measured value in a range
    Chart
};

/// Where a control that shows a number in a range stands.
struct AccessibleRange
{
    double value;
    double minimum;
    double maximum;
};

/// What presses and keys mean to a type of control; each type has one such row.
struct Habits
{
    bool knowsDoubleClick = true; ///< false: every press is a press, as buttons take it
    bool clicksItself = false;    ///< its widget tells of clicks, so that none is made of a press and a release
    bool isChoice = false;        ///< one of a group of choices, among which the arrow keys move
};

/// A key that means something to the whole panel.
enum class DialogKey : std::uint8_t { Enter, Escape };

/// One control placed on a surface: an element of a control array. It keeps its properties itself; painted kinds
/// have no widget at all, widget kinds make one when they are first shown.
///
/// Measures are twips, kept as given; on the screen a control lies at the nearest pixel. After it was unloaded a
/// control is inert: late-bound access raises 91, direct calls change nothing that anybody sees.
class LiveControl : public Object
{
public:
    /// Where a control is shown. Windowless ones lie under all others and have no handle.
    enum class Hosting : std::uint8_t { Windowless, Painted, Widget };

    LiveControl();
    ~LiveControl() override;

    virtual Hosting hosting() const noexcept = 0;
    Variant invoke(binding::Name name, binding::Access access, binding::Arguments arguments) override;

    /// Name of the control array.
    QString name() const;
    /// Place in the control array.
    std::int16_t index() const noexcept { return m_index; }
    const QString& tag() const noexcept { return m_tag; }
    void setTag(const QString& tag) { m_tag = tag; }

    float left() const noexcept { return m_left; }
    float top() const noexcept { return m_top; }
    float width() const noexcept { return m_width; }
    float height() const noexcept { return m_height; }
    void setLeft(float left);
    void setTop(float top);
    /// Raises 380 for a negative measure.
    void setWidth(float width);
    void setHeight(float height);
    /// Moves and sizes in one step; what is left out stays. Raises 380 for a negative measure and then moves nothing.
    void move(float left, std::optional<float> top = {}, std::optional<float> width = {},
              std::optional<float> height = {});
    /// The rectangle on the surface in logical pixels.
    const QRect& bounds() const noexcept { return m_bounds; }

    bool visible() const noexcept { return m_visible; }
    void setVisible(bool visible);
    bool enabled() const noexcept { return m_enabled; }
    void setEnabled(bool enabled);
    const QString& toolTipText() const noexcept { return m_toolTipText; }
    /// Small number that names the control in the process (see Handles); 0 for a windowless control.
    std::int32_t hWnd();
    /// Brings the control to the front (0, the default) or to the back (1) of its layer. Raises 5 for other values.
    void zOrder(std::optional<std::int16_t> position = {});
    /// Gives the control the keyboard. Raises 5 when it cannot have it (hidden, disabled or of a painted kind).
    virtual void setFocus();
    /// Gives its widget the keyboard for this reason, if it has one; quietly nothing otherwise.
    virtual void takeKeyboard(Qt::FocusReason) {}
    /// Place in the order of the Tab key, from 0; -1 for what the key passes over.
    virtual std::int16_t tabPlace() const noexcept { return -1; }
    /// Goes to the end of that order, as a control does that is made now.
    virtual void tabLast() {}

    /// Counts everything that changes a property which is shown, whoever changes it; 0 once it was unloaded.
    std::uint32_t revision() const override { return isLoaded() ? m_changes.value() : 0; }

    /// Place in the stacking order of its layer: what is higher lies nearer.
    std::int32_t rank() const noexcept { return m_rank; }
    /// False once the control was unloaded or its surface has gone.
    bool isLoaded() const noexcept { return m_array != nullptr; }
    ControlArray* array() const noexcept { return m_array; }
    /// The surface; null after unloading.
    Surface* surface() const noexcept;

    /// Draws the control into the rectangle. Painted kinds only.
    virtual void paint(PaintContext& context, const QRect& rectangle);
    /// Whether the point, in surface pixels, belongs to the control; asked for points inside its bounds only.
    virtual bool hit(QPoint point) const;
    /// Whether the place, in pixels inside the control, belongs to a part that keeps its mouse events for itself: the
    /// surface's owner is not told of them. Asked for controls with a widget only.
    virtual bool keepsMouse(QPointF /*place*/) const { return false; }
    virtual AccessibleRole accessibleRole() const noexcept = 0;
    virtual const Habits& habits() const noexcept;
    /// Whether the control uses the key itself while it has the keyboard: a text of several lines keeps Enter.
    virtual bool keepsKey(DialogKey) const { return false; }
    /// Acts on the key if it is meant for this control; true when it has. `focused` tells that it has the keyboard.
    virtual bool answerKey(DialogKey, bool focused);
    /// What choosing it with the keyboard does; for controls that are one of several choices.
    virtual void choose() {}
    /// What a screen reader says of the control: caption, value and the like.
    virtual QString accessibleText() const { return {}; }
    /// The same for tools that want numbers; nothing for a control that shows none.
    virtual std::optional<AccessibleRange> accessibleRange() const { return {}; }
    /// Takes over every design value of a control of the same type: what its rows say, the measures and the font.
    virtual void copyDesign(const LiveControl& source);

protected:
    enum Change : std::uint8_t {
        Look = 1,     ///< something that is painted, or that a widget shows
        Geometry = 2, ///< place or size
        Presence = 4, ///< visibility or what kind of widget is needed
        Style = 8,    ///< colours or font
    };
    static const binding::MemberTable& baseMembers();
    /// Asks for the control to be shown anew at the next flush. Cheap: marks, and queues at most once.
    void changed(Change what);
    void look() { changed(Look); }     ///< hook of properties that show
    void restyle() { changed(Style); } ///< hook of colours
    /// While one lives, changes of the control are counted and not shown: they wait for the next drawing.
    class WithoutDrawing
    {
    public:
        explicit WithoutDrawing(LiveControl& control)
            : m_control(control)
            , m_before(control.m_quiet)
        {
            m_control.m_quiet = true;
        }
        ~WithoutDrawing() { m_control.m_quiet = m_before; }
        WithoutDrawing(const WithoutDrawing&) = delete;
        WithoutDrawing& operator=(const WithoutDrawing&) = delete;

    private:
        LiveControl& m_control;
        bool m_before;
    };
    /// Counts a change that asks for nothing to be shown anew.
    void countChange() noexcept { m_changes.add(); }
    /// Called after the measures have changed.
    virtual void boundsChanged() {}
    /// Tells the surface's owner of a click on this control.
    void raiseClick();

    std::uint8_t pendingChanges() const noexcept { return m_pending; }

    bool m_enabled = true;

private:
    friend class ControlArray;
    friend class DisplayList;
    friend class Surface;
    friend class WidgetStack;
    void setRectangle(float left, float top, float width, float height);
    void tipChanged();
    std::uint8_t takePending() noexcept
    {
        const std::uint8_t changes = m_pending;
        m_pending = 0;
        return changes;
    }

    bool m_visible : 1;
    bool m_queued : 1;          // waits in the surface's list of changes
    bool m_hosted : 1;          // a painted control that has got a widget, because it lies over one
    bool m_indexed : 1;         // stands in the display list's grid
    bool m_quiet : 1;           // changes are not shown now
    std::uint8_t m_pending : 4; // changes that the next flush will show
    std::int16_t m_index = 0;
    float m_left = 0;
    float m_top = 0;
    float m_width = 0;
    float m_height = 0;
    ControlArray* m_array = nullptr;
    std::int32_t m_rank = 0;   // stacking order, higher is nearer
    std::uint32_t m_slot = 0;  // place in the display list or the widget stack
    std::uint32_t m_stamp = 0; // last query of the display list that met this control
    std::int32_t m_handle = 0;
    values::ChangeCount m_changes; // what a scan looks at of a control stands above this line, close together
    QRect m_bounds{0, 0, 0, 0};    // the measures in pixels
    QString m_tag;
    QString m_toolTipText;
};

} // namespace zan::surface
