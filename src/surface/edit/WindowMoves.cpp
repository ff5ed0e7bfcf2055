#include "surface/edit/WindowMoves.h"

#include "surface/edit/EditLayer.h"
#include "surface/edit/HandleTable.h"
#include "surface/host/Handles.h"
#include "surface/host/ScreenPlace.h"
#include "surface/host/Surface.h"
#include "values/Twips.h"

#include <QGuiApplication>

namespace zan::surface {

namespace {

using values::Ref;

/// What a loop moves: a live control, or a widget of a host's own. It may go away at any time.
class Moved
{
public:
    explicit Moved(std::int32_t hWnd)
        : m_control(Handles::control(hWnd))
        , m_widget(m_control ? nullptr : Handles::widget(hWnd))
    {
        if (m_control && !m_control->isLoaded())
            m_control = nullptr;
        if (!exists())
            return;
        m_start = m_control ? m_control->bounds() : m_widget->geometry();
        if (m_control)
            m_measures = {m_control->left(), m_control->top(), m_control->width(), m_control->height()};
    }

    bool exists() const { return m_control ? m_control->isLoaded() : m_widget != nullptr; }
    LiveControl* control() const { return m_control.get(); }
    const QRect& start() const { return m_start; }
    QWidget* place() const { return m_control ? m_control->surface() : m_widget->parentWidget(); }

    void put(const QRect& rectangle)
    {
        if (!exists())
            return;
        if (!m_control) {
            m_widget->setGeometry(rectangle);
            return;
        }
        // A measure that keeps its pixel keeps its fraction of one.
        const auto measure = [](int pixels, int before, float exact) {
            return pixels == before ? exact : values::pixelsToTwips(pixels);
        };
        m_control->move(measure(rectangle.x(), m_start.x(), m_measures.left),
                        measure(rectangle.y(), m_start.y(), m_measures.top),
                        measure(rectangle.width(), m_start.width(), m_measures.width),
                        measure(rectangle.height(), m_start.height(), m_measures.height));
        m_control->surface()->flush();
    }

private:
    struct Measures
    {
        float left = 0;
        float top = 0;
        float width = 0;
        float height = 0;
    };
    Ref<LiveControl> m_control;
    QPointer<QWidget> m_widget;
    QRect m_start;
    Measures m_measures;
};

/// The pointer's picture for as long as something moves, wherever the pointer goes.
class LoopCursor
{
public:
    explicit LoopCursor(Qt::CursorShape shape) { QGuiApplication::setOverrideCursor(shape); }
    ~LoopCursor() { QGuiApplication::restoreOverrideCursor(); }
    LoopCursor(const LoopCursor&) = delete;
    LoopCursor& operator=(const LoopCursor&) = delete;
};

using Placing = std::function<QRect(const QRect& start, QPoint by)>;

/// Moves by the pointer, with whoever aligns controls having a say; `edges` follow it, 0 for all together.
PointerEnd follow(Moved& moved, std::uint8_t edges, const Placing& placing)
{
    const PointerPress* press = PointerPress::current();
    QWidget* place = moved.exists() ? moved.place() : nullptr;
    if (!press || !place)
        return PointerEnd::Interrupted;
    // Distances are those of the place: a host may draw it at a zoom.
    const QPointF from = fromScreen(*place, press->global());
    const QPointer<EditLayer> layer(moved.control() ? EditLayer::find(*place) : nullptr);
    const PointerEnd end = PointerLoop::run(*place, [&](QPoint global, Qt::KeyboardModifiers modifiers) {
        if (!moved.exists())
            return;
        const QPointF by = fromScreen(*moved.place(), global) - from;
        const QRect proposed = placing(moved.start(), by.toPoint());
        moved.put(layer && layer->adjust() ? layer->adjust()(*moved.control(), proposed, edges, modifiers)
                                           : proposed);
    });
    if (end == PointerEnd::Cancelled)
        moved.put(moved.start());
    if (layer)
        layer->setGuides({});
    return end;
}

Qt::CursorShape cursorOf(std::uint8_t edges)
{
    for (std::size_t index = 0; index < handleTable.size(); ++index) {
        if (handleTable[index].edges == edges)
            return handleCursor(index);
    }
    return Qt::SizeAllCursor;
}

} // namespace

PointerEnd moveWindow(std::int32_t hWnd)
{
    Moved moved(hWnd);
    if (!moved.exists() || !PointerPress::current())
        return PointerEnd::Interrupted;
    const LoopCursor cursor(Qt::SizeAllCursor);
    return follow(moved, 0, [](const QRect& start, QPoint by) { return start.translated(by); });
}

PointerEnd resizeWindow(std::int32_t hWnd, std::uint8_t edges)
{
    Moved moved(hWnd);
    if (!moved.exists() || !PointerPress::current())
        return PointerEnd::Interrupted;
    const LoopCursor cursor(cursorOf(edges));
    return follow(moved, edges, [edges](const QRect& start, QPoint by) { return resized(start, edges, by); });
}

std::optional<Drop> dragControl(LiveControl& control)
{
    const Ref<LiveControl> source(&control);
    const QPointer<Surface> surface(control.surface());
    const PointerPress* press = PointerPress::current();
    if (!surface || !press)
        return std::nullopt;
    QPoint place = fromScreen(*surface, press->global()).toPoint();
    const QPoint grab = place - control.bounds().topLeft();
    const QPixmap picture = surface->pictureOf(control);
    const QPointer<EditLayer> layer(&EditLayer::of(*surface));
    QPoint aligned; // what aligning adds to the pointer's place
    PointerEnd end;
    {
        const LoopCursor cursor(Qt::SizeAllCursor);
        end = PointerLoop::run(*surface, [&](QPoint global, Qt::KeyboardModifiers modifiers) {
            if (!surface || !layer || !source->isLoaded())
                return;
            place = fromScreen(*surface, global).toPoint();
            const QRect proposed(place - grab, source->bounds().size());
            aligned = layer->adjust()
                          ? layer->adjust()(*source, proposed, 0, modifiers).topLeft() - proposed.topLeft()
                          : QPoint();
            layer->setDragPicture(picture, proposed.topLeft() + aligned);
            surface->flush();
        });
    }
    if (layer) {
        layer->setDragPicture({}, {});
        layer->setGuides({});
    }
    if (end != PointerEnd::Released || !surface || !source->isLoaded() || !surface->rect().contains(place))
        return std::nullopt;
    const Ref<LiveControl> target = surface->controlAt(place);
    return Drop{target, (target ? place - target->bounds().topLeft() : place) + aligned};
}

} // namespace zan::surface
