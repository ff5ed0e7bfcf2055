#include "surface/edit/EditLayer.h"

#include "surface/edit/HandleTable.h"
#include "surface/host/Handles.h"
#include "surface/host/PointerLoop.h"
#include "surface/host/ScreenPlace.h"
#include "surface/host/Surface.h"
#include "surface/host/SurfaceAccessible.h"
#include "values/Failure.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace zan::surface {

namespace {

/// More changed rectangles than this cost more than painting everything.
constexpr int MostRectangles = 128;

constexpr QColor GuideColour(230, 0, 120);
constexpr QColor MarkerColour(255, 0, 0);
constexpr QColor FrameColour(255, 128, 0);
/// Pixels between a framed control and its frame, which is two pixels wide.
constexpr int FrameGap = 1;
constexpr int FrameWidth = 2;

} // namespace

Qt::CursorShape handleCursor(std::size_t index)
{
    switch (handleTable[index].cursor) {
    case 32642:
        return Qt::SizeFDiagCursor;
    case 32643:
        return Qt::SizeBDiagCursor;
    case 32644:
        return Qt::SizeHorCursor;
    default:
        return Qt::SizeVerCursor;
    }
}

HandleFrame::~HandleFrame()
{
    if (m_layer)
        m_layer->detach(*this);
}

EditLayer& EditLayer::of(QWidget& place)
{
    if (EditLayer* layer = find(place))
        return *layer;
    return *new EditLayer(place);
}

EditLayer* EditLayer::find(const QWidget& place)
{
    if (const auto* surface = dynamic_cast<const Surface*>(&place))
        return dynamic_cast<EditLayer*>(surface->layer());
    for (QObject* child : place.children()) {
        if (auto* layer = dynamic_cast<EditLayer*>(child))
            return layer;
    }
    return nullptr;
}

EditLayer::EditLayer(QWidget& place)
    : m_place(place)
    , m_overSurface(dynamic_cast<Surface*>(&place) != nullptr)
{
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    setParent(&place); // whole by now: a widget that could not be made stays with nobody
    setGeometry(place.rect());
    if (m_overSurface) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    } else {
        setMouseTracking(true);
        place.installEventFilter(this);
        renewMask();
    }
    show();
    raise();
    if (m_overSurface)
        static_cast<Surface&>(place).setLayer(this);
}

EditLayer::~EditLayer() = default;

// Targets ------------------------------------------------------------------------------------------------------

void EditLayer::attach(HandleFrame& frame, std::int32_t target, int size, values::Colour colour)
{
    if (m_free.empty())
        addSlot();
    frame.m_layer = this;
    frame.m_slot = m_free.back();
    m_free.pop_back();
    Slot& slot = m_slots[frame.m_slot];
    slot = Slot{.frame = &frame, .size = size, .colour = colour};
    if (m_overSurface) {
        LiveControl* control = Handles::control(target);
        slot.control = control && control->surface() == &m_place ? control : nullptr;
    } else if (QWidget* widget = Handles::widget(target); widget && m_place.isAncestorOf(widget)) {
        slot.widget = widget;
    }
}

void EditLayer::addSlot()
{
    // Room for every slot, so that one can be given back without taking memory.
    if (m_free.capacity() <= m_slots.size())
        m_free.reserve(2 * m_slots.size() + 8);
    m_slots.emplace_back();
    m_free.push_back(std::uint32_t(m_slots.size() - 1));
}

void EditLayer::detach(HandleFrame& frame) noexcept
{
    if (frame.m_layer != this)
        return; // taking it up has failed
    // A frame goes whatever happens: handles that cannot be wiped out now go with the next paint.
    static_cast<void>(values::attempt([&] { setShown(frame, false); }));
    disown(frame);
    m_slots[frame.m_slot] = {};
    m_free.push_back(frame.m_slot);
    frame.m_layer = nullptr;
}

const void* EditLayer::keyOf(const Slot& slot) const
{
    return slot.control ? static_cast<const void*>(slot.control) : slot.widget.data();
}

