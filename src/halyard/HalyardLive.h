#pragma once

#include "halyard/ChannelTable.h"
#include "halyard/Clock.h"
#include "halyard/DriverThread.h"
#include "halyard/HistoryFeed.h"
#include "halyard/LoggerEvents.h"
#include "halyard/RecentRecords.h"
#include "site/Logger.h"

#include <deque>
#include <map>
#include <unordered_map>

namespace zan::halyard {

/// How a logger is read, whatever its driver.
struct LiveSettings
{
    std::int64_t period = 1000;    ///< milliseconds from poll to poll, at least 1
    std::int64_t logPeriod = 5000; ///< milliseconds from record to record
    std::int32_t records = 720;    ///< records kept, 1 to 32,767
    ByteOrder order = ByteOrder::Big;
};

/// Live reads and writes of a logger.
///
/// While the link stands and live polling is asked for, the memory of all channels is read each period, in as few
/// blocks as the driver allows. Its bytes come back as one result; then, on the user-interface thread and in this
/// order: the image of the memory takes the bytes, every channel gets its value, a record is logged when one is due,
/// NewBenchData, NewENTData. Without polling the driver is asked each period whether the connection still stands.
///
/// A write is in the image at once and stays there over the answers of reads that were under way, until the logger
/// has it; then a poll follows at once. A write that fails is reported, its bytes count as unknown, and the next poll
/// shows what the logger really holds.
class HalyardLive final : public site::Live
{
public:
    /// Most writes that wait for the logger at a time; one more raises 5.
    static constexpr std::size_t MostWaitingWrites = 10'000;
    /// Reads of one block that fail in a row before its old values count as unknown.
    static constexpr int PatienceWithBlock = 3;

    HalyardLive(DriverThread& thread, LoggerEvents& events, std::shared_ptr<Clock> clock,
                const Ref<site::Scheme>& scheme, const LiveSettings& settings,
                const Ref<site::HistoryKeeper>& history = {});

    Ref<site::LogBuffers> Buffers() override { return m_buffers; }
    Ref<site::History> History() override { return Ref<site::History>(m_feed.keeper().get()); }
    double ReadMemory(std::int32_t address, std::int16_t bytes) override;
    void WriteChannel(const Ref<Channel>& channel, const Variant& given) override;

    /// The connection stands: writes are taken, polling begins if it is asked for.
    void start();
    /// The connection ends: what is being read is given up. Values stay as they are.
    void stop();
    /// Whether channels are polled while the connection stands.
    void setPolling(bool isPolling);
    /// Reads now instead of at the end of the period; at once after the poll that is under way, if there is one.
    void pollNow();
    /// The layout that an unload is of; null when the driver has been told.
    std::shared_ptr<const MemoryLayout> layoutToUnload();
    /// Records that the logger has kept; true when they went to a history.
    bool storeKept(const std::vector<LoggedMemory>& kept);
    /// The logger is gone: nothing is read or written any more.
    void detach();

private:
    struct Request
    {
        std::shared_ptr<const MemoryLayout> layout;
        std::vector<MemoryBlock> blocks;
        std::size_t sharedBlocks = 0; // the first ones are of several fields, the rest of one each
    };
    struct Answer
    {
        DriverResult result; // of the request as a whole
        std::vector<DriverStatus> statuses;
        std::vector<QByteArray> bytes;
    };
    struct WaitingWrite
    {
        std::uint32_t id;
        std::int32_t address;
        QByteArray bytes;
        RawFormat format; // with the value for what is said when it fails
        Variant value;
    };

    static QString failureText(const WaitingWrite& write, const DriverResult& result);
    static Answer carryOut(const Request& request, bool isLayoutNew, Driver& driver, CancelToken& token);
    void renewRequest();
    std::shared_ptr<const Request> makeRequest() const;
    void onAnswer(std::uint32_t run, const std::shared_ptr<const Request>& request, const Answer& answer);
    void onWritten(std::uint32_t id, const DriverResult& result);
    /// Takes the bytes over; true when anything is known now that was not, or the other way.
    bool store(const Request& request, const Answer& answer);
    bool logRecord();
    void scheduleNext();
    /// Has memory that was asked for read from now on, for a while.
    void watch(std::int32_t address, std::int16_t bytes);
    /// Whether a channel has the memory read anyway.
    bool isCovered(std::int32_t address, std::int16_t bytes) const;

    DriverThread* m_thread; // null once the logger is gone
    LoggerEvents* m_events; // null once the logger is gone
    std::shared_ptr<Clock> m_clock;
    Ref<site::Scheme> m_scheme;
    LiveSettings m_settings;

    ChannelTable m_table;
    MemoryImage m_image;
    std::shared_ptr<const Request> m_request;
    std::vector<MemoryBlock> m_divided;               // blocks that the logger did not have as a whole
    std::unordered_map<std::int32_t, int> m_failures; // reads failed in a row, by address of the block
    std::deque<WaitingWrite> m_writes;
    std::uint32_t m_lastWrite = 0;
    std::map<std::pair<std::int32_t, std::int32_t>, std::uint32_t> m_watches; // address, length: poll of last use
    bool m_isRequestOld = false;

    std::unique_ptr<ClockTimer> m_timer;
    DriverThread::Token m_polling; // of the poll under way
    std::uint32_t m_run = 0;       // counts starts and stops; an answer of an earlier run is not news
    std::uint32_t m_polls = 0;
    std::int64_t m_nextPoll = 0;
    bool m_isRunning = false;
    bool m_isPollingWanted = false;
    bool m_isPollWanted = false; // one more poll after the one under way
    bool m_isRefreshing = false;

    Ref<RecentRecords> m_records;
    Ref<RecentBuffers> m_buffers;
    std::shared_ptr<const LogColumns> m_columns;
    std::uint32_t m_columnsGeneration = 0;
    std::int64_t m_nextRecord = 0;
    HistoryFeed m_feed;
};

} // namespace zan::halyard
