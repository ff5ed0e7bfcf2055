#include "zanbench/WindowPlacement.h"

#include <QEvent>
#include <QScreen>

#include <algorithm>

namespace zan::host {

namespace {

constexpr QMargins GuessedFrame(4, 32, 4, 4); // until there is a real one

} // namespace

WindowPlacement::WindowPlacement(QMainWindow& window)
    : QObject(&window)
    , m_window(window)
{
    window.installEventFilter(this);
}

void WindowPlacement::resize(QSize wanted)
{
    if (m_window.isFullScreen() || m_window.isMaximized())
        return;
    m_window.resize(wanted.boundedTo(m_window.screen()->availableSize().shrunkBy(GuessedFrame)));
    keepOnScreenLater();
}

bool WindowPlacement::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Show)
        keepOnScreenLater();
    // By the time the window is active for the first time it has its frame.
    if (event->type() == QEvent::ActivationChange && m_window.isActiveWindow() && !std::exchange(m_isPlaced, true))
        keepOnScreenLater();
    return false;
}

void WindowPlacement::keepOnScreenLater()
{
    QMetaObject::invokeMethod(this, &WindowPlacement::keepOnScreen, Qt::QueuedConnection);
}

/// However large the panel, whatever the scale and wherever the window was when it was last closed.
void WindowPlacement::keepOnScreen()
{
    if (m_window.isFullScreen() || m_window.isMaximized() || !m_window.isVisible())
        return;
    const QRect room = m_window.screen()->availableGeometry();
    const QSize frame = m_window.frameGeometry().size() - m_window.size();
    m_window.resize(m_window.size().boundedTo(room.size() - frame));
    QRect outer = m_window.frameGeometry();
    outer.setSize(m_window.size() + frame);
    outer.moveRight(std::min(outer.right(), room.right()));
    outer.moveBottom(std::min(outer.bottom(), room.bottom()));
    outer.moveLeft(std::max(outer.left(), room.left()));
    outer.moveTop(std::max(outer.top(), room.top()));
    if (outer.topLeft() != m_window.frameGeometry().topLeft())
        m_window.move(outer.topLeft());
}

} // namespace zan::host
