#pragma once

#include "halyard/CancelToken.h"

#include <QDateTime>

#include <cstdint>
#include <functional>
#include <memory>

namespace zan::halyard {

/// A single-shot timer of the user-interface thread.
class ClockTimer
{
public:
    virtual ~ClockTimer() = default;
    /// Fires once after that many milliseconds; starting it again forgets the former start.
    virtual void start(std::int64_t milliseconds) = 0;
    virtual void stop() = 0;
};

/// Time as loggers and drivers see it, so that a test can make hours pass in no time.
class Clock
{
public:
    virtual ~Clock() = default;
    /// Milliseconds since some fixed moment; never goes back. May be called from any thread.
    virtual std::int64_t now() const = 0;
    /// Local date and time. User-interface thread.
    virtual QDateTime dateTime() const = 0;
    /// Blocks the calling (driver) thread; returns false as soon as the token is cancelled.
    virtual bool sleep(std::int64_t milliseconds, CancelToken& token) = 0;
    /// A timer that calls back on the user-interface thread; its end also ends the callbacks.
    virtual std::unique_ptr<ClockTimer> createTimer(std::function<void()> callback) = 0;
};

/// The clock of the machine.
std::shared_ptr<Clock> systemClock();

} // namespace zan::halyard