bool EditLayer::own(HandleFrame& frame)
{
    if (frame.m_layer != this)
        return false;
    const Slot& slot = m_slots[frame.m_slot];
    const void* key = keyOf(slot);
    if (!key || m_owners.contains(key))
        return false;
    m_owners.insert(key, &frame);
    if (slot.widget)
        slot.widget->installEventFilter(this);
    return true;
}

void EditLayer::disown(HandleFrame& frame)
{
    const Slot& slot = m_slots[frame.m_slot];
    const void* key = keyOf(slot);
    if (!key || m_owners.value(key) != &frame)
        return;
    m_owners.remove(key);
    if (slot.widget)
        slot.widget->removeEventFilter(this);
}

QRect EditLayer::targetRectangle(const Slot& slot) const
{
    if (slot.control)
        return slot.control->bounds();
    if (slot.widget)
        return {slot.widget->mapTo(&m_place, QPoint(0, 0)), slot.widget->size()};
    return {};
}

QRect EditLayer::withHandles(const Slot& slot)
{
    const int size = slot.size;
    // A target without a side still has handles at its corners.
    return {slot.target.x() - size, slot.target.y() - size, slot.target.width() + 2 * size,
            slot.target.height() + 2 * size};
}

std::int32_t EditLayer::rankOf(const Slot& slot) const
{
    return slot.control ? slot.control->rank() : 0;
}

void EditLayer::setShown(HandleFrame& frame, bool shown)
{
    if (frame.m_layer != this)
        return;
    Slot& slot = m_slots[frame.m_slot];
    if (slot.shown == shown || (shown && !keyOf(slot)))
        return;
    if (shown) {
        slot.target = targetRectangle(slot);
        m_index.insert(frame.m_slot, withHandles(slot));
        slot.shown = true;
        dirty(withHandles(slot));
    } else {
        slot.shown = false;
        m_index.remove(frame.m_slot, withHandles(slot));
        dirty(withHandles(slot));
    }
    renewMask();
}

/// Puts the handles of a frame that is shown where its target lies now.
void EditLayer::place(std::uint32_t number)
{
    Slot& slot = m_slots[number];
    dirty(withHandles(slot));
    m_index.remove(number, withHandles(slot));
    slot.target = targetRectangle(slot);
    m_index.insert(number, withHandles(slot));
    dirty(withHandles(slot));
    renewMask();
}

EditLayer::Slot* EditLayer::ownedSlot(const void* target)
{
    HandleFrame* frame = m_owners.value(target);
    return frame ? &m_slots[frame->m_slot] : nullptr;
}

void EditLayer::targetChanged(const void* target)
{
    Slot* slot = ownedSlot(target);
    if (!slot || !slot->shown)
        return;
    HandleFrame& frame = *slot->frame;
    const QSize before = slot->target.size();
    place(frame.m_slot);
    const bool sized = m_slots[frame.m_slot].target.size() != before;
    frame.targetMoved(sized);
}

// From the surface ---------------------------------------------------------------------------------------------

void EditLayer::controlMoved(LiveControl& control, const QRect&)
{
    if (&control == m_framed)
        dirtyFrame();
    targetChanged(&control);
}

void EditLayer::controlGone(LiveControl& control)
{
    if (&control == m_framed)
        setFramed(nullptr);
    for (Slot& slot : m_slots) {
        if (slot.control != &control)
            continue;
        HandleFrame& frame = *slot.frame;
        setShown(frame, false);
        disown(frame);
        slot.control = nullptr;
    }
}

void EditLayer::restacked()
{
    raise();
    if (m_spot)
        m_spot->raise();
    m_everythingDirty = true;
    flush();
}

void EditLayer::surfaceResized()
{
    setGeometry(m_place.rect());
}

void EditLayer::released(LiveControl& control)
{
    if (const Slot* slot = ownedSlot(&control); slot && slot->shown)
        slot->frame->targetReleased();
}

bool EditLayer::pressed(QPoint place, const QMouseEvent& event)
{
    const Hit hit = handleAt(place);
    if (!hit.frame)
        return false;
    if (event.button() == Qt::LeftButton)
        startResize(hit);
    return true; // a handle keeps every press from what lies below it
}

