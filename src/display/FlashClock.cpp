#include "display/FlashClock.h"

#include "display/FlashTimer.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>

namespace zan::display {

namespace {

/// Wake-ups fall on multiples of this, so that any number of timers wake the machine about 60 times a second at most.
constexpr std::int64_t FrameTime = 16;

std::int64_t machineTime()
{
    static const QElapsedTimer timer = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    return timer.elapsed();
}

} // namespace

FlashClock& FlashClock::shared()
{
    // Never destroyed: a control that outlives everything else still takes its timer off the list.
    static FlashClock& clock = *new FlashClock;
    return clock;
}

FlashClock::FlashClock()
    : m_time(machineTime)
{}

/// The toolkit's timer; null without an application.
QTimer* FlashClock::wakeUp()
{
    if (!m_wakeUp && QCoreApplication::instance()) {
        m_wakeUp = new QTimer(QCoreApplication::instance());
        m_wakeUp->setSingleShot(true);
        m_wakeUp->setTimerType(Qt::PreciseTimer);
        m_wakeUp->callOnTimeout(m_wakeUp, [this] { serve(); });
    }
    return m_wakeUp;
}

void FlashClock::setTimeSource(TimeSource source)
{
    m_time = source ? std::move(source) : TimeSource(machineTime);
    wakeForFirst();
}

void FlashClock::serve()
{
    // Listeners may start, stop and delete timers, their own and others': one is taken out at a time, and none twice.
    const std::int64_t time = now();
    while (!m_waiting.empty() && m_waiting.begin()->first <= time) {
        FlashTimer& timer = *m_waiting.begin()->second;
        m_waiting.erase(m_waiting.begin());
        timer.m_awaiting = false;
        timer.m_listener.flashTick();
    }
    wakeForFirst();
}

void FlashClock::add(FlashTimer& timer)
{
    timer.m_awaiting = true;
    const auto place = m_waiting.emplace(timer.m_due, &timer).first;
    if (place == m_waiting.begin())
        wakeForFirst();
}

void FlashClock::remove(FlashTimer& timer)
{
    timer.m_awaiting = false;
    m_waiting.erase({timer.m_due, &timer});
    if (m_waiting.empty())
        wakeForFirst();
}

void FlashClock::wakeForFirst()
{
    QTimer* timer = wakeUp();
    if (!timer)
        return;
    if (m_waiting.empty()) {
        timer->stop();
        return;
    }
    const std::int64_t frame = (m_waiting.begin()->first + FrameTime - 1) / FrameTime * FrameTime;
    timer->start(int(std::clamp<std::int64_t>(frame - now(), 0, FlashTimer::Interval + FrameTime)));
}

} // namespace zan::display
