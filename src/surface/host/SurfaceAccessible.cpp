#include "surface/host/SurfaceAccessible.h"

#include "surface/host/LiveControl.h"
#include "surface/host/ScreenPlace.h"
#include "surface/host/Surface.h"
#include "surface/host/SurfaceLayer.h"
#include "surface/host/WidgetControl.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>

#include <array>

namespace zan::surface::SurfaceAccessible {

namespace {

using Table = QHash<const LiveControl*, QAccessible::Id>;

/// The accessible faces of painted controls that somebody has asked for.
Table& faces()
{
    static auto* table = new Table;
    return *table;
}

QAccessible::Role roleOf(AccessibleRole role)
{
    switch (role) {
    case AccessibleRole::Text:
        return QAccessible::StaticText;
    case AccessibleRole::EditText:
        return QAccessible::EditableText;
    case AccessibleRole::Button:
        return QAccessible::PushButton;
    case AccessibleRole::CheckBox:
        return QAccessible::CheckBox;
    case AccessibleRole::RadioButton:
        return QAccessible::RadioButton;
    case AccessibleRole::Graphic:
        return QAccessible::Graphic;
    case AccessibleRole::Shape:
        return QAccessible::Graphic;
    case AccessibleRole::Progress:
        return QAccessible::ProgressBar;
    case AccessibleRole::Indicator:
        return QAccessible::Indicator;
    case AccessibleRole::Chart:
        return QAccessible::Chart;
    }
    return QAccessible::NoRole;
}

/// The control of a surface that keys edit; null for none.
LiveControl* currentOf(const Surface& surface)
{
    return surface.layer() ? surface.layer()->current() : nullptr;
}

/// A painted control as assistive tools see it.
class PaintedFace : public QAccessibleInterface
{
public:
    explicit PaintedFace(LiveControl& control)
        : m_control(&control)
    {}

    bool isValid() const override { return m_control->isLoaded(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override
    {
        return isValid() ? m_control->surface()->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface* parent() const override
    {
        return isValid() ? QAccessible::queryAccessibleInterface(m_control->surface()) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Name:
            return m_control->accessibleRole() == AccessibleRole::Progress ? m_control->toolTipText()
                                                                           : m_control->accessibleText();
        case QAccessible::Value:
            return m_control->accessibleText();
        case QAccessible::Description:
            return m_control->toolTipText();
        default:
            return {};
        }
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override
    {
        if (!isValid())
            return {};
        return partOnScreen(*m_control->surface(), m_control->bounds());
    }
    QAccessible::Role role() const override { return roleOf(m_control->accessibleRole()); }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        state.invisible = !m_control->visible();
        state.disabled = !m_control->enabled();
        state.readOnly = true;
        if (isValid() && currentOf(*m_control->surface()) == m_control.get()) {
            state.focusable = state.selectable = state.selected = true;
            state.focused = m_control->surface()->hasFocus();
        }
        return state;
    }

private:
    values::Ref<LiveControl> m_control;
};

QAccessibleInterface* faceOf(LiveControl& control)
{
    QAccessible::Id& id = faces()[&control];
    if (id == 0)
        id = QAccessible::registerAccessibleInterface(new PaintedFace(control));
    return QAccessible::accessibleInterface(id);
}

/// The face of any control: a painted one's own, or that of its widget. Null for a control that has neither.
QAccessibleInterface* anyFaceOf(LiveControl& control)
{
    if (control.hosting() != LiveControl::Hosting::Widget)
        return control.visible() ? faceOf(control) : nullptr;
    QWidget* widget = static_cast<WidgetControl&>(control).widget();
    return widget ? QAccessible::queryAccessibleInterface(widget) : nullptr;
}

/// The surface: its painted controls, back to front, then its widgets.
class SurfaceFace : public QAccessibleWidget
{
public:
    explicit SurfaceFace(Surface& surface)
        : QAccessibleWidget(&surface, QAccessible::Pane)
        , m_surface(surface)
    {}

    int childCount() const override { return int(painted().size()) + QAccessibleWidget::childCount(); }
    QAccessibleInterface* child(int index) const override
    {
        const auto controls = painted();
        if (index < 0)
            return nullptr;
        if (std::size_t(index) < controls.size())
            return faceOf(*controls[std::size_t(index)]);
        return QAccessibleWidget::child(index - int(controls.size()));
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        const auto controls = painted();
        for (std::size_t place = 0; place < controls.size(); ++place) {
            if (faceOf(*controls[place]) == child)
                return int(place);
        }
        const int index = QAccessibleWidget::indexOfChild(child);
        return index < 0 ? index : index + int(controls.size());
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        const values::Ref<LiveControl> control =
            m_surface.controlAt(fromScreen(m_surface, QPointF(x, y)).toPoint());
        if (control && control->hosting() != LiveControl::Hosting::Widget)
            return faceOf(*control);
        return QAccessibleWidget::childAt(x, y);
    }
    QAccessibleInterface* focusChild() const override
    {
        LiveControl* current = m_surface.hasFocus() ? currentOf(m_surface) : nullptr;
        QAccessibleInterface* face = current ? anyFaceOf(*current) : nullptr;
        return face ? face : QAccessibleWidget::focusChild();
    }
    QRect rect() const override
    {
        return m_surface.isVisible() ? partOnScreen(m_surface, m_surface.rect()) : QRect();
    }

private:
    std::vector<LiveControl*> painted() const { return m_surface.paintedControls(); }

    Surface& m_surface;
};

QAccessibleInterface* makeFace(const QString&, QObject* object)
{
    auto* surface = qobject_cast<Surface*>(object);
    return surface ? new SurfaceFace(*surface) : nullptr;
}

} // namespace

void install()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeFace);
        return true;
    }();
    Q_UNUSED(installed);
}

void tellCurrent(Surface& surface, LiveControl& control)
{
    if (!QAccessible::isActive())
        return;
    if (QAccessibleInterface* face = anyFaceOf(control)) {
        QAccessibleEvent event(face, surface.hasFocus() ? QAccessible::Focus : QAccessible::Selection);
        QAccessible::updateAccessibility(&event);
    }
}

void forget(const LiveControl& control)
{
    if (const QAccessible::Id id = faces().take(&control))
        QAccessible::deleteAccessibleInterface(id);
}

void forget(const Surface& surface)
{
    // The surface is going: nothing here may take memory.
    for (const values::Ref<ControlArray>& array : surface.arrays()) {
        for (int index = 0; index <= array->uBound(); ++index) {
            if (const LiveControl* control = array->find(index))
                forget(*control);
        }
    }
}

} // namespace zan::surface::SurfaceAccessible
