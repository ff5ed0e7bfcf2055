#include "halyard/CancelToken.h"

namespace zan::halyard {

void CancelToken::cancel()
{
    const std::lock_guard lock(m_mutex);
    m_cancelled = true;
    m_woken.notify_all();
}

bool CancelToken::isCancelled() const
{
    const std::lock_guard lock(m_mutex);
    return m_cancelled;
}

bool CancelToken::waitFor(std::chrono::milliseconds duration)
{
    std::unique_lock lock(m_mutex);
    return !m_woken.wait_for(lock, duration, [this] { return m_cancelled; });
}

bool CancelToken::waitUntil(const std::function<bool()>& condition)
{
    std::unique_lock lock(m_mutex);
    m_woken.wait(lock, [&] { return m_cancelled || condition(); });
    return !m_cancelled;
}

void CancelToken::notify()
{
    const std::lock_guard lock(m_mutex);
    m_woken.notify_all();
}

} // namespace zan::halyard
