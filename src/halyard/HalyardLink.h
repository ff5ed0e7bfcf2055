#pragma once

#include "halyard/DriverThread.h"
#include "halyard/LoggerEvents.h"
#include "site/Logger.h"

namespace zan::halyard {

using site::LinkState;

/// The link of a logger: connects and disconnects its driver.
///
/// What is announced, in this order:
/// - connecting: StateChange(1), ConnectionProgress for each step, then StateChange(2) and Connected;
/// - a connection that cannot be made: StateChange(0), ConnectionError;
/// - Disconnect while connecting: StateChange(3), then StateChange(0) and Disconnected, never state 2;
/// - Disconnect while connected: StateChange(3), writes still waiting are sent, StateChange(0), Disconnected; a
///   second Disconnect meanwhile gives the writes up;
/// - a connection that breaks: StateChange(4), ConnectionError, Disconnected. Connect works from there, Disconnect
///   leads to StateChange(0) alone.
/// A handler that starts or ends a connection cuts off what was still to be announced of the former one: that would
/// be news of the past.
class HalyardLink final : public site::Link
{
public:
    HalyardLink(DriverThread& thread, LoggerEvents& events)
        : m_thread(&thread)
        , m_events(&events)
    {}

    LinkState State() const override { return m_state; }
    void Connect() override;
    void Disconnect() override;

    /// The connection has turned out not to stand any more. Nothing unless connected: one that is being ended ends
    /// as wanted.
    void breakDown(const QString& message);
    /// The logger is gone: the link stays unconnected for ever, without a word.
    void detach();

private:
    void setState(LinkState state);
    void close();
    void onOpened(std::uint32_t attempt, const DriverResult& result);
    void onClosed(std::uint32_t attempt);
    /// Announces the end of a connection, or of an attempt, as far as handlers let it.
    void settle(LinkState state, const QString& error, bool wasConnected);

    DriverThread* m_thread; // null once the logger is gone
    LoggerEvents* m_events; // null once the logger is gone
    LinkState m_state = LinkState::NotConnected;
    std::uint32_t m_attempt = 0; // counts connections; an outcome of an earlier one says nothing
    std::uint32_t m_change = 0;  // counts changes of state; a handler that makes one ends the announcing
    DriverThread::Token m_opening;
};

} // namespace zan::halyard
