#include "halyard/Clock.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <limits>

namespace zan::halyard {

namespace {

class SystemTimer final : public ClockTimer
{
public:
    explicit SystemTimer(std::function<void()> callback)
    {
        m_timer.setSingleShot(true);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(callback));
    }
    void start(std::int64_t milliseconds) override
    {
        const std::int64_t longest = std::numeric_limits<int>::max();
        m_timer.start(int(std::clamp<std::int64_t>(milliseconds, 0, longest)));
    }
    void stop() override { m_timer.stop(); }

private:
    QTimer m_timer;
};

class SystemClock final : public Clock
{
public:
    std::int64_t now() const override
    {
        const auto sinceBoot = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::milliseconds>(sinceBoot).count();
    }
    QDateTime dateTime() const override { return QDateTime::currentDateTime(); }
    bool sleep(std::int64_t milliseconds, CancelToken& token) override
    {
        return token.waitFor(std::chrono::milliseconds(milliseconds));
    }
    std::unique_ptr<ClockTimer> createTimer(std::function<void()> callback) override
    {
        return std::make_unique<SystemTimer>(std::move(callback));
    }
};

} // namespace

std::shared_ptr<Clock> systemClock()
{
    static const std::shared_ptr<Clock> clock = std::make_shared<SystemClock>();
    return clock;
}

} // namespace zan::halyard
