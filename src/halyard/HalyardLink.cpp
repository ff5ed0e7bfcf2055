#include "halyard/HalyardLink.h"

namespace zan::halyard {

void HalyardLink::Connect()
{
    if (!m_thread || (m_state != LinkState::NotConnected && m_state != LinkState::Broken))
        return;
    const values::Ref<HalyardLink> self(this);
    const std::uint32_t attempt = ++m_attempt;
    m_opening = m_thread->post([this, attempt](Driver& driver, CancelToken& token, ResultQueue& results) {
        const TextProgress progress = [&](const QString& text) {
            results.post([this, attempt, text] {
                if (m_events && attempt == m_attempt && m_state == LinkState::Connecting)
                    m_events->connectionProgress(text);
            });
        };
        DriverResult result{DriverStatus::Cancelled, {}};
        if (!token.isCancelled())
            result = guarded([&] { return driver.open(progress, token); });
        if (result.isOk() && token.isCancelled()) {
            driver.close();
            result.status = DriverStatus::Cancelled;
        }
        results.post([this, attempt, result] { onOpened(attempt, result); });
    });
    if (m_opening)
        setState(LinkState::Connecting); // last: a handler may already disconnect again
    else
        settle(LinkState::NotConnected, QStringLiteral("No thread could be started for the logger."), false);
}

void HalyardLink::Disconnect()
{
    if (!m_thread)
        return;
    const values::Ref<HalyardLink> self(this);
    switch (m_state) {
    case LinkState::NotConnected:
        return;
    case LinkState::Broken:
        setState(LinkState::NotConnected);
        return;
    case LinkState::Disconnecting:
        m_thread->cancelAll();
        return;
    case LinkState::Connecting:
        m_thread->cancel(m_opening); // onOpened goes on from here
        setState(LinkState::Disconnecting);
        return;
    case LinkState::Connected:
        m_events->connectionEnds();
        close();
        setState(LinkState::Disconnecting);
        return;
    }
}

void HalyardLink::close()
{
    m_thread->post([this, attempt = m_attempt](Driver& driver, CancelToken&, ResultQueue& results) {
        driver.close();
        results.post([this, attempt] { onClosed(attempt); });
    });
}

void HalyardLink::onOpened(std::uint32_t attempt, const DriverResult& result)
{
    if (!m_thread || attempt != m_attempt)
        return;
    const values::Ref<HalyardLink> self(this);
    m_opening.reset();
    if (m_state == LinkState::Disconnecting) {
        if (result.isOk())
            close();
        else
            settle(LinkState::NotConnected, {}, true);
        return;
    }
    if (!result.isOk()) {
        const QString message =
            result.message.isEmpty() ? QStringLiteral("No connection could be made.") : result.message;
        settle(LinkState::NotConnected, message, false);
        return;
    }
    m_events->connectionBegins();
    const std::uint32_t change = m_change + 1;
    setState(LinkState::Connected);
    if (m_events && m_change == change)
        m_events->connected();
}

void HalyardLink::onClosed(std::uint32_t attempt)
{
    if (attempt == m_attempt && m_state == LinkState::Disconnecting)
        settle(LinkState::NotConnected, {}, true);
}

void HalyardLink::breakDown(const QString& message)
{
    if (!m_thread || m_state != LinkState::Connected)
        return;
    m_events->connectionEnds();
    m_thread->cancelAll(); // what still waits for the logger cannot be done any more
    m_thread->post([](Driver& driver, CancelToken&, ResultQueue&) { driver.close(); });
    settle(LinkState::Broken, message, true);
}

void HalyardLink::settle(LinkState state, const QString& error, bool wasConnected)
{
    const values::Ref<HalyardLink> self(this);
    const std::uint32_t change = m_change + 1;
    setState(state);
    if (!error.isEmpty() && m_events && m_change == change)
        m_events->connectionError(error);
    if (wasConnected && m_events && m_change == change)
        m_events->disconnected();
}

void HalyardLink::setState(LinkState state)
{
    m_state = state;
    ++m_change;
    Q_EMIT StateChange(int(state));
}

void HalyardLink::detach()
{
    m_thread = nullptr;
    m_events = nullptr;
    m_state = LinkState::NotConnected;
    ++m_attempt;
}

} // namespace zan::halyard
