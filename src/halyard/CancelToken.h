#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace zan::halyard {

/// Tells a blocking call that nobody wants its outcome any more. Shared by the thread that asked and the thread
/// that works; every member may be called from any thread. Once cancelled, always cancelled.
class CancelToken
{
public:
    /// Cancels and wakes whoever waits on the token.
    void cancel();
    bool isCancelled() const;
    /// Waits that long; returns false as soon as the token is cancelled.
    bool waitFor(std::chrono::milliseconds duration);
    /// Waits until the condition holds; returns false as soon as the token is cancelled. The condition is looked at
    /// again after each notify().
    bool waitUntil(const std::function<bool()>& condition);
    /// Wakes the waiter, so that it looks at its condition again.
    void notify();

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_woken;
    bool m_cancelled = false;
};

} // namespace zan::halyard
