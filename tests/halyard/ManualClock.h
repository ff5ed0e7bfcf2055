#pragma once

#include "halyard/Clock.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace zan::halyard {

/// Time that passes only when a test says so.
class ManualClock final : public Clock
{
public:
    std::int64_t now() const override { return m_now; }
    QDateTime dateTime() const override { return QDateTime(QDate(2026, 1, 31), QTime(12, 0)).addMSecs(m_now); }
    bool sleep(std::int64_t milliseconds, CancelToken& token) override
    {
        if (milliseconds <= 0)
            return !token.isCancelled();
        const std::int64_t end = m_now + milliseconds;
        {
            const std::lock_guard lock(m_mutex);
            m_sleepers.push_back(&token);
        }
        const bool isOver = token.waitUntil([&] { return m_now >= end; });
        const std::lock_guard lock(m_mutex);
        m_sleepers.erase(std::find(m_sleepers.begin(), m_sleepers.end(), &token));
        return isOver;
    }
    std::unique_ptr<ClockTimer> createTimer(std::function<void()> callback) override
    {
        return std::make_unique<Timer>(*this, std::move(callback));
    }

    /// Lets time pass: timers fire in their order, sleepers wake.
    void advance(std::int64_t milliseconds)
    {
        const std::int64_t end = m_now + milliseconds;
        while (Timer* timer = nextTimer(end)) {
            moveTo(std::max<std::int64_t>(timer->due, m_now));
            timer->due = Never;
            timer->callback();
        }
        moveTo(end);
    }
    /// Whether a driver waits for time to pass.
    bool hasSleeper() const
    {
        const std::lock_guard lock(m_mutex);
        return !m_sleepers.empty();
    }
    bool hasTimer() const { return nextTimer(Never - 1) != nullptr; }

private:
    static constexpr std::int64_t Never = INT64_MAX;
    struct Timer final : ClockTimer
    {
        Timer(ManualClock& theClock, std::function<void()> theCallback)
            : clock(theClock)
            , callback(std::move(theCallback))
        {
            clock.m_timers.push_back(this);
        }
        ~Timer() override { std::erase(clock.m_timers, this); }
        void start(std::int64_t milliseconds) override { due = clock.m_now + milliseconds; }
        void stop() override { due = Never; }

        ManualClock& clock;
        std::function<void()> callback;
        std::int64_t due = Never;
    };
    Timer* nextTimer(std::int64_t end) const
    {
        Timer* next = nullptr;
        for (Timer* timer : m_timers) {
            if (timer->due <= end && (!next || timer->due < next->due))
                next = timer;
        }
        return next;
    }
    void moveTo(std::int64_t time)
    {
        const std::lock_guard lock(m_mutex);
        m_now = time;
        for (CancelToken* token : m_sleepers)
            token->notify();
    }

    std::atomic<std::int64_t> m_now = 0;
    mutable std::mutex m_mutex;
    std::vector<CancelToken*> m_sleepers;
    std::vector<Timer*> m_timers;
};

} // namespace zan::halyard
