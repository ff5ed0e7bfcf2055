#pragma once

#include "halyard/HalyardLink.h"
#include "halyard/HalyardLive.h"

namespace zan::halyard {

/// A logger over a driver.
///
/// AddAction(1) programs the logger and AddAction(2) unloads it: at once while connected, else as soon as it is; one
/// after the other, polling standing still meanwhile. The flag goes when the work is done. The work announces its
/// progress and ends with ProgramComplete or UnloadComplete, or, when it fails or RemoveActions takes its flag away,
/// with ConnectionError, so that a window that shows the progress always learns of the end; when the link ends it,
/// with the link's own events. What is unloaded goes to the history, and NewENTData follows before UnloadComplete.
/// AddAction(8) polls the channels while connected.
///
/// The logger may be released at any moment, in its own events too: the driver is stopped, nothing is announced any
/// more, and its link and live objects, if anybody still holds them, do nothing from then on.
class HalyardLogger final : public site::Logger, private LoggerEvents
{
    Q_OBJECT
public:
    HalyardLogger(std::unique_ptr<Driver> driver, const Ref<site::Scheme>& scheme, std::shared_ptr<Clock> clock,
                  const LiveSettings& settings, const Ref<site::HistoryKeeper>& history = {});
    ~HalyardLogger() override;

    Ref<site::Link> Link() override { return m_link; }
    Ref<site::Scheme> Scheme() override { return m_scheme; }
    Ref<site::Live> Live() override { return m_live; }
    std::int32_t Actions() const override { return m_actions; }
    void AddAction(std::int32_t flag) override;
    void RemoveActions(std::int32_t flags) override;
    Ref<Channel> createChannel() override;

Q_SIGNALS:
    /// A value that was taken has not reached the logger. The message tells the value, the place and what it takes,
    /// the reason, and what can be done.
    void WriteFailed(int address, const QString& message);
    /// A host's object raised a run-time error in the course of an event.
    void EventFailed(int number, const QString& description);

protected:
    void customEvent(QEvent* event) override;

private:
    /// Programming or unloading under way.
    struct Operation
    {
        std::int32_t flag = 0; // 0 for none
        std::uint32_t id = 0;
        bool isCancelled = false;
        bool hasRecords = false; // some have gone to the history
        DriverThread::Token token;
    };

    void startOperation();
    void cancelOperation();
    void onOperationProgress(std::uint32_t id, int percentage, const QString& text);
    void onRecords(std::uint32_t id, const std::vector<LoggedMemory>& kept);
    void onOperationEnded(std::uint32_t id, const DriverResult& result);
    void announceEnd(const Operation& operation, const DriverResult& result);

    /// Whether anybody but the event under way still holds the logger.
    bool isWanted() const noexcept { return references() > m_eventDepth; }
    /// Emits one of our signals, unless a handler before it has let go of the logger.
    template <class... Parameters, class... Values>
    void announce(void (site::Logger::*signal)(Parameters...), const Values&... values)
    {
        if (isWanted())
            Q_EMIT(this->*signal)(values...);
    }

    void connectionProgress(const QString& message) override { announce(&Logger::ConnectionProgress, message); }
    void connectionBegins() override;
    void connected() override { announce(&Logger::Connected); }
    void connectionEnds() override;
    void disconnected() override { announce(&Logger::Disconnected); }
    void connectionError(const QString& message) override { announce(&Logger::ConnectionError, message); }
    void connectionLost(const QString& message) override;
    void newData() override { announce(&Logger::NewBenchData); }
    void newRecords() override { announce(&Logger::NewENTData); }
    void writeFailed(std::int32_t address, const QString& message) override;

    DriverThread m_thread;
    Ref<site::Scheme> m_scheme;
    Ref<HalyardLink> m_link;
    Ref<HalyardLive> m_live;
    std::int32_t m_actions = 0;
    bool m_isConnected = false; // a connection stands, announced or about to be
    Operation m_operation;
    std::uint32_t m_eventDepth = 0; // results under way, each of which holds the logger
};

} // namespace zan::halyard
