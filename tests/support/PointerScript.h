#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <functional>
#include <vector>

namespace zan::tests {

/// Input that is played one event after the other, each in a turn of the event loop of its own: what a user does
/// while a press of the mouse is still being handled. Places are pixels of the widget.
class PointerScript
{
public:
    explicit PointerScript(QWidget& widget)
        : m_widget(&widget)
    {}

    PointerScript& press(QPoint place, Qt::MouseButton button = Qt::LeftButton)
    {
        return then([this, place, button] { QTest::mousePress(window(), button, {}, onWindow(place)); });
    }
    PointerScript& move(QPoint place)
    {
        return then([this, place] {
            // The toolkit's own helper leaves the button out of moves.
            const QPoint local = onWindow(place);
            QTest::mouseMove(window(), local);
        });
    }
    PointerScript& release(QPoint place, Qt::MouseButton button = Qt::LeftButton)
    {
        return then([this, place, button] { QTest::mouseRelease(window(), button, {}, onWindow(place)); });
    }
    PointerScript& key(Qt::Key key)
    {
        return then([this, key] { QTest::keyClick(window(), key); });
    }
    PointerScript& then(std::function<void()> step)
    {
        m_steps.push_back(std::move(step));
        return *this;
    }

    /// Plays all steps; those behind one that is still running are played inside it.
    void play()
    {
        queueNext();
        while (m_next < m_steps.size() || m_running > 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::processEvents();
    }

private:
    QWindow* window() const { return m_widget ? m_widget->window()->windowHandle() : nullptr; }
    QPoint onWindow(QPoint place) const { return m_widget->mapTo(m_widget->window(), place); }

    void queueNext()
    {
        QTimer::singleShot(0, &m_context, [this] {
            if (m_next >= m_steps.size())
                return;
            const std::function<void()> step = m_steps[m_next++];
            queueNext();
            ++m_running;
            if (m_widget)
                step();
            --m_running;
        });
    }

    QPointer<QWidget> m_widget;
    QObject m_context;
    std::vector<std::function<void()>> m_steps;
    std::size_t m_next = 0;
    int m_running = 0;
};

} // namespace zan::tests
