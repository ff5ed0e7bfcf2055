#pragma once

#include "halyard/Driver.h"
#include "halyard/ResultQueue.h"

#include <functional>
#include <memory>
#include <thread>

namespace zan::halyard {

/// The thread on which a logger's driver works. Tasks run one after the other in the order of posting; each one runs
/// and reports even when it was cancelled before its turn (its token then says so), so that whoever counts on an
/// answer gets one. All members belong to the user-interface thread.
class DriverThread
{
public:
    using Token = std::shared_ptr<CancelToken>;
    /// Runs on the driver's thread and hands its outcome to the queue.
    using Task = std::function<void(Driver& driver, CancelToken& token, ResultQueue& results)>;

    DriverThread(std::unique_ptr<Driver> driver, QObject& receiver);
    DriverThread(const DriverThread&) = delete;
    DriverThread& operator=(const DriverThread&) = delete;
    ~DriverThread();

    /// Queues a task and returns its token. The thread starts with the first task. An empty token when no thread can
    /// be had or after shutDown().
    Token post(Task task);
    /// Cancels one task, waiting or running. Nothing for an empty token.
    void cancel(const Token& token);
    /// Cancels everything that waits or runs.
    void cancelAll();
    /// The next result for the receiver to run, or nothing.
    ResultQueue::Result takeResult();
    /// Cancels everything, closes the driver and ends the thread. No result is handed over after it. A driver that
    /// does not return in time is left behind with its thread, which then holds nothing of ours.
    void shutDown();

    const BlockLimits& limits() const noexcept { return m_limits; }

private:
    struct State;
    bool start();

    std::shared_ptr<State> m_state;
    std::thread m_thread;
    BlockLimits m_limits;
};

} // namespace zan::halyard
