#include "halyard/ResultQueue.h"

#include <QCoreApplication>
#include <QEvent>

namespace zan::halyard {

namespace {

QEvent::Type eventType()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

} // namespace

void ResultQueue::post(Result result)
{
    const std::lock_guard lock(m_mutex);
    if (!m_receiver)
        return;
    m_results.push_back(std::move(result));
    QCoreApplication::postEvent(m_receiver, new QEvent(eventType()));
}

ResultQueue::Result ResultQueue::take()
{
    const std::lock_guard lock(m_mutex);
    if (m_results.empty())
        return {};
    Result result = std::move(m_results.front());
    m_results.pop_front();
    return result;
}

void ResultQueue::detach()
{
    std::deque<Result> dropped; // destroyed outside the lock
    const std::lock_guard lock(m_mutex);
    m_receiver = nullptr;
    dropped.swap(m_results);
}

} // namespace zan::halyard