void EditLayer::startResize(const Hit& hit)
{
    const values::Ref<LiveControl> control(m_slots[hit.frame->m_slot].control);
    const QPointer<Surface> surface(control ? control->surface() : nullptr);
    const QPointer<EditLayer> alive(this);
    if (surface)
        surface->tell([&](SurfaceEvents& events) { events.resizeBegins(*control); });
    if (alive && handleAt(hit.rectangle.center()).frame == hit.frame)
        hit.frame->handlePressed(hit.index);
    if (surface)
        surface->tell([&](SurfaceEvents& events) { events.resizeEnded(*control); });
}

bool EditLayer::pointerMoved(QPoint place)
{
    const Hit hit = handleAt(place);
    showSpot(hit);
    return hit.frame != nullptr;
}

void EditLayer::showSpot(const Hit& hit)
{
    if (!hit.frame) {
        if (m_spot)
            m_spot->hide();
        return;
    }
    if (!m_spot) {
        m_spot = new QWidget(&m_place);
        m_spot->setAttribute(Qt::WA_NoSystemBackground);
        m_spot->setMouseTracking(true); // its moves go on to the place below
        m_spot->setFocusPolicy(Qt::NoFocus);
        m_spot->installEventFilter(this);
    }
    m_spot->setCursor(handleCursor(hit.index));
    m_spot->setGeometry(hit.rectangle);
    m_spot->raise();
    m_spot->show();
}

// Over other widgets -------------------------------------------------------------------------------------------

bool EditLayer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_spot) {
        if (event->type() == QEvent::Leave)
            m_spot->hide();
        return false;
    }
    if (watched == &m_place) {
        if (event->type() == QEvent::Resize)
            setGeometry(m_place.rect());
        return false;
    }
    const QPointer<EditLayer> alive(this);
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize) {
        targetChanged(watched);
    } else if (event->type() == QEvent::MouseButtonRelease &&
               static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        if (const Slot* slot = ownedSlot(watched); slot && slot->shown)
            slot->frame->targetReleased();
    }
    return !alive;
}

void EditLayer::mousePressEvent(QMouseEvent* event)
{
    const PointerPress press(toScreen(*this, event->position()).toPoint());
    pressed(event->position().toPoint(), *event);
}

void EditLayer::mouseMoveEvent(QMouseEvent* event)
{
    if (const Hit hit = handleAt(event->position().toPoint()); hit.frame)
        setCursor(handleCursor(hit.index));
}

/// Over a widget that is no surface the layer takes the mouse where it has handles, and nowhere else.
void EditLayer::renewMask()
{
    if (m_overSurface)
        return;
    QRegion shape;
    for (const Slot& slot : m_slots) {
        if (!slot.shown)
            continue;
        for (const QRect& handle : handleRectangles(slot.target, slot.size))
            shape += handle;
    }
    setVisible(!shape.isEmpty());
    if (!shape.isEmpty())
        setMask(shape);
}

// Finding and drawing ------------------------------------------------------------------------------------------

bool EditLayer::coversPlace(const Slot& slot, QPoint place) const
{
    return slot.control && slot.control->visible() && slot.target.contains(place);
}

EditLayer::Hit EditLayer::handleAt(QPoint place) const
{
    std::vector<const Slot*> near;
    m_index.query(QRect(place, QSize(1, 1)), [&](std::uint32_t number) { near.push_back(&m_slots[number]); });
    std::sort(near.begin(), near.end(), [this](const Slot* a, const Slot* b) { return rankOf(*a) > rankOf(*b); });
    for (const Slot* slot : near) {
        if (coversPlace(*slot, place))
            return {};
        const auto handles = handleRectangles(slot->target, slot->size);
        for (std::size_t index = 0; index < handles.size(); ++index) {
            if (handles[index].contains(place))
                return {slot->frame, index, handles[index]};
        }
    }
    return {};
}

