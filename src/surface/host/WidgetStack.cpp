#include "surface/host/WidgetStack.h"

#include "surface/host/DisplayList.h"
#include "surface/host/PaintedHost.h"
#include "surface/host/Surface.h"
#include "surface/host/WidgetControl.h"

#include <QAbstractScrollArea>
#include <QRegion>

#include <algorithm>
#include <unordered_set>

namespace zan::surface {

namespace {

constexpr std::size_t PaneSize = 100;   // widgets that are direct siblings
constexpr std::int32_t LastTab = 32767; // a TabIndex is 16-bit

} // namespace

/// A transparent parent for widgets, over the whole surface. Mouse events that its children leave go on to the
/// surface, as every ignored event does.
class WidgetStack::Pane : public QWidget
{
public:
    explicit Pane(QWidget* parent)
        : QWidget(parent)
    {
        setAttribute(Qt::WA_NoSystemBackground);
    }
};

WidgetStack::WidgetStack(Surface& surface)
    : m_surface(surface)
{}

WidgetStack::~WidgetStack() = default;

void WidgetStack::add(WidgetControl& control)
{
    control.m_slot = std::uint32_t(m_controls.size());
    m_controls.push_back(&control);
    if (control.m_tabIndex < 0)
        tabLast(control);
}

void WidgetStack::tabLast(WidgetControl& control)
{
    if (m_nextTab > LastTab) { // years of loading and unloading: numbers without gaps again
        std::vector<WidgetControl*> order = m_controls;
        std::erase(order, &control);
        sortByTab(order);
        m_nextTab = 0;
        for (WidgetControl* other : order)
            other->m_tabIndex = std::int16_t(std::min(m_nextTab++, LastTab));
    }
    control.m_tabIndex = std::int16_t(std::min(m_nextTab++, LastTab));
    m_tabOrderChanged = true;
}

void WidgetStack::tabOrderChanged(std::int32_t place) noexcept
{
    m_nextTab = std::max(m_nextTab, place + 1);
    m_tabOrderChanged = true;
}

void WidgetStack::remove(WidgetControl& control)
{
    if (m_surface.m_display->upperCount() > 0)
        m_overlapsChanged = true;
    control.dropWidget();
    m_controls[control.m_slot] = m_controls.back();
    m_controls[control.m_slot]->m_slot = control.m_slot;
    m_controls.pop_back();
}

void WidgetStack::remove(LiveControl& painted)
{
    if (painted.m_hosted)
        unhost(painted);
}

void WidgetStack::own(LiveControl& control, QWidget& widget)
{
    const auto watch = [&](QWidget* part) {
        m_owners.insert(part, &control);
        part->installEventFilter(&m_surface);
        part->setMouseTracking(true); // a control is told of every move over it, pressed or not
    };
    watch(&widget);
    if (auto* area = qobject_cast<QAbstractScrollArea*>(&widget))
        watch(area->viewport());
    m_stackChanged = m_tabOrderChanged = m_overlapsChanged = true;
}

void WidgetStack::forget(QWidget& widget)
{
    const auto ignore = [&](QObject* object) {
        m_owners.remove(object);
        object->removeEventFilter(&m_surface);
    };
    ignore(&widget);
    if (auto* area = qobject_cast<QAbstractScrollArea*>(&widget))
        ignore(area->viewport());
    m_shapesChanged = true;
}

void WidgetStack::restyle()
{
    for (WidgetControl* control : m_controls) {
        if (control->m_widget)
            control->sync(LiveControl::Style);
    }
}

void WidgetStack::abandon(bool later)
{
    for (WidgetControl* control : m_controls) {
        if (later && control->m_widget) {
            WidgetControl::stopTelling(*control->m_widget);
            forget(*control->m_widget);
        }
        control->m_widget = nullptr;
    }
    m_owners.clear();
    if (!later)
        return;
    for (QWidget* child : m_surface.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        child->hide();
        child->setParent(nullptr);
        child->deleteLater();
    }
}

void WidgetStack::makeWidget(WidgetControl& control)
{
    // A pane that has room saves moving the widget there later; stack() has the last word.
    QWidget* parent = &m_surface;
    if (!m_panes.empty() && m_panes.back() && std::size_t(m_panes.back()->children().size()) < PaneSize)
        parent = m_panes.back();
    else if (m_controls.size() > PaneSize)
        parent = &paneAt(m_panes.size(), m_panes.size() + 1);
    QWidget* widget = control.createWidget(parent);
    control.m_widget = widget;
    own(control, *widget);
    control.sync(0xff);
}

void WidgetStack::sync(WidgetControl& control, int changes)
{
    const bool visible = control.visible();
    if (!control.m_widget && !visible)
        return;
    // Assistive tools are told of each step; they may take the control away, and the surface with all of this.
    const QPointer<Surface> alive(&m_surface);
    if (!control.m_widget)
        makeWidget(control);
    else
        control.sync(changes);
    const QPointer<QWidget> widget = control.m_widget;
    if (alive && widget && widget->isHidden() == visible)
        widget->setVisible(visible);
    if (!alive)
        return;
    if (changes & (LiveControl::Geometry | LiveControl::Presence))
        m_shapesChanged = m_overlapsChanged = true;
}

QWidget* WidgetStack::hostOf(const LiveControl& control) const
{
    return m_hosts.value(&control);
}

QWidget* WidgetStack::widgetOf(LiveControl& control) const
{
    return control.hosting() == LiveControl::Hosting::Widget ? static_cast<WidgetControl&>(control).widget()
                                                             : hostOf(control);
}

bool WidgetStack::arrange()
{
    bool raised = false;
    if (std::exchange(m_overlapsChanged, false))
        updateHosts();
    if (std::exchange(m_stackChanged, false)) {
        stack();
        raised = true;
    }
    if (std::exchange(m_shapesChanged, false))
        shapePanes();
    if (std::exchange(m_tabOrderChanged, false))
        orderTabs();
    return raised;
}

/// Which painted controls lie over a widget, or over another hosted control? Each one found is a widget itself for
/// those above it.
void WidgetStack::updateHosts()
{
    DisplayList& display = *m_surface.m_display;
    if (display.upperCount() == 0)
        return;
    std::vector<LiveControl*> above;
    std::vector<LiveControl*> queue;
    std::unordered_set<LiveControl*> wanted;
    for (WidgetControl* control : m_controls) {
        if (control->visible())
            queue.push_back(control);
    }
    while (!queue.empty()) {
        LiveControl* below = queue.back();
        queue.pop_back();
        above.clear();
        display.collectUpper(below->bounds(), above);
        for (LiveControl* control : above) {
            if (control->m_rank > below->m_rank && wanted.insert(control).second)
                queue.push_back(control);
        }
    }
    std::vector<LiveControl*> hosted;
    for (const QWidget* host : std::as_const(m_hosts)) {
        if (LiveControl* control = m_owners.value(host); !wanted.contains(control))
            hosted.push_back(control);
    }
    for (LiveControl* control : hosted)
        unhost(*control);
    for (LiveControl* control : wanted) {
        if (!control->m_hosted)
            host(*control);
    }
}

void WidgetStack::host(LiveControl& control)
{
    auto* widget = new PaintedHost(m_surface, control);
    m_hosts.insert(&control, widget);
    control.m_hosted = true;
    own(control, *widget);
    m_overlapsChanged = false;
    widget->setGeometry(control.bounds());
    widget->show();
    m_surface.update(control.bounds());
    m_shapesChanged = true;
}

void WidgetStack::unhost(LiveControl& control)
{
    control.m_hosted = false;
    QWidget* widget = m_hosts.take(&control);
    if (!widget)
        return;
    forget(*widget);
    widget->hide();
    widget->deleteLater();
    m_surface.update(control.bounds());
}

QWidget& WidgetStack::paneAt(std::size_t place, std::size_t count)
{
    if (m_panes.size() < count)
        m_panes.resize(count);
    QPointer<QWidget>& pane = m_panes[place];
    if (!pane) {
        pane = new Pane(&m_surface);
        pane->setGeometry(m_surface.rect());
        pane->show();
        pane->raise();
    }
    return *pane;
}

/// Puts the widgets into the order of their controls: direct children of the surface while they are few, in panes
/// when there are many.
void WidgetStack::stack()
{
    std::vector<Entry> entries;
    entries.reserve(m_controls.size());
    for (WidgetControl* control : m_controls) {
        if (control->m_widget)
            entries.push_back({control->m_rank, control, control->m_widget});
    }
    for (auto host = m_hosts.begin(); host != m_hosts.end(); ++host)
        entries.push_back({host.key()->m_rank, m_owners.value(host.value()), host.value()});
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.rank < b.rank; });

    const bool direct = entries.size() <= PaneSize;
    const std::size_t paneCount = direct ? 0 : (entries.size() + PaneSize - 1) / PaneSize;
    for (std::size_t place = 0; place < entries.size(); ++place) {
        QWidget& widget = *entries[place].widget;
        QWidget& parent = direct ? m_surface : paneAt(place / PaneSize, paneCount);
        if (widget.parentWidget() != &parent) {
            const bool focused = widget.hasFocus();
            widget.setParent(&parent);
            widget.setGeometry(entries[place].control->bounds());
            widget.setVisible(entries[place].control->visible());
            if (focused)
                widget.setFocus(Qt::OtherFocusReason);
            m_tabOrderChanged = true;
        }
    }
    // What is in order already stays: raising moves a widget past all its siblings.
    QWidget* parent = nullptr;
    qsizetype last = -1;
    for (const Entry& entry : entries) {
        if (entry.widget->parentWidget() != parent) {
            parent = entry.widget->parentWidget();
            last = -1;
        }
        const qsizetype place = parent->children().indexOf(entry.widget);
        if (place < last) {
            entry.widget->raise();
            last = parent->children().size() - 1;
        } else {
            last = place;
        }
    }
    while (m_panes.size() > paneCount) {
        if (m_panes.back())
            m_panes.back()->deleteLater();
        m_panes.pop_back();
    }
    m_shapesChanged = true;
}

