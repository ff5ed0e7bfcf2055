#include "surface/host/Surface.h"

#include "surface/host/DisplayList.h"
#include "surface/host/EventRouter.h"
#include "surface/host/Frames.h"
#include "surface/host/Handles.h"
#include "surface/host/SurfaceAccessible.h"
#include "surface/host/SurfaceLayer.h"
#include "surface/host/WidgetControl.h"
#include "surface/host/WidgetStack.h"
#include "surface/text/TextPainter.h"

#include <QBackingStore>
#include <QCoreApplication>
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScopeGuard>

#include <algorithm>

namespace zan::surface {

using values::ErrorNumber;

namespace {

/// More scattered rectangles than this cost more than painting everything.
constexpr std::size_t MostRectangles = 256;

QEvent::Type flushEvent()
{
    static const int type = QEvent::registerEventType();
    return QEvent::Type(type);
}

/// Keeps events from the owner while it lives.
class BusyGuard
{
public:
    explicit BusyGuard(int& count)
        : m_count(count)
    {
        ++m_count;
    }
    ~BusyGuard() { --m_count; }
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;

private:
    int& m_count;
};

} // namespace

Surface::Surface(QWidget* parent)
    : QWidget(parent)
    , m_display(std::make_unique<DisplayList>())
    , m_widgets(std::make_unique<WidgetStack>(*this))
    , m_router(std::make_unique<EventRouter>(*this))
    , m_text(std::make_unique<TextPainter>())
    , m_font(values::make<FontObject>())
{
    SurfaceAccessible::install();
    m_font->addListener(*this);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::ClickFocus);
    setMouseTracking(true);
}

Surface::~Surface()
{
    m_events = nullptr;
    delete std::exchange(m_layer, nullptr); // before the widgets: what it draws for may outlive the surface
    ++m_busy;
    SurfaceAccessible::forget(*this);
    m_font->removeListener(*this);
    Handles::release(m_handle);
    m_changed.clear();
    m_widgets->abandon(m_telling > 0 || m_busy > 1);
    for (const Ref<ControlArray>& array : m_arrays)
        array->detach();
}

ControlArray& Surface::addArray(const QString& name, ControlCreator creator, const DesignSetup& setup)
{
    if (array(name))
        values::raise(ErrorNumber::InvalidCall);
    m_arrays.push_back(values::make<ControlArray>(*this, name, std::move(creator), setup));
    ControlArray& added = *m_arrays.back();
    added.place(ControlArray::TemplateIndex);
    return added;
}

ControlArray* Surface::array(QStringView name) const noexcept
{
    for (const Ref<ControlArray>& candidate : m_arrays) {
        if (name.compare(candidate->name(), Qt::CaseInsensitive) == 0)
            return candidate.get();
    }
    return nullptr;
}

std::vector<Ref<LiveControl>> Surface::controls() const
{
    std::vector<Ref<LiveControl>> all;
    for (const Ref<ControlArray>& array : m_arrays) {
        for (int index = 0; index <= array->uBound(); ++index) {
            if (LiveControl* control = array->find(index))
                all.emplace_back(control);
        }
    }
    return all;
}

std::vector<LiveControl*> Surface::paintedControls() const
{
    std::vector<LiveControl*> shown;
    m_display->forEach([&](LiveControl& control) {
        if (control.visible())
            shown.push_back(&control);
    });
    return shown;
}

Ref<LiveControl> Surface::controlAt(QPoint point) const
{
    for (QWidget* child = childAt(point); child && child != this; child = child->parentWidget()) {
        if (LiveControl* control = m_widgets->controlOf(child); control && control->enabled())
            return Ref<LiveControl>(control);
    }
    return Ref<LiveControl>(m_display->topAt(point));
}

LiveControl* Surface::controlOfWidget(const QWidget& widget) const
{
    return m_widgets->controlOf(&widget);
}

LiveControl* Surface::controlOfHandle(std::int32_t hWnd)
{
    return Handles::control(hWnd);
}

Surface* Surface::surfaceOfHandle(std::int32_t hWnd)
{
    return Handles::surface(hWnd);
}

std::int32_t Surface::hWnd()
{
    if (m_handle == 0)
        m_handle = Handles::allocate(*this);
    return m_handle;
}

void Surface::setBackColor(Colour colour)
{
    if (m_backColor == colour)
        return;
    m_backColor = colour;
    lookChanged();
}

void Surface::setForeColor(Colour colour)
{
    m_foreColor = colour;
    lookChanged();
}

void Surface::setSurfaceFont(const Ref<FontObject>& font)
{
    if (!font)
        values::raise(ErrorNumber::ObjectNotSet);
    const Ref<FontObject> next = font;
    m_font->removeListener(*this);
    m_font = next;
    m_font->addListener(*this);
}

void Surface::fontChanged(FontObject&)
{
    // The surface itself shows no text; its controls have fonts of their own.
}

