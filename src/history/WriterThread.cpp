#include "history/WriterThread.h"

#include "history/StoreLock.h"
#include "history/StoreReader.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

namespace zan::history {

namespace {

using Reason = StoreFailure::Reason;
using namespace std::chrono_literals;

/// How long records gather before they are stored together, and how long a failure rests.
constexpr auto GatheringTime = 300ms;
constexpr auto RestAfterFailure = 1000ms;
/// Milliseconds after which a store that was found in order is looked through again.
constexpr qint64 RestBetweenLooks = 600'000;
/// What the queue holds at most.
constexpr qsizetype MostQueuedBytes = 64 * 1024 * 1024;
constexpr std::size_t MostQueuedRecords = 200'000;
/// A file up to this size is looked through when it is opened.
constexpr qint64 LargestToLookThrough = 32 * 1024 * 1024;

HistoryTime presentTime()
{
    return QDateTime::currentMSecsSinceEpoch();
}

} // namespace

WriterThread::WriterThread(const HistoryPlace& place, const StoreWriter::Limits& limits)
    : m_place(place)
    , m_limits(limits)
{
    m_thread = std::thread([this] { run(); });
}

WriterThread::~WriterThread()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
    }
    m_wake.notify_all();
    m_thread.join();
}

void WriterThread::add(QueuedRecord record, std::vector<site::HistorySeries> newSeries)
{
    const std::lock_guard lock(m_mutex);
    for (site::HistorySeries& series : newSeries)
        m_newSeries.push_back(std::move(series));
    m_queuedBytes += record.values.size();
    m_queue.push_back(std::move(record));
    ++m_added;
    while (m_queue.size() > MostQueuedRecords || (m_queuedBytes > MostQueuedBytes && m_queue.size() > 1)) {
        m_queuedBytes -= m_queue.front().values.size();
        m_queue.pop_front();
        ++m_status.lost;
    }
    m_wake.notify_all();
}

bool WriterThread::flush(std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    m_isHurried = true;
    m_wake.notify_all();
    const std::int64_t wanted = m_added;
    const bool isDone =
        m_changed.wait_for(lock, patience, [&] { return m_status.stored + m_status.lost >= wanted; });
    m_isHurried = false;
    return isDone && m_status.problem.isEmpty();
}

void WriterThread::suspect()
{
    const std::lock_guard lock(m_mutex);
    m_isSuspect = true;
    m_wake.notify_all();
}

WriterThread::Status WriterThread::status() const
{
    const std::lock_guard lock(m_mutex);
    return m_status;
}

bool WriterThread::isStopping() const
{
    const std::lock_guard lock(m_mutex);
    return m_isStopping;
}

void WriterThread::report(const QString& problem)
{
    const std::lock_guard lock(m_mutex);
    m_status.problem = problem;
    m_changed.notify_all();
}

bool WriterThread::take(std::chrono::milliseconds patience)
{
    if (!m_batch.empty())
        return true;
    std::unique_lock lock(m_mutex);
    const auto isAwake = [this] { return m_isStopping || m_isSuspect || !m_queue.empty(); };
    if (!m_wake.wait_for(lock, patience, isAwake))
        return false;
    m_wake.wait_for(lock, patience == 0ms ? 0ms : GatheringTime,
                    [this] { return m_isStopping || m_isHurried || m_isSuspect; });
    m_batch.assign(std::make_move_iterator(m_queue.begin()), std::make_move_iterator(m_queue.end()));
    m_queue.clear();
    m_queuedBytes = 0;
    m_series.insert(m_series.end(), m_newSeries.begin(), m_newSeries.end());
    m_newSeries.clear();
    return !m_batch.empty();
}

void WriterThread::run()
{
    do {
        auto rest = RestAfterFailure;
        try {
            work();
        } catch (const StoreFailure& failure) {
            // A new store is begun at once; one that is damaged again tells of its disk, which is left in peace.
            if (recover(failure) && !std::exchange(m_hasSetAside, true))
                rest = 0ms;
        } catch (const std::bad_alloc&) {
            report(QStringLiteral("There is not enough memory to store the history."));
        }
        std::unique_lock lock(m_mutex);
        m_wake.wait_for(lock, rest, [this] { return m_isStopping; });
    } while (!isStopping());
}