/// A pane has the shape of its widgets.
void WidgetStack::shapePanes()
{
    for (const QPointer<QWidget>& pane : m_panes) {
        if (!pane)
            continue;
        QRegion shape;
        for (QObject* child : pane->children()) {
            const auto* widget = qobject_cast<QWidget*>(child);
            if (widget && !widget->isHidden())
                shape += widget->geometry();
        }
        pane->setGeometry(m_surface.rect());
        if (shape.isEmpty())
            pane->clearMask();
        else if (pane->mask() != shape)
            pane->setMask(shape);
        pane->setVisible(!shape.isEmpty());
    }
}

void WidgetStack::sortByTab(std::vector<WidgetControl*>& controls)
{
    std::sort(controls.begin(), controls.end(), [](const WidgetControl* a, const WidgetControl* b) {
        return a->m_tabIndex != b->m_tabIndex ? a->m_tabIndex < b->m_tabIndex : a->m_rank < b->m_rank;
    });
}

void WidgetStack::orderTabs()
{
    std::vector<WidgetControl*> order;
    for (WidgetControl* control : m_controls) {
        if (control->m_widget)
            order.push_back(control);
    }
    sortByTab(order);
    for (std::size_t place = 1; place < order.size(); ++place)
        QWidget::setTabOrder(order[place - 1]->m_widget, order[place]->m_widget);
}

} // namespace zan::surface