void Surface::setBackStyle(std::int16_t style)
{
    m_backStyle = style;
    setAttribute(Qt::WA_OpaquePaintEvent, style != 0);
    lookChanged();
}

void Surface::setBorderStyle(std::int16_t style)
{
    m_borderStyle = style;
    lookChanged();
}

void Surface::setPicture(const Ref<Picture>& picture)
{
    m_picture = picture;
    lookChanged();
}

void Surface::setTakesInput(bool takes)
{
    if (m_takesInput == takes)
        return;
    m_takesInput = takes;
    for (const Ref<LiveControl>& control : controls()) {
        if (control->hosting() == LiveControl::Hosting::Widget)
            controlChanged(*control, LiveControl::Look | LiveControl::Style);
    }
}

void Surface::cls()
{
    lookChanged();
}

void Surface::lookChanged()
{
    m_everything = true;
    postFlush();
}

void Surface::controlLoaded(LiveControl& control)
{
    control.m_rank = nextRank(true);
    if (control.hosting() == LiveControl::Hosting::Widget)
        m_widgets->add(static_cast<WidgetControl&>(control));
    else
        m_display->add(control);
}

void Surface::controlUnloaded(LiveControl& control)
{
    const BusyGuard guard(m_busy);
    m_router->forget(control);
    if (m_layer)
        m_layer->controlGone(control);
    SurfaceAccessible::forget(control);
    if (control.hosting() == LiveControl::Hosting::Widget) {
        m_widgets->remove(static_cast<WidgetControl&>(control));
    } else {
        m_widgets->remove(control);
        m_display->remove(control);
        if (control.visible())
            uncovered(control.bounds());
    }
}

/// Marks a control for the next flush. Once everything is to be repainted there is nothing to keep for controls
/// that have no widget.
void Surface::controlChanged(LiveControl& control, int what)
{
    const bool hasWidget = control.hosting() == LiveControl::Hosting::Widget || control.m_hosted;
    if (!hasWidget) {
        if (what & LiveControl::Presence) {
            uncovered(control.bounds());
            if (control.hosting() == LiveControl::Hosting::Painted)
                m_widgets->overlapsChanged();
        }
        if (!control.m_visible)
            return;
        if (m_everything) {
            postFlush();
            return;
        }
    }
    control.m_pending |= std::uint8_t(what);
    if (control.m_queued)
        return;
    control.m_queued = true;
    m_changed.emplace_back(&control);
    if (!hasWidget && m_changed.size() > MostRectangles)
        m_everything = true;
    postFlush();
}

void Surface::controlMoved(LiveControl& control, const QRect& from)
{
    if (m_layer)
        m_layer->controlMoved(control, from);
    if (control.hosting() == LiveControl::Hosting::Widget) {
        if (m_display->upperCount() > 0)
            m_widgets->overlapsChanged();
        return;
    }
    m_display->moved(control, from);
    if (!control.visible())
        return;
    if (control.hosting() == LiveControl::Hosting::Painted)
        m_widgets->overlapsChanged();
    uncovered(from);
}

void Surface::controlRestacked(LiveControl& control, bool toFront)
{
    restack(control, nextRank(toFront));
}

void Surface::restack(LiveControl& control, std::int32_t rank)
{
    control.m_rank = rank;
    if (control.hosting() != LiveControl::Hosting::Widget) {
        m_display->restacked();
        uncovered(control.bounds());
    }
    if (control.hosting() != LiveControl::Hosting::Windowless)
        m_widgets->restacked();
    m_layerCovered = true;
    postFlush();
}

void Surface::uncovered(const QRect& rectangle)
{
    postFlush();
    if (m_everything || rectangle.isEmpty())
        return;
    m_uncovered.push_back(rectangle);
    m_everything = m_uncovered.size() > MostRectangles;
}

void Surface::postFlush()
{
    if (m_flushPosted)
        return;
    m_flushPosted = true;
    QCoreApplication::postEvent(this, new QEvent(flushEvent()), Qt::HighEventPriority);
}

void Surface::flush()
{
    if (m_busy > 0)
        return;
    m_flushPosted = false;
    if (!syncWidgets())
        return;
    if (m_layer)
        m_layer->flush();
    const bool everything = m_everything;
    QRegion region = takeDirtyRegion();
    if (everything)
        update();
    else if (!region.isEmpty())
        update(region);
}

