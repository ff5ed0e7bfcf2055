#include "halyard/HalyardLogger.h"

#include "halyard/LooseChannel.h"

namespace zan::halyard {

HalyardLogger::HalyardLogger(std::unique_ptr<Driver> driver, const Ref<site::Scheme>& scheme,
                             std::shared_ptr<Clock> clock, const LiveSettings& settings,
                             const Ref<site::HistoryKeeper>& history)
    : m_thread(std::move(driver), *this)
    , m_scheme(scheme)
    , m_link(values::make<HalyardLink>(m_thread, static_cast<LoggerEvents&>(*this)))
    , m_live(values::make<HalyardLive>(m_thread, static_cast<LoggerEvents&>(*this), std::move(clock), scheme,
                                       settings, history))
{}

HalyardLogger::~HalyardLogger()
{
    m_link->detach();
    m_live->detach();
    m_thread.shutDown();
}

void HalyardLogger::customEvent(QEvent*)
{
    // Any event of this kind is a turn for the oldest result; one too many finds nothing. The event itself came
    // through the toolkit's queue and is not looked at, so that a race detector sees our own lock alone.
    const Ref<HalyardLogger> self(this); // a handler may let go of the last reference
    const ResultQueue::Result result = m_thread.takeResult();
    if (!result)
        return;
    ++m_eventDepth;
    try {
        result();
    } catch (const values::RuntimeError& error) {
        if (isWanted())
            Q_EMIT EventFailed(error.number(), error.description());
    }
    --m_eventDepth;
}

void HalyardLogger::AddAction(std::int32_t flag)
{
    m_actions |= flag;
    if (flag & site::LiveAction)
        m_live->setPolling(true);
    startOperation();
}

void HalyardLogger::RemoveActions(std::int32_t flags)
{
    m_actions &= ~flags;
    if (flags & site::LiveAction)
        m_live->setPolling(false);
    if (flags & m_operation.flag)
        cancelOperation();
}

Ref<Channel> HalyardLogger::createChannel()
{
    return values::make<LooseChannel>();
}

void HalyardLogger::startOperation()
{
    if (!m_isConnected || m_operation.flag)
        return;
    const bool isProgram = m_actions & site::ProgramAction;
    if (!isProgram && !(m_actions & site::UnloadAction))
        return;
    const std::uint32_t id = m_operation.id + 1;
    const auto layout = isProgram ? nullptr : m_live->layoutToUnload();
    const auto token =
        m_thread.post([this, id, isProgram, layout](Driver& driver, CancelToken& cancel, ResultQueue& results) {
            const RecordSink records = [&](std::vector<LoggedMemory> kept) {
                results.post([this, id, kept = std::move(kept)] { onRecords(id, kept); });
            };
            const PercentProgress progress = [&](int percentage, const QString& text) {
                results.post([this, id, percentage, text] { onOperationProgress(id, percentage, text); });
            };
            DriverResult result{DriverStatus::Cancelled, {}};
            if (!cancel.isCancelled()) {
                result = guarded([&] {
                    if (isProgram)
                        return driver.program(progress, cancel);
                    if (layout)
                        driver.prepare(layout);
                    return driver.unload(records, progress, cancel);
                });
            }
            results.post([this, id, result] { onOperationEnded(id, result); });
        });
    m_operation = {isProgram ? site::ProgramAction : site::UnloadAction, id, false, false, token};
}

void HalyardLogger::cancelOperation()
{
    m_operation.isCancelled = true;
    m_thread.cancel(m_operation.token);
}

void HalyardLogger::onOperationProgress(std::uint32_t id, int percentage, const QString& text)
{
    if (id != m_operation.id || m_operation.isCancelled)
        return;
    if (m_operation.flag == site::ProgramAction)
        announce(&Logger::ProgramLoggerProgress, percentage, text);
    else
        announce(&Logger::UnloadLoggerProgress, percentage, text);
}

void HalyardLogger::onRecords(std::uint32_t id, const std::vector<LoggedMemory>& kept)
{
    const bool isStored = m_live->storeKept(kept); // whatever has become of the rest
    if (id == m_operation.id)
        m_operation.hasRecords |= isStored;
}

void HalyardLogger::onOperationEnded(std::uint32_t id, const DriverResult& result)
{
    if (id != m_operation.id)
        return;
    const Operation operation = m_operation;
    m_operation.flag = 0;
    m_operation.token.reset();
    if (!operation.isCancelled)
        m_actions &= ~operation.flag; // a cancelled one may have been asked for again
    if (result.status == DriverStatus::Broken) {
        connectionLost(result.message);
        return;
    }
    if (operation.hasRecords)
        newRecords();
    if (result.isOk() && operation.flag == site::ProgramAction)
        m_live->pollNow(); // the logger has been reset
    startOperation();
    announceEnd(operation, result);
}

void HalyardLogger::announceEnd(const Operation& operation, const DriverResult& result)
{
    const bool isProgram = operation.flag == site::ProgramAction;
    const QString work =
        isProgram ? QStringLiteral("Programming the logger") : QStringLiteral("Unloading the logger");
    if (result.isOk() && isProgram)
        announce(&Logger::ProgramComplete);
    else if (result.isOk())
        announce(&Logger::UnloadComplete);
    else if (!m_isConnected)
        return; // the link has announced, or will announce, what ended it
    else if (operation.isCancelled)
        connectionError(work + QStringLiteral(" was cancelled."));
    else
        connectionError(work + QStringLiteral(" failed: ") + result.message);
}

void HalyardLogger::connectionBegins()
{
    m_isConnected = true;
    m_live->start();
    startOperation();
}

void HalyardLogger::connectionEnds()
{
    m_isConnected = false;
    m_live->stop();
    if (!m_operation.flag)
        return;
    m_actions &= ~m_operation.flag; // the next connection must not program a logger that nobody asked to program
    cancelOperation();
}

void HalyardLogger::writeFailed(std::int32_t address, const QString& message)
{
    if (isWanted())
        Q_EMIT WriteFailed(address, message);
}

void HalyardLogger::connectionLost(const QString& message)
{
    m_link->breakDown(message.isEmpty() ? QStringLiteral("The connection has broken.") : message);
}

} // namespace zan::halyard