void WriterThread::open(std::unique_ptr<Database>& database, std::unique_ptr<StoreLock>& lock)
{
    const bool isServer = m_place.kind == HistoryPlace::Kind::Postgres;
    if (isServer)
        database = std::make_unique<Database>(m_place, Database::Access::Write);
    lock = std::make_unique<StoreLock>(m_place, database.get());
    if (!lock->isHeld()) {
        database.reset();
        return;
    }
    if (!isServer)
        database = std::make_unique<Database>(m_place, Database::Access::Write);
    prepareStore(*database);
    if (!isServer && QFileInfo(m_place.file).size() <= LargestToLookThrough && !isSound(*database))
        throw StoreFailure{Reason::Damaged, QStringLiteral("its pages do not fit together")};
}

void WriterThread::work()
{
    std::unique_ptr<StoreLock> storeLock; // let go of after the database has closed
    std::unique_ptr<Database> database;
    open(database, storeLock);
    if (!database) {
        const std::lock_guard lock(m_mutex);
        m_status.problem = QStringLiteral("Another program is writing this history (%1); this one only reads it.")
                               .arg(m_place.text());
        m_status.epoch += m_status.epoch == 0; // said and readable at once
        m_changed.notify_all();
        return;
    }
    StoreWriter writer(*database, m_limits);
    {
        const std::lock_guard lock(m_mutex);
        ++m_status.epoch;
        m_status.problem.clear();
    }
    takeOver(*database, writer);
}

void WriterThread::takeOver(Database& database, StoreWriter& writer)
{
    bool isTidy = false;
    bool isEnd = false;
    QElapsedTimer sinceLook;
    while (!isEnd) {
        isEnd = isStopping(); // before the last records are taken
        if (take(isTidy ? 60s : 0s)) {
            writer.store(m_batch, m_series);
            const std::lock_guard lock(m_mutex);
            m_status.stored += std::int64_t(m_batch.size());
            m_status.problem.clear();
            m_batch.clear();
            m_changed.notify_all();
        }
        isTidy = !isEnd && !writer.tidy(m_limits.now ? m_limits.now() : presentTime());
        std::unique_lock lock(m_mutex);
        if (!std::exchange(m_isSuspect, false) || (sinceLook.isValid() && !sinceLook.hasExpired(RestBetweenLooks)))
            continue;
        lock.unlock();
        lookThrough(database);
        sinceLook.start();
    }
}

/// A store of which pages or what every read needs are damaged makes way for a new one. One in which a block of some
/// channel is damaged stays: the rest of it can be read.
void WriterThread::lookThrough(Database& database) const
{
    if (!isSound(database))
        throw StoreFailure{Reason::Damaged, QStringLiteral("its pages do not fit together")};
    if (m_place.kind != HistoryPlace::Kind::Sqlite)
        return;
    StoreReader reader(m_place);
    reader.series();
    reader.span();
}

bool WriterThread::recover(const StoreFailure& failure)
{
    const QString where = m_place.text();
    switch (failure.reason) {
    case Reason::Damaged:
        if (m_place.kind == HistoryPlace::Kind::Sqlite)
            return setAside(failure.text);
        report(QStringLiteral("The history in %1 is damaged (%2): nothing is stored.").arg(where, failure.text));
        return false;
    case Reason::Foreign:
        report(QStringLiteral("Nothing is stored: %1 is not used, because %2. Name another place in the scheme's "
                              "HISTORY, or move it away.")
                   .arg(where, failure.text));
        return false;
    case Reason::Full:
        report(QStringLiteral("There is no room for the history in %1 (%2). It goes on when there is.")
                   .arg(where, failure.text));
        return false;
    default:
        report(QStringLiteral("The history in %1 cannot be written at the moment (%2).").arg(where, failure.text));
        return false;
    }
}

bool WriterThread::setAside(const QString& reason)
{
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString aside;
    for (int number = 1; aside.isEmpty() || QFileInfo::exists(aside); ++number)
        aside = QStringLiteral("%1.damaged-%2%3")
                    .arg(m_place.file, stamp, number == 1 ? QString() : QStringLiteral("-%1").arg(number));
    if (!QFile::rename(m_place.file, aside)) {
        report(QStringLiteral("The history in %1 is damaged (%2) and cannot be set aside: nothing is stored.")
                   .arg(m_place.file, reason));
        return false;
    }
    for (const char* part : {"-wal", "-shm"})
        QFile::rename(m_place.file + QLatin1String(part), aside + QLatin1String(part));
    const std::lock_guard lock(m_mutex);
    m_status.notice =
        QStringLiteral("The history in %1 was damaged (%2). It was set aside as %3, and a new one was "
                       "begun.")
            .arg(m_place.file, reason, QFileInfo(aside).fileName());
    return true;
}

} // namespace zan::history
