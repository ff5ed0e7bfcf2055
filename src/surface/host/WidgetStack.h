#pragma once

#include "surface/Forward.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <vector>

namespace zan::surface {

/// The widgets of a surface: makes them when their control is first shown, keeps them stacked as the controls are,
/// and in the order of the Tab key.
///
/// The toolkit paints siblings by recursion, so tens of thousands of them would overflow its stack, and every raise
/// walks them all. Beyond a hundred, widgets sit in transparent panes of about a hundred each; a pane has the shape
/// of what it holds, so that clicks beside it reach what is below.
///
/// A painted control that lies over a widget cannot be drawn by the surface, which is below all widgets: it gets a
/// widget of its own, its host, as long as it lies there.
class WidgetStack
{
public:
    explicit WidgetStack(Surface& surface);
    ~WidgetStack();

    void add(WidgetControl& control);
    void remove(WidgetControl& control);
    /// A painted control goes: its host, if any, goes with it.
    void remove(LiveControl& painted);
    /// The stacking rank of a control that has a widget or a host has changed.
    void restacked() noexcept { m_stackChanged = m_overlapsChanged = true; }
    /// A change that may put painted controls over widgets, or take them from there.
    void overlapsChanged() noexcept { m_overlapsChanged = true; }
    /// A control has been given this place in the order of the Tab key.
    void tabOrderChanged(std::int32_t place) noexcept;
    /// The control comes after all others that there are in the order of the Tab key.
    void tabLast(WidgetControl& control);

    /// Makes the control's widget at once, up to date but hidden.
    void makeWidget(WidgetControl& control);
    /// Brings one control's widget up to date; makes it when the control is visible.
    void sync(WidgetControl& control, int changes);
    /// Whatever concerns all of them: hosts, stacking, panes, the Tab order.
    /// True when it has raised widgets.
    bool arrange();
    /// The host of a painted control, or null.
    QWidget* hostOf(const LiveControl& control) const;
    /// The surface has another size.
    void surfaceResized() noexcept { m_shapesChanged = true; }
    /// Colours or style of the surface have changed.
    void restyle();
    /// The surface goes, and takes all widgets with it; later, when one of them may be in the middle of an event.
    void abandon(bool later);
    /// A widget goes: events of it concern nobody any more.
    void forget(QWidget& widget);
    /// The control that a widget, or the viewport inside it, belongs to; null for others.
    LiveControl* controlOf(const QObject* widget) const { return m_owners.value(widget); }
    std::size_t count() const noexcept { return m_controls.size(); }

private:
    class Pane;
    struct Entry
    {
        std::int32_t rank;
        LiveControl* control;
        QWidget* widget;
    };

    void own(LiveControl& control, QWidget& widget);
    QWidget* widgetOf(LiveControl& control) const;
    void updateHosts();
    void host(LiveControl& control);
    void unhost(LiveControl& control);
    void stack();
    QWidget& paneAt(std::size_t place, std::size_t count);
    void shapePanes();
    void orderTabs();
    static void sortByTab(std::vector<WidgetControl*>& controls);

    Surface& m_surface;
    std::vector<WidgetControl*> m_controls; // in no order; a control knows its slot
    QHash<const QObject*, LiveControl*> m_owners;
    QHash<const LiveControl*, QWidget*> m_hosts;
    std::vector<QPointer<QWidget>> m_panes; // back to front
    std::int32_t m_nextTab = 0;             // the place after the last one given
    bool m_stackChanged = false;
    bool m_overlapsChanged = false;
    bool m_tabOrderChanged = false;
    bool m_shapesChanged = false;
};

} // namespace zan::surface