/// Brings the widgets of changed controls up to date; painted controls stay in the list. The toolkit tells assistive
/// tools of what is done to a widget at once: false when one of them has taken the surface away.
bool Surface::syncWidgets()
{
    const QPointer<Surface> alive(this);
    ++m_busy;
    const auto idle = qScopeGuard([&] {
        if (alive)
            --m_busy;
    });
    std::vector<Ref<LiveControl>> changed = std::move(m_changed);
    m_changed.clear();
    for (Ref<LiveControl>& control : changed) {
        if (!control->isLoaded() || control->surface() != this)
            continue;
        if (control->hosting() == LiveControl::Hosting::Widget) {
            control->m_queued = false;
            m_widgets->sync(static_cast<WidgetControl&>(*control), control->takePending());
            if (!alive)
                return false;
        } else if (control->m_hosted) {
            syncPainted(*control);
        } else {
            m_changed.push_back(std::move(control));
        }
    }
    if (m_widgets->arrange() || std::exchange(m_layerCovered, false)) {
        if (m_layer)
            m_layer->restacked();
    }
    return true;
}

/// A painted control that has a host: the host follows it.
void Surface::syncPainted(LiveControl& control)
{
    control.m_queued = false;
    control.m_pending = 0;
    if (QWidget* host = m_widgets->hostOf(control)) {
        host->setGeometry(control.bounds());
        host->update();
    }
    m_widgets->overlapsChanged();
}

QRegion Surface::takeDirtyRegion()
{
    std::vector<QRect> rectangles = std::move(m_uncovered);
    m_uncovered.clear();
    for (const Ref<LiveControl>& control : m_changed) {
        control->m_queued = false;
        control->m_pending = 0;
        if (control->isLoaded() && control->visible())
            rectangles.push_back(control->bounds());
    }
    m_changed.clear();
    QRegion region;
    // While nobody sees the surface, changes cost nothing: showing it paints everything.
    if (std::exchange(m_everything, !isVisible()))
        return region;
    for (const QRect& rectangle : rectangles)
        region += rectangle & rect();
    return region;
}

bool Surface::event(QEvent* event)
{
    if (event->type() == flushEvent()) {
        const QPointer<Surface> alive(this);
        flush();
        if (alive)
            SurfaceAccessible::tellNews(*this); // and nothing after it: a listener may take the surface away
        return true;
    }
    if (m_router->surfaceEvent(*event))
        return true;
    return QWidget::event(event);
}

bool Surface::eventFilter(QObject* watched, QEvent* event)
{
    LiveControl* control = m_widgets->controlOf(watched);
    return control && m_router->widgetEvent(*control, *watched, *event);
}

/// Whether the running paint event goes to the screen, and not to somebody's picture.
bool Surface::isPaintingScreen() const
{
    QPoint offset;
    const QBackingStore* store = backingStore();
    return store && redirected(&offset) == const_cast<QBackingStore*>(store)->paintDevice();
}

void Surface::paintEvent(QPaintEvent* event)
{
    if (m_busy == 0)
        syncWidgets();
    const QRegion& region = event->region();
    m_painted.clear();
    m_display->collect(region, m_painted);
    m_lastPainted = int(m_painted.size());
    QPainter painter(this);
    paintBackground(painter, region);
    PaintContext context{painter, palette(), *m_text};
    for (LiveControl* control : m_painted)
        control->paint(context, control->bounds());
    if (m_borderStyle == 1)
        Frames::drawLine(painter, rect(), palette().color(QPalette::WindowText));
    if (region.boundingRect() == rect() && region.rectCount() == 1 && isPaintingScreen())
        takeDirtyRegion(); // nothing is left to be shown
}

void Surface::paintBackground(QPainter& painter, const QRegion& region)
{
    if (m_backStyle != 0) {
        const QColor colour = values::toQColor(m_backColor, palette());
        for (const QRect& part : region)
            painter.fillRect(part, colour);
    }
    if (m_picture)
        painter.drawPixmap(0, 0, m_picture->pixmap());
}

void Surface::paintControl(QPainter& painter, LiveControl& control, const QRect& rectangle)
{
    PaintContext context{painter, palette(), *m_text};
    control.paint(context, rectangle);
}

QPixmap Surface::pictureOf(LiveControl& control)
{
    const QRect rectangle(QPoint(0, 0), control.bounds().size().boundedTo(size()));
    if (rectangle.isEmpty())
        return {};
    if (control.hosting() == LiveControl::Hosting::Widget) {
        QWidget* widget = static_cast<WidgetControl&>(control).ensureWidget();
        return widget ? widget->grab(rectangle) : QPixmap();
    }
    QPixmap picture(rectangle.size() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintControl(painter, control, QRect(QPoint(0, 0), control.bounds().size()));
    return picture;
}

void Surface::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_widgets->surfaceResized();
    if (m_layer)
        m_layer->surfaceResized();
    postFlush();
    tell([](SurfaceEvents& events) { events.resized(); });
}

void Surface::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    const QPointer<Surface> alive(this);
    flush();
    if (alive)
        tell([](SurfaceEvents& events) { events.shown(); });
}

void Surface::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    tell([](SurfaceEvents& events) { events.hidden(); });
}

void Surface::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::ApplicationPaletteChange: {
        const BusyGuard guard(m_busy);
        m_widgets->restyle();
        lookChanged();
        break;
    }
    default:
        break;
    }
}

} // namespace zan::surface
