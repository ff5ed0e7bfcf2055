#include "display/FlashTimer.h"

#include "display/FlashClock.h"

namespace zan::display {

FlashTimer::~FlashTimer()
{
    if (m_awaiting)
        FlashClock::shared().remove(*this);
}

void FlashTimer::start()
{
    if (m_running)
        return;
    m_running = true;
    m_since = FlashClock::shared().now();
}

void FlashTimer::stop()
{
    settle();
    m_running = false;
    if (m_awaiting)
        FlashClock::shared().remove(*this);
}

bool FlashTimer::settle()
{
    if (!m_running)
        return false;
    const std::int64_t ticks = (FlashClock::shared().now() - m_since) / Interval;
    if (ticks <= 0)
        return false;
    m_since += ticks * Interval;
    m_phase ^= (ticks & 1) != 0;
    return true;
}

void FlashTimer::awaitTick()
{
    if (!m_running || m_awaiting)
        return;
    m_due = m_since + Interval;
    FlashClock::shared().add(*this);
}

} // namespace zan::display
