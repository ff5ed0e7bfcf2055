#include "halyard/HalyardLive.h"

#include "values/Calendar.h"
#include "values/Convert.h"

#include <algorithm>
#include <array>
#include <limits>

namespace zan::halyard {

namespace {

/// Polls for which a stretch of memory without a channel is read on after somebody has asked for it.
constexpr std::uint32_t WatchedPolls = 60;
constexpr std::size_t MostWatches = 4096;
constexpr std::int64_t EndOfMemory = std::int64_t(std::numeric_limits<std::int32_t>::max()) + 1;

values::Date dateOf(const QDateTime& time)
{
    const QDate day = time.date();
    const double fraction = double(time.time().msecsSinceStartOfDay()) / 86'400'000.0;
    return {double(values::dayNumber(day.year(), day.month(), day.day())) + fraction};
}

[[noreturn]] void refuse(const QString& description)
{
    values::raise(ErrorNumber::InvalidCall, description);
}

/// A channel as a person knows it: its label, or else its key, or its place.
QString nameOf(const Channel& channel)
{
    const QString label = channel.Label();
    if (!label.isEmpty())
        return label;
    const QString key = channel.Key();
    return key.isEmpty() ? QStringLiteral("the channel at address %1").arg(channel.BaseAddress()) : key;
}

/// Why a write has failed, as a sentence.
QString reasonOf(const DriverResult& result)
{
    const QString& reason = result.message;
    if (reason.isEmpty())
        return QStringLiteral("The connection ended before the value was written.");
    return reason.back().isPunct() ? reason : reason + u'.';
}

/// The format in which a value is written: a text channel without a length takes the text's own.
RawFormat writeFormat(const Channel& channel, const Variant& value, ByteOrder order)
{
    RawFormat format = rawFormat(channel, order);
    if (format.length > 0 && format.type == DataType::String && channel.Bytes() < 1) {
        const qsizetype length = values::toText(value).size();
        format.length = std::int32_t(std::clamp<qsizetype>(length, 1, std::numeric_limits<std::int16_t>::max()));
    }
    return format;
}

} // namespace

HalyardLive::HalyardLive(DriverThread& thread, LoggerEvents& events, std::shared_ptr<Clock> clock,
                         const Ref<site::Scheme>& scheme, const LiveSettings& settings,
                         const Ref<site::HistoryKeeper>& history)
    : m_thread(&thread)
    , m_events(&events)
    , m_clock(std::move(clock))
    , m_scheme(scheme)
    , m_settings(settings)
    , m_table(settings.order)
    , m_request(std::make_shared<Request>())
    , m_timer(m_clock->createTimer([this] { pollNow(); }))
    , m_records(values::make<RecentRecords>(settings.records))
    , m_buffers(values::make<RecentBuffers>(m_records))
    , m_feed(history, m_clock, settings.logPeriod)
{}

double HalyardLive::ReadMemory(std::int32_t address, std::int16_t bytes)
{
    if (address < 0 || bytes < 1 || bytes > 8 || std::int64_t(address) + bytes > EndOfMemory)
        refuse(QStringLiteral("A logger has no memory of %1 bytes at address %2.").arg(bytes).arg(address));
    std::array<std::uint8_t, 8> buffer{};
    const bool isKnown = m_image.read(address, bytes, buffer.data());
    watch(address, bytes);
    if (!isKnown)
        refuse(QStringLiteral("Nothing has been read from the logger's address %1 yet.").arg(address));
    return unsignedWord(buffer.data(), bytes, m_settings.order);
}

void HalyardLive::watch(std::int32_t address, std::int16_t bytes)
{
    const auto found = m_watches.find({address, bytes});
    if (found != m_watches.end()) {
        found->second = m_polls;
        return;
    }
    if (isCovered(address, bytes) || m_watches.size() >= MostWatches)
        return;
    m_watches.emplace(std::pair(address, std::int32_t(bytes)), m_polls);
    m_isRequestOld = true;
}

bool HalyardLive::isCovered(std::int32_t address, std::int16_t bytes) const
{
    if (!m_request->layout)
        return false;
    const MemoryLayout& layout = *m_request->layout;
    const auto next =
        std::upper_bound(layout.begin(), layout.end(), address,
                         [](std::int32_t at, const MemoryField& field) { return at < field.address; });
    if (next == layout.begin())
        return false;
    const MemoryField& field = *std::prev(next);
    return std::int64_t(field.address) + field.length >= std::int64_t(address) + bytes;
}

void HalyardLive::WriteChannel(const Ref<Channel>& channel, const Variant& given)
{
    if (!channel)
        values::raise(ErrorNumber::ObjectNotSet);
    const values::Ref<HalyardLive> self(this);
    const Variant value = values::plainValue(given); // a text is a text, also when an object stands for it
    if (!m_isRunning || !m_thread)
        refuse(QStringLiteral("Nothing can be written while the logger is not connected."));
    const std::int32_t address = channel->BaseAddress();
    const RawFormat format = writeFormat(*channel, value, m_settings.order);
    if (format.length <= 0 || address < 0 || std::int64_t(address) + format.length > EndOfMemory)
        refuse(QStringLiteral("The channel has no place in the logger's memory (address %1, data type %2).")
                   .arg(address)
                   .arg(channel->DataType()));
    QByteArray bytes;
    if (const ErrorNumber error = encodeRaw(format, value, bytes); error != ErrorNumber::None)
        values::raise(
            error,
            QStringLiteral("Nothing was written to %1: %2.").arg(nameOf(*channel), refusalText(format, value)));
    if (m_writes.size() >= MostWaitingWrites)
        refuse(QStringLiteral("Too many writes are waiting for the logger."));

    const std::uint32_t id = ++m_lastWrite;
    m_thread->post([this, id, address, bytes](Driver& driver, CancelToken& token, ResultQueue& results) {
        DriverResult result{DriverStatus::Cancelled, {}};
        if (!token.isCancelled())
            result = guarded([&] { return driver.writeBlock(address, bytes, token); });
        results.post([this, id, result] { onWritten(id, result); });
    });
    m_writes.push_back({id, address, bytes, format, value});
    m_image.store(address, bytes);
}

void HalyardLive::onWritten(std::uint32_t id, const DriverResult& result)
{
    const auto found =
        std::find_if(m_writes.begin(), m_writes.end(), [&](const auto& write) { return write.id == id; });
    if (found == m_writes.end())
        return;
    const values::Ref<HalyardLive> self(this);
    const WaitingWrite write = *found;
    m_writes.erase(found);
    if (!result.isOk()) {
        m_image.forget(write.address, std::int32_t(write.bytes.size()));
        for (const WaitingWrite& other : m_writes)
            m_image.store(other.address, other.bytes);
    }
    if (m_isRunning && m_isPollingWanted && result.status != DriverStatus::Broken)
        pollNow();
    if (result.isOk() || !m_events)
        return;
    if (result.status == DriverStatus::Broken && m_isRunning)
        m_events->connectionLost(reasonOf(result));
    if (m_events)
        m_events->writeFailed(write.address, failureText(write, result));
}

/// What was not written, where, why, and what can be done about it.
QString HalyardLive::failureText(const WaitingWrite& write, const DriverResult& result)
{
    const bool isRefused = result.status == DriverStatus::Failed || result.status == DriverStatus::Unavailable;
    return QStringLiteral("%1 was not written to address %2, which takes %3: %4 %5")
        .arg(shownText(write.value), QString::number(write.address), rangeText(write.format), reasonOf(result),
             isRefused
                 ? QStringLiteral("Write it again; a logger that goes on refusing it has the place read-only.")
                 : QStringLiteral("Connect, and write it again."));
}

void HalyardLive::start()
{
    ++m_run;
    m_isRunning = true;
    m_isPollWanted = false;
    m_image.clear(); // what the logger held before the connection ended says nothing of now
    m_failures.clear();
    m_divided.clear();
    m_table.forgetRaw();
    m_request = std::make_shared<Request>(); // the driver is to be told the layout again
    m_isRequestOld = true;
    m_polling.reset();
    pollNow();
}

void HalyardLive::stop()
{
    ++m_run;
    m_isRunning = false;
    m_isPollWanted = false;
    m_timer->stop();
    if (m_thread)
        m_thread->cancel(m_polling);
    m_polling.reset();
}

void HalyardLive::setPolling(bool isPolling)
{
    if (std::exchange(m_isPollingWanted, isPolling) != isPolling && isPolling)
        pollNow();
}

void HalyardLive::detach()
{
    stop();
    m_thread = nullptr;
    m_events = nullptr;
    m_timer.reset();
}

void HalyardLive::renewRequest()
{
    m_isRequestOld |= m_table.refresh(m_scheme);
    const auto isUnused = [&](const auto& watched) { return m_polls - watched.second > WatchedPolls; };
    m_isRequestOld |= std::erase_if(m_watches, isUnused) > 0;
    if (std::exchange(m_isRequestOld, false) || !m_request->layout)
        m_request = makeRequest();
}

std::shared_ptr<const HalyardLive::Request> HalyardLive::makeRequest() const
{
    auto request = std::make_shared<Request>();
    MemoryLayout layout = m_table.layout();
    request->layout = m_request->layout;
    if (!m_request->layout || layout != *m_request->layout)
        request->layout = std::make_shared<const MemoryLayout>(layout);

    for (const auto& watched : m_watches)
        layout.push_back({watched.first.first, watched.first.second, DataType::UnsignedByte});
    // Where a whole block was missing, each field is asked for by itself: a hole must not take its neighbours along.
    const auto isDivided = [&](const MemoryField& field) {
        return std::any_of(m_divided.begin(), m_divided.end(), [&](const MemoryBlock& block) {
            return std::int64_t(field.address) < std::int64_t(block.address) + block.length &&
                   std::int64_t(field.address) + field.length > block.address;
        });
    };
    const auto firstAlone =
        std::stable_partition(layout.begin(), layout.end(), [&](const auto& field) { return !isDivided(field); });
    const MemoryLayout alone(firstAlone, layout.end());
    layout.erase(firstAlone, layout.end());
    sortLayout(layout);
    request->blocks = planBlocks(layout, m_thread->limits());
    request->sharedBlocks = request->blocks.size();
    for (const MemoryField& field : alone) {
        const std::vector<MemoryBlock> blocks = planBlocks({field}, m_thread->limits());
        request->blocks.insert(request->blocks.end(), blocks.begin(), blocks.end());
    }
    return request;
}

void HalyardLive::pollNow()
{
    if (!m_isRunning || !m_thread || m_isRefreshing)
        return;
    if (m_polling) {
        m_isPollWanted = true;
        return;
    }
    const values::Ref<HalyardLive> self(this);
    const std::shared_ptr<const Request> former = m_request;
    std::shared_ptr<const Request> request = std::make_shared<Request>();
    if (m_isPollingWanted) {
        m_isRefreshing = true;
        renewRequest();
        m_isRefreshing = false;
        if (!m_isRunning || !m_thread) // the scheme is the host's: it may have done anything
            return;
        request = m_request;
    }
    ++m_polls;
    m_isPollWanted = false;
    m_nextPoll = m_clock->now() + m_settings.period;
    const bool isLayoutNew = request->layout && request->layout != former->layout;
    m_polling = m_thread->post(
        [this, request, isLayoutNew, run = m_run](Driver& driver, CancelToken& token, ResultQueue& results) {
            results.post([this, run, request, answer = carryOut(*request, isLayoutNew, driver, token)] {
                onAnswer(run, request, answer);
            });
        });
}

HalyardLive::Answer HalyardLive::carryOut(const Request& request, bool isLayoutNew, Driver& driver,
                                          CancelToken& token)
{
    Answer answer;
    if (isLayoutNew) { // also when cancelled: it is told once
        answer.result = guarded([&] {
            driver.prepare(request.layout);
            return DriverResult();
        });
    }
    if (!answer.result.isOk())
        return answer;
    if (token.isCancelled()) {
        answer.result.status = DriverStatus::Cancelled;
        return answer;
    }
    if (request.blocks.empty())
        answer.result = guarded([&] { return driver.check(token); });
    for (const MemoryBlock& block : request.blocks) {
        QByteArray bytes;
        DriverResult result = guarded([&] { return driver.readBlock(block.address, block.length, bytes, token); });
        if (result.isOk() && bytes.size() != block.length)
            result = {DriverStatus::Failed, QStringLiteral("The logger gave an answer of a wrong length.")};
        if (result.status == DriverStatus::Broken || result.status == DriverStatus::Cancelled) {
            answer.result = result;
            return answer;
        }
        answer.statuses.push_back(result.status);
        answer.bytes.push_back(result.isOk() ? bytes : QByteArray());
    }
    return answer;
}

void HalyardLive::onAnswer(std::uint32_t run, const std::shared_ptr<const Request>& request, const Answer& answer)
{
    if (run != m_run || !m_events)
        return;
    const values::Ref<HalyardLive> self(this);
    m_polling.reset();
    if (answer.result.status == DriverStatus::Broken) {
        const QString& message = answer.result.message;
        m_events->connectionLost(message.isEmpty() ? QStringLiteral("The connection has broken.") : message);
        return;
    }
    const bool isNews =
        m_isPollingWanted && answer.statuses.size() == request->blocks.size() && store(*request, answer);
    scheduleNext(); // before anybody is told: a handler may stay for long
    if (!isNews)
        return;
    m_table.update(m_image);
    if (run != m_run)
        return;
    const bool hasRecord = logRecord();
    if (m_events)
        m_events->newData();
    if (hasRecord && m_events)
        m_events->newRecords();
}

bool HalyardLive::store(const Request& request, const Answer& answer)
{
    bool isNews = false;
    for (std::size_t i = 0; i < request.blocks.size(); ++i) {
        const MemoryBlock& block = request.blocks[i];
        if (answer.statuses[i] == DriverStatus::Unavailable && i < request.sharedBlocks) {
            m_divided.push_back(block);
            m_isRequestOld = true;
            m_isPollWanted = true; // the parts that are there need not wait for the next turn
        }
        if (answer.statuses[i] == DriverStatus::Ok) {
            m_failures.erase(block.address);
            m_image.store(block.address, answer.bytes[i]);
            isNews = true;
        } else if (answer.statuses[i] == DriverStatus::Unavailable ||
                   ++m_failures[block.address] == PatienceWithBlock) {
            m_image.forget(block.address, block.length);
            isNews = true;
        }
    }
    for (const WaitingWrite& write : m_writes)
        m_image.store(write.address, write.bytes);
    return isNews;
}

bool HalyardLive::logRecord()
{
    const std::int64_t now = m_clock->now();
    if (m_columns && now < m_nextRecord)
        return false;
    // Records keep to their beat; a pause does not bring a burst.
    const bool isLate = !m_columns || now >= m_nextRecord + m_settings.logPeriod;
    m_nextRecord = (isLate ? now : m_nextRecord) + m_settings.logPeriod;
    if (!m_columns || m_columnsGeneration != m_table.generation()) {
        m_columns = std::make_shared<const LogColumns>(m_table.activeChannels());
        m_columnsGeneration = m_table.generation();
    }
    m_records->add(dateOf(m_clock->dateTime()), m_columns);
    m_feed.record(m_table);
    return true;
}

std::shared_ptr<const MemoryLayout> HalyardLive::layoutToUnload()
{
    if (m_request->layout)
        return nullptr;
    m_table.refresh(m_scheme);
    return std::make_shared<const MemoryLayout>(m_table.layout());
}

bool HalyardLive::storeKept(const std::vector<LoggedMemory>& kept)
{
    return m_events && m_feed.record(m_table, kept);
}

void HalyardLive::scheduleNext()
{
    if (m_isPollWanted)
        pollNow();
    else
        m_timer->start(std::max<std::int64_t>(m_nextPoll - m_clock->now(), 0));
}

} // namespace zan::halyard
