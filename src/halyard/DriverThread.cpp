#include "halyard/DriverThread.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>

namespace zan::halyard {

namespace {
/// How long the end of a logger waits for a driver that has been told to stop.
constexpr std::chrono::milliseconds PatienceAtEnd(2000);
} // namespace

/// What the thread works on. Shared with the thread, so that one that is left behind has ground to stand on.
struct DriverThread::State
{
    struct Entry
    {
        Token token;
        Task task;
    };

    State(std::unique_ptr<Driver> theDriver, QObject& receiver)
        : driver(std::move(theDriver))
        , results(receiver)
    {}

    void run()
    {
        while (runNext()) {
        }
        driver->close();
        driver.reset();
        const std::lock_guard lock(mutex);
        isFinished = true;
        changed.notify_all();
    }

    bool runNext()
    {
        Entry entry;
        {
            std::unique_lock lock(mutex);
            changed.wait(lock, [this] { return isStopping || !waiting.empty(); });
            if (isStopping)
                return false;
            entry = std::move(waiting.front());
            waiting.pop_front();
            running = entry.token;
        }
        entry.task(*driver, *entry.token, results);
        const std::lock_guard lock(mutex);
        running.reset();
        return true;
    }

    /// With the lock held, which keeps the running task from being another one by now.
    void cancelRunning()
    {
        if (!running || running->isCancelled())
            return;
        running->cancel();
        driver->interrupt();
    }

    std::unique_ptr<Driver> driver;
    ResultQueue results;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Entry> waiting;
    Token running;
    bool isStopping = false;
    bool isFinished = false;
};

DriverThread::DriverThread(std::unique_ptr<Driver> driver, QObject& receiver)
    : m_limits(driver->limits())
{
    m_state = std::make_shared<State>(std::move(driver), receiver);
}

DriverThread::~DriverThread()
{
    shutDown();
}

bool DriverThread::start()
{
    if (m_thread.joinable())
        return true;
    try {
        m_thread = std::thread([state = m_state] { state->run(); });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

DriverThread::Token DriverThread::post(Task task)
{
    if (!m_state || !start())
        return {};
    auto token = std::make_shared<CancelToken>();
    const std::lock_guard lock(m_state->mutex);
    m_state->waiting.push_back({token, std::move(task)});
    m_state->changed.notify_all();
    return token;
}

void DriverThread::cancel(const Token& token)
{
    if (!m_state || !token)
        return;
    const std::lock_guard lock(m_state->mutex);
    if (m_state->running == token)
        m_state->cancelRunning();
    else
        token->cancel();
}

void DriverThread::cancelAll()
{
    if (!m_state)
        return;
    const std::lock_guard lock(m_state->mutex);
    for (const State::Entry& entry : m_state->waiting)
        entry.token->cancel();
    m_state->cancelRunning();
}

ResultQueue::Result DriverThread::takeResult()
{
    return m_state ? m_state->results.take() : ResultQueue::Result();
}

void DriverThread::shutDown()
{
    if (!m_state)
        return;
    const std::shared_ptr<State> state = std::move(m_state);
    state->results.detach();
    if (!m_thread.joinable())
        return;
    std::unique_lock lock(state->mutex);
    state->isStopping = true;
    state->cancelRunning();
    state->changed.notify_all();
    const bool isFinished = state->changed.wait_for(lock, PatienceAtEnd, [&] { return state->isFinished; });
    lock.unlock();
    if (isFinished)
        m_thread.join();
    else
        m_thread.detach();
}

} // namespace zan::halyard
