#pragma once

#include <QPointer>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <set>
#include <utility>

namespace zan::display {

class FlashTimer;

/// The one clock behind all flash timers of the user-interface thread. It wakes only for timers that wait for a
/// change, and serves those that fall due within one frame together.
class FlashClock
{
public:
    /// Milliseconds from any fixed moment on, never going back.
    using TimeSource = std::function<std::int64_t()>;

    static FlashClock& shared();

    std::int64_t now() const { return m_time(); }
    /// Takes the time from somewhere else; without an argument from the machine again.
    void setTimeSource(TimeSource source = {});
    /// Calls every timer whose change is due. The clock does it by itself while the event loop runs.
    void serve();
    /// How many timers wait for their next change.
    std::size_t waiting() const noexcept { return m_waiting.size(); }

private:
    friend class FlashTimer;
    FlashClock();
    void add(FlashTimer& timer);
    void remove(FlashTimer& timer);
    void wakeForFirst();
    QTimer* wakeUp();

    TimeSource m_time;
    QPointer<QTimer> m_wakeUp; // belongs to the application, which ends before the clock
    std::set<std::pair<std::int64_t, FlashTimer*>> m_waiting; // by the moment of the change
};

} // namespace zan::display
