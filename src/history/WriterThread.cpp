#include "history/WriterThread.h"

#include "history/StoreLock.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace zan::history {

namespace {

using Reason = StoreFailure::Reason;
using namespace std::chrono_literals;

/// How long records gather before they are stored together, and how long a failure rests.
constexpr auto GatheringTime = 300ms;
constexpr auto RestAfterFailure = 1000ms;
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
        try {
            work();
        } catch (const StoreFailure& failure) {
            recover(failure);
        } catch (const std::bad_alloc&) {
            report(QStringLiteral("There is not enough memory to store the history."));
        }
        std::unique_lock lock(m_mutex);
        m_wake.wait_for(lock, RestAfterFailure, [this] { return m_isStopping; });
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
        report(QStringLiteral("Another program is writing this history (%1); this one only reads it.")
                   .arg(m_place.text()));
        const std::lock_guard lock(m_mutex);
        m_status.epoch += m_status.epoch == 0;
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
        isTidy = !isEnd && !writer.tidy(presentTime());
        std::unique_lock lock(m_mutex);
        if (!std::exchange(m_isSuspect, false))
            continue;
        lock.unlock();
        if (!isSound(database))
            throw StoreFailure{Reason::Damaged, QStringLiteral("its pages do not fit together")};
    }
}

void WriterThread::recover(const StoreFailure& failure)
{
    const QString where = m_place.text();
    switch (failure.reason) {
    case Reason::Damaged:
        if (m_place.kind == HistoryPlace::Kind::Sqlite)
            setAside(failure.text);
        else
            report(
                QStringLiteral("The history in %1 is damaged (%2): nothing is stored.").arg(where, failure.text));
        return;
    case Reason::Foreign:
        report(QStringLiteral("Nothing is stored: %1 is not used, because %2. Name another place in the scheme's "
                              "HISTORY, or move it away.")
                   .arg(where, failure.text));
        return;
    case Reason::Full:
        report(QStringLiteral("There is no room for the history in %1 (%2). It goes on when there is.")
                   .arg(where, failure.text));
        return;
    default:
        report(QStringLiteral("The history in %1 cannot be written at the moment (%2).").arg(where, failure.text));
        return;
    }
}

void WriterThread::setAside(const QString& reason)
{
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString aside;
    for (int number = 1; aside.isEmpty() || QFileInfo::exists(aside); ++number)
        aside = QStringLiteral("%1.damaged-%2%3")
                    .arg(m_place.file, stamp, number == 1 ? QString() : QStringLiteral("-%1").arg(number));
    if (!QFile::rename(m_place.file, aside)) {
        report(QStringLiteral("The history in %1 is damaged (%2) and cannot be set aside: nothing is stored.")
                   .arg(m_place.file, reason));
        return;
    }
    for (const char* part : {"-wal", "-shm"})
        QFile::rename(m_place.file + QLatin1String(part), aside + QLatin1String(part));
    const std::lock_guard lock(m_mutex);
    m_status.notice =
        QStringLiteral("The history in %1 was damaged (%2). It was set aside as %3, and a new one was "
                       "begun.")
            .arg(m_place.file, reason, QFileInfo(aside).fileName());
}

} // namespace zan::history
