#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

namespace zan::halyard {

/// The road from a logger's thread to the user-interface thread: each result wakes the receiver with one event, which
/// then takes one result. One event per result keeps results coming while a handler sits in a nested event loop.
/// Results travel under our own lock, so nothing depends on what the toolkit's queue does with their memory.
class ResultQueue
{
public:
    using Result = std::function<void()>;

    explicit ResultQueue(QObject& receiver)
        : m_receiver(&receiver)
    {}

    /// Hands a result over and sends the receiver a custom event; dropped when the receiver is gone. Any thread.
    void post(Result result);
    /// The oldest result, or nothing. User-interface thread.
    Result take();
    /// Nothing reaches the receiver after this returns, apart from events that find the queue empty.
    void detach();

private:
    std::mutex m_mutex;
    QObject* m_receiver;
    std::deque<Result> m_results;
};

} // namespace zan::halyard
