#pragma once

#include "script/machine/ScriptHost.h"

#include "values/RuntimeError.h"

#include <chrono>
#include <cstddef>
#include <optional>

namespace zan::script {

struct EngineSettings;
class Vm;

/// A run-time error that no On Error catches: the host's limits, a cancelled run.
class StopError : public values::RuntimeError
{
public:
    using RuntimeError::RuntimeError;
};

/// A call into a machine that is under way; calls from script to host to script make a chain of them.
struct Activation
{
    const Vm* vm;
    const Activation* outer;
    std::size_t frames; ///< of this machine when the call began
    std::size_t below;  ///< procedures under way outside the call, in whatever machine
};

/// What everything that is under way at once may still take together: time, memory, calls back from the host.
/// Engines with the same settings share it, so that neither a script that a script sets off nor the last words of
/// its objects get fresh limits. A limit that is hit ends all of it: from then on every look raises the same error,
/// until the outermost call has returned.
class Budget
{
public:
    /// Calls from script to host to script ... that may be under way; each takes native stack.
    static constexpr int MostNativeCalls = 60;
    /// More of them for the last words of objects, which run wherever the last reference goes.
    static constexpr int NativeCallsForLastWords = 16;

    explicit Budget(EngineSettings& settings)
        : m_settings(settings)
    {}
    Budget(const Budget&) = delete;
    Budget& operator=(const Budget&) = delete;

    /// A call from outside. The outermost one begins with full limits.
    class Scope;
    /// Time that does not count: a box is open. A script that is set off meanwhile counts nevertheless.
    class Pause;

    bool isStopped() const noexcept { return m_stop.has_value(); }
    /// Ends everything that is under way.
    [[noreturn]] void stop(const StopError& error);
    /// Looks at the clock, asks the host where it is time to. Raises when the limit is reached or a limit was.
    void look();
    /// Counts a call to code outside the machine, of which nobody knows how long it takes; looks every few calls.
    void countCall()
    {
        if (--m_calls < 0) [[unlikely]]
            look();
    }
    /// Counts memory that is about to be taken; looks at the heap when it has become much. Raises 7 when it would
    /// go beyond the host's limit.
    void countBytes(std::size_t bytes)
    {
        constexpr std::size_t BytesPerLook = 1 << 20;
        m_unchecked += bytes;
        if (m_unchecked >= BytesPerLook) [[unlikely]]
            lookAtMemory(bytes);
    }
    /// Looks at the heap, of which so much more is about to be taken.
    void lookAtMemory(std::size_t more);
    /// False when objects have had as many last words after the end of a run as they may.
    bool allowLastWords() noexcept { return !m_stop || --m_lastWords > 0; }

    /// The innermost call that is under way, and how many are.
    const Activation* innermost = nullptr;
    int depth = 0;

private:
    bool setClockRunning(bool running);
    std::chrono::nanoseconds spent() const;
    void askHost(std::chrono::nanoseconds elapsed);

    EngineSettings& m_settings;
    int m_scopes = 0;
    bool m_isClockRunning = false;
    std::chrono::nanoseconds m_spent{0}; ///< until the clock was started last
    std::chrono::nanoseconds m_since{0};
    std::chrono::nanoseconds m_nextBusy{0};
    int m_calls = 0; ///< calls until the clock is looked at
    std::optional<std::size_t> m_memoryAtStart;
    std::size_t m_unchecked = 0; ///< bytes counted since the heap was looked at
    std::optional<StopError> m_stop;
    int m_lastWords = 0;
};

class Budget::Scope
{
public:
    explicit Scope(Budget& budget);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

private:
    Budget& m_budget;
    bool m_wasRunning;
};

class Budget::Pause
{
public:
    explicit Pause(Budget& budget)
        : m_budget(budget)
        , m_wasRunning(budget.setClockRunning(false))
    {}
    ~Pause() { m_budget.setClockRunning(m_wasRunning); }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

private:
    Budget& m_budget;
    bool m_wasRunning;
};

} // namespace zan::script
