#include "surface/host/PointerLoop.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace zan::surface {

namespace {

PointerPress* innermostPress = nullptr;
bool loopRuns = false;

} // namespace

PointerPress::PointerPress(QPoint global)
    : m_outer(innermostPress)
    , m_global(global)
{
    innermostPress = this;
    QCoreApplication::instance()->installEventFilter(this);
}

PointerPress::~PointerPress()
{
    innermostPress = m_outer;
}

const PointerPress* PointerPress::current() noexcept
{
    return innermostPress && innermostPress->m_held ? innermostPress : nullptr;
}

bool PointerPress::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        m_held = false;
    return false;
}

PointerEnd PointerLoop::run(QWidget& place, const Moved& moved)
{
    if (loopRuns || !PointerPress::current())
        return PointerEnd::Interrupted;
    PointerLoop loop(place, moved);
    loop.m_loop.exec();
    if (loop.m_error)
        std::rethrow_exception(loop.m_error);
    return loop.m_end;
}

bool PointerLoop::isRunning() noexcept
{
    return loopRuns;
}

PointerLoop::PointerLoop(QWidget& place, const Moved& moved)
    : m_place(&place)
    , m_moved(moved)
{
    loopRuns = true;
    QCoreApplication::instance()->installEventFilter(this);
    connect(&place, &QObject::destroyed, this, [this] { finish(PointerEnd::Interrupted); });
}

PointerLoop::~PointerLoop()
{
    loopRuns = false;
}

bool PointerLoop::eventFilter(QObject* watched, QEvent* event)
{
    watchPlace(*watched, *event);
    // Windows see the pointer first, and see it even when the widget that was pressed has gone meanwhile. Widgets are
    // looked at too: input that is made by program may reach them alone. Being told twice changes nothing.
    if (watched->isWindowType())
        follow(*event);
    // What ended the loop does not get through either, unless it was somebody else's window.
    return watched->isWidgetType() && (!m_ended || m_end == PointerEnd::Released) && follow(*event);
}

/// A place that is hidden, or whose window lies behind a modal one, has no pointer to follow.
void PointerLoop::watchPlace(const QObject& watched, const QEvent& event)
{
    const bool isEnd = event.type() == QEvent::Hide || event.type() == QEvent::WindowBlocked ||
                       event.type() == QEvent::WindowDeactivate;
    if (isEnd && m_place && (&watched == m_place || &watched == m_place->window()))
        finish(PointerEnd::Interrupted);
}

/// True for what must not reach the widgets while the loop runs.
bool PointerLoop::follow(QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseMove: {
        const auto& mouse = static_cast<QMouseEvent&>(event);
        if (mouse.buttons() & Qt::LeftButton)
            moveTo(mouse.globalPosition().toPoint(), mouse.modifiers());
        else
            finish(PointerEnd::Released); // it went up where nobody could tell us
        return true;
    }
    case QEvent::MouseButtonRelease: {
        const auto& mouse = static_cast<QMouseEvent&>(event);
        if (mouse.button() == Qt::LeftButton) {
            moveTo(mouse.globalPosition().toPoint(), mouse.modifiers());
            finish(PointerEnd::Released);
        }
        return true;
    }
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent&>(event).key() == Qt::Key_Escape)
            finish(PointerEnd::Cancelled);
        event.accept();
        return true;
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        return true;
    default:
        return false;
    }
}

void PointerLoop::moveTo(QPoint global, Qt::KeyboardModifiers modifiers)
{
    if (m_ended)
        return;
    try {
        m_moved(global, modifiers);
    } catch (...) { // nothing may be thrown into the toolkit; run() throws it on
        m_error = std::current_exception();
        finish(PointerEnd::Interrupted);
    }
}

void PointerLoop::finish(PointerEnd end)
{
    if (m_ended)
        return;
    m_ended = true;
    m_end = end;
    m_loop.quit();
}

} // namespace zan::surface
