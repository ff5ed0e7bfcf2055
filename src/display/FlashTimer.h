#pragma once

#include <cstdint>

namespace zan::display {

class FlashClock;

/// The flash timer of one control: while it runs, its phase changes once in 1000 ms, counted from its own start.
/// Between runs the phase stays as it was.
///
/// The phase is worked out from the time when somebody asks, so that a control that nobody sees costs nothing. One
/// that is seen asks to be called at the next change, and asks anew each time it is drawn.
class FlashTimer
{
public:
    static constexpr std::int64_t Interval = 1000; ///< milliseconds

    /// Whoever draws itself anew when the phase has changed.
    class Listener
    {
    public:
        virtual void flashTick() = 0;

    protected:
        ~Listener() = default;
    };

    explicit FlashTimer(Listener& listener)
        : m_listener(listener)
    {}
    ~FlashTimer();
    FlashTimer(const FlashTimer&) = delete;
    FlashTimer& operator=(const FlashTimer&) = delete;

    /// Starts counting now; nothing while it runs.
    void start();
    void stop();
    bool isRunning() const noexcept { return m_running; }
    /// Takes account of the changes that were due by now. True when there was one.
    bool settle();
    /// Phase as of the last settle(), start() or stop(). False at first.
    bool phase() const noexcept { return m_phase; }
    /// Has flashTick() called once, when the next change is due. Nothing while stopped.
    void awaitTick();

private:
    friend class FlashClock;

    Listener& m_listener;
    std::int64_t m_since = 0; // when the phase last changed, or the start
    std::int64_t m_due = 0;   // where the timer stands in the clock's list
    bool m_running = false;
    bool m_phase = false;
    bool m_awaiting = false;
};

} // namespace zan::display