/// What of a handle is not covered by controls that lie higher than its target.
QRegion EditLayer::uncoveredPart(std::uint32_t number, const QRect& handle) const
{
    QRegion part(handle);
    const std::int32_t rank = rankOf(m_slots[number]);
    m_index.query(handle, [&](std::uint32_t other) {
        const Slot& slot = m_slots[other];
        if (slot.control && rankOf(slot) > rank && slot.control->visible() && slot.target.intersects(handle))
            part -= slot.target;
    });
    return part;
}

void EditLayer::paintHandles(QPainter& painter, std::uint32_t number, const QRegion& region) const
{
    const Slot& slot = m_slots[number];
    const QColor colour = values::toQColor(slot.colour, palette());
    for (const QRect& handle : handleRectangles(slot.target, slot.size)) {
        if (handle.isNull() || !region.intersects(handle))
            continue;
        for (const QRect& part : uncoveredPart(number, handle))
            painter.fillRect(part, colour);
    }
}

void EditLayer::paintEvent(QPaintEvent* event)
{
    std::vector<std::uint32_t> shown;
    m_index.query(event->rect(), [&](std::uint32_t number) { shown.push_back(number); });
    std::sort(shown.begin(), shown.end(),
              [this](std::uint32_t a, std::uint32_t b) { return rankOf(m_slots[a]) < rankOf(m_slots[b]); });
    QPainter painter(this);
    if (m_framed && m_framed->visible()) {
        QRegion frame(m_frame);
        frame -= m_frame.adjusted(FrameWidth, FrameWidth, -FrameWidth, -FrameWidth);
        for (const QRect& side : frame)
            painter.fillRect(side, FrameColour);
    }
    for (const std::uint32_t number : shown)
        paintHandles(painter, number, event->region());
    if (m_marker)
        painter.fillRect(*m_marker, MarkerColour);
    if (!m_dragPicture.isNull()) {
        painter.setOpacity(0.7);
        painter.drawPixmap(m_dragPlace, m_dragPicture);
        painter.setOpacity(1);
    }
    painter.setPen(GuideColour);
    for (const QLine& guide : m_guides)
        painter.drawLine(guide);
}

void EditLayer::setDragPicture(const QPixmap& picture, QPoint place)
{
    const auto extent = [this] { return QRect(m_dragPlace, m_dragPicture.deviceIndependentSize().toSize()); };
    dirty(extent());
    m_dragPicture = picture;
    m_dragPlace = place;
    dirty(extent());
}

void EditLayer::setGuides(const QList<QLine>& guides)
{
    if (guides == m_guides)
        return;
    for (const QLine& line : m_guides + guides)
        dirty(QRect(line.p1(), line.p2()).normalized().adjusted(-1, -1, 1, 1));
    m_guides = guides;
}

void EditLayer::setFramed(LiveControl* control)
{
    if (control == m_framed)
        return;
    m_framed = control;
    dirtyFrame();
    if (control && m_overSurface)
        SurfaceAccessible::currentChanged(static_cast<Surface&>(m_place));
}

void EditLayer::dirtyFrame()
{
    constexpr int Around = FrameGap + FrameWidth;
    dirty(m_frame);
    m_frame = m_framed ? m_framed->bounds().adjusted(-Around, -Around, Around, Around) : QRect();
    dirty(m_frame);
}

void EditLayer::setMarker(const std::optional<QRect>& marker)
{
    if (marker == m_marker)
        return;
    if (m_marker)
        dirty(*m_marker);
    m_marker = marker;
    if (m_marker)
        dirty(*m_marker);
}

/// Collected, and shown with the surface's next flush.
void EditLayer::dirty(const QRect& rectangle)
{
    if (m_spot && m_spot->isVisible() && m_spot->geometry().intersects(rectangle))
        m_spot->hide();
    if (rectangle.isEmpty() || m_everythingDirty)
        return;
    if (++m_dirtyCount > MostRectangles)
        m_everythingDirty = true;
    else
        m_dirty += rectangle;
    if (m_overSurface)
        static_cast<Surface&>(m_place).postFlush();
    else
        flush();
}

void EditLayer::flush()
{
    if (std::exchange(m_everythingDirty, false))
        update();
    else if (!m_dirty.isEmpty())
        update(m_dirty);
    m_dirty = {};
    m_dirtyCount = 0;
}

} // namespace zan::surface
