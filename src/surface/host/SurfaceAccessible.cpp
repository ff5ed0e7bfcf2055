#include "surface/host/SurfaceAccessible.h"

#include "surface/host/AccessibleNews.h"
#include "surface/host/PaintedFace.h"
#include "surface/host/ScreenPlace.h"
#include "surface/host/Surface.h"
#include "surface/host/SurfaceLayer.h"
#include "surface/host/WidgetControl.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>

#include <algorithm>

namespace zan::surface::SurfaceAccessible {

namespace {

/// The face of any control: a painted one's own, or that of its widget. Null for a control that has neither.
QAccessibleInterface* anyFaceOf(LiveControl& control)
{
    if (control.hosting() != LiveControl::Hosting::Widget)
        return control.visible() ? PaintedFace::of(control) : nullptr;
    QWidget* widget = static_cast<WidgetControl&>(control).widget();
    return widget ? QAccessible::queryAccessibleInterface(widget) : nullptr;
}

/// The widgets inside a widget of the surface that a user can meet. The layer of editing is none, and neither is a
/// widget that only draws a painted control: that control is a child of the surface already.
std::vector<QWidget*> widgetsIn(const QWidget& parent, const Surface& surface)
{
    std::vector<QWidget*> widgets;
    const auto* layer = dynamic_cast<const QWidget*>(surface.layer());
    for (QObject* child : parent.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget || widget == layer || widget->isHidden() || widget->isWindow())
            continue;
        const LiveControl* control = surface.controlOfWidget(*widget);
        if (!control || control->hosting() == LiveControl::Hosting::Widget)
            widgets.push_back(widget);
    }
    return widgets;
}

QAccessibleInterface* widgetFace(const std::vector<QWidget*>& widgets, int index)
{
    return index >= 0 && std::size_t(index) < widgets.size()
               ? QAccessible::queryAccessibleInterface(widgets[std::size_t(index)])
               : nullptr;
}

int placeOf(const std::vector<QWidget*>& widgets, const QAccessibleInterface& child)
{
    const auto found = std::find(widgets.begin(), widgets.end(), child.object());
    return found == widgets.end() ? -1 : int(found - widgets.begin());
}

/// A pane that keeps a part of many input widgets.
class PaneFace : public QAccessibleWidget
{
public:
    PaneFace(QWidget& pane, Surface& surface)
        : QAccessibleWidget(&pane, QAccessible::Grouping)
        , m_surface(surface)
    {}

    int childCount() const override { return int(widgets().size()); }
    QAccessibleInterface* child(int index) const override { return widgetFace(widgets(), index); }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return child ? placeOf(widgets(), *child) : -1;
    }

private:
    std::vector<QWidget*> widgets() const { return widgetsIn(*widget(), m_surface); }

    Surface& m_surface; // the pane's parent
};

/// The surface: its painted controls, back to front, then its widgets.
class SurfaceFace : public QAccessibleWidget
{
public:
    explicit SurfaceFace(Surface& surface)
        : QAccessibleWidget(&surface, QAccessible::Pane)
        , m_surface(surface)
    {}

    QString text(QAccessible::Text kind) const override
    {
        const QString own = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && own.isEmpty() ? spokenNameOf(m_surface) : own;
    }
    int childCount() const override { return int(painted().size() + widgets().size()); }
    QAccessibleInterface* child(int index) const override
    {
        const auto controls = painted();
        if (index < 0)
            return nullptr;
        if (std::size_t(index) < controls.size())
            return PaintedFace::of(*controls[std::size_t(index)]);
        return widgetFace(widgets(), index - int(controls.size()));
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        if (!child)
            return -1;
        const auto controls = painted();
        if (const auto* face = dynamic_cast<const PaintedFace*>(child)) {
            const auto found = std::find(controls.begin(), controls.end(), &face->control());
            return found == controls.end() ? -1 : int(found - controls.begin());
        }
        const int index = placeOf(widgets(), *child);
        return index < 0 ? index : index + int(controls.size());
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        const values::Ref<LiveControl> control =
            m_surface.controlAt(fromScreen(m_surface, QPointF(x, y)).toPoint());
        if (control && control->hosting() != LiveControl::Hosting::Widget)
            return PaintedFace::of(*control);
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
    std::vector<QWidget*> widgets() const { return widgetsIn(m_surface, m_surface); }

    Surface& m_surface;
};

/// Faces of surfaces and of the panes in them. A widget that is none of a control's, and of no class of its own, is a
/// pane; that of a control which is being made has a class of its own.
QAccessibleInterface* makeFace(const QString&, QObject* object)
{
    if (auto* surface = qobject_cast<Surface*>(object))
        return new SurfaceFace(*surface);
    if (!object || object->metaObject() != &QWidget::staticMetaObject)
        return nullptr;
    auto* widget = static_cast<QWidget*>(object);
    auto* surface = qobject_cast<Surface*>(widget->parentWidget());
    const bool isPane =
        surface && !surface->controlOfWidget(*widget) && widget != dynamic_cast<const QWidget*>(surface->layer());
    return isPane ? new PaneFace(*widget, *surface) : nullptr;
}

/// A tool that begins to listen finds names on the input widgets at once, and is told of changes from then on.
class Listening : public QAccessible::ActivationObserver
{
    void accessibilityActiveChanged(bool active) override
    {
        if (!active) {
            AccessibleNews::forgetAll();
            return;
        }
        for (QWidget* widget : QApplication::allWidgets()) {
            if (auto* surface = qobject_cast<Surface*>(widget))
                surface->postFlush();
        }
    }
};

/// Lives as long as the process, and is still to be found when its leaks are looked for.
Listening& listening()
{
    static auto* const listener = new Listening;
    return *listener;
}

} // namespace

void install()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeFace);
        QAccessible::installActivationObserver(&listening());
        return true;
    }();
    Q_UNUSED(installed);
}

void tellNews(Surface& surface)
{
    if (QAccessible::isActive())
        AccessibleNews::tell(surface);
}

void currentChanged(Surface& surface)
{
    if (QAccessible::isActive())
        surface.postFlush();
}

void forget(const LiveControl& control)
{
    PaintedFace::forget(control);
    AccessibleNews::forget(control);
}

void forget(const Surface& surface)
{
    // The surface is going: nothing here may take memory.
    AccessibleNews::forget(surface);
    for (const values::Ref<ControlArray>& array : surface.arrays()) {
        for (int index = 0; index <= array->uBound(); ++index) {
            if (const LiveControl* control = array->find(index))
                PaintedFace::forget(*control);
        }
    }
}

} // namespace zan::surface::SurfaceAccessible
