#include "display/SiteMapAccessible.h"

#include "display/SiteMapView.h"
#include "surface/host/ScreenPlace.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

namespace zan::display::SiteMapAccessible {

namespace {

using Faces = QHash<int, QAccessible::Id>; // by site

/// The accessible faces of sites that somebody has asked for.
QHash<const SiteMapView*, Faces>& faces()
{
    static auto* table = new QHash<const SiteMapView*, Faces>;
    return *table;
}

/// One site as assistive tools see it.
class SiteFace : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    SiteFace(SiteMapView& view, int site)
        : m_view(&view)
        , m_site(site)
    {}

    bool isValid() const override { return m_view && m_site <= m_view->chart().shownCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return isValid() ? m_view->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override
    {
        return isValid() ? QAccessible::queryAccessibleInterface(m_view.data()) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text kind) const override
    {
        if (!isValid())
            return {};
        const SiteChart::Site& site = m_view->chart().site(m_site);
        return kind == QAccessible::Name          ? site.caption
               : kind == QAccessible::Description ? site.description
                                                  : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override
    {
        if (!isValid())
            return {};
        return surface::partOnScreen(*m_view->viewport(), m_view->labelRectangle(m_site));
    }
    QAccessible::Role role() const override { return QAccessible::TreeItem; }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid)
            return state;
        state.focusable = state.selectable = true;
        state.focused = m_view->hasFocus() && m_view->currentSite() == m_site;
        state.selected = m_view->selectedSite() == m_site;
        state.disabled = !m_view->isEnabled();
        state.offscreen = !m_view->viewport()->rect().intersects(m_view->labelRectangle(m_site));
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override
    {
        if (!isValid() || !m_view->isEnabled())
            return;
        if (name == setFocusAction()) {
            m_view->setFocus(Qt::OtherFocusReason);
            m_view->setCurrentSite(m_site);
        } else if (name == pressAction()) {
            m_view->choose(m_site);
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<SiteMapView> m_view;
    int m_site;
};

QAccessibleInterface* faceOf(SiteMapView& view, int site)
{
    QAccessible::Id& id = faces()[&view][site];
    if (id == 0)
        id = QAccessible::registerAccessibleInterface(new SiteFace(view, site));
    return QAccessible::accessibleInterface(id);
}

/// The map: a tree whose items are the sites, in their order.
class MapFace : public QAccessibleWidget
{
public:
    explicit MapFace(SiteMapView& view)
        : QAccessibleWidget(&view, QAccessible::Tree, QStringLiteral("Site map"))
        , m_view(view)
    {}

    int childCount() const override { return m_view.chart().shownCount(); }
    QAccessibleInterface* child(int index) const override
    {
        return index >= 0 && index < childCount() ? faceOf(m_view, index + 1) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        const Faces known = faces().value(&m_view);
        for (auto face = known.begin(); face != known.end(); ++face) {
            if (QAccessible::accessibleInterface(face.value()) == child)
                return face.key() - 1;
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        const int site = m_view.siteAt(surface::fromScreen(*m_view.viewport(), QPointF(x, y)));
        return child(site - 1);
    }
    QAccessibleInterface* focusChild() const override
    {
        return m_view.hasFocus() ? child(m_view.currentSite() - 1) : nullptr;
    }
    QRect rect() const override
    {
        return m_view.isVisible() ? surface::partOnScreen(m_view, m_view.rect()) : QRect();
    }

private:
    SiteMapView& m_view;
};

QAccessibleInterface* makeFace(const QString&, QObject* object)
{
    auto* view = qobject_cast<SiteMapView*>(object);
    return view ? new MapFace(*view) : nullptr;
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

void forget(const SiteMapView& view)
{
    for (const QAccessible::Id id : faces().take(&view))
        QAccessible::deleteAccessibleInterface(id);
}

void tellSites(SiteMapView& view)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(&view, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

void tellFocus(SiteMapView& view)
{
    if (!QAccessible::isActive() || !view.hasFocus() || view.currentSite() == 0)
        return;
    QAccessibleEvent event(&view, QAccessible::Focus);
    event.setChild(view.currentSite() - 1);
    QAccessible::updateAccessibility(&event);
}

} // namespace zan::display::SiteMapAccessible
