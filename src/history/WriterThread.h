#pragma once

#include "history/HistoryPlace.h"
#include "history/StoreWriter.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace zan::history {

class StoreLock;

/// The thread that writes a store. What it is given waits in a queue of limited size and is stored a few tenths of a
/// second later; whatever goes wrong is tried again, for as long as it lives.
class WriterThread
{
public:
    /// What a person has to know, and what a reader.
    struct Status
    {
        QString problem;         ///< why nothing is stored at the moment; empty while everything is
        QString notice;          ///< what has happened to the store since the start; stays
        std::int64_t lost = 0;   ///< records that found no room in the queue
        std::int64_t stored = 0; ///< records taken from the queue and stored, in the order in which they came
        int epoch = 0;           ///< counts up whenever there is another store to read; 0 for none
    };

    WriterThread(const HistoryPlace& place, const StoreWriter::Limits& limits);
    /// Stores what waits, unless that fails, and ends.
    ~WriterThread();
    WriterThread(const WriterThread&) = delete;
    WriterThread& operator=(const WriterThread&) = delete;

    /// `newSeries`: those after the ones that are known, which the record's places may name.
    void add(QueuedRecord record, std::vector<site::HistorySeries> newSeries);
    /// Waits until everything that was added is stored; false when it was not within that time.
    bool flush(std::chrono::milliseconds patience);
    /// Somebody has found the store damaged: it is looked at, and set aside if it is.
    void suspect();
    Status status() const;

private:
    void run();
    /// Holds the store until something goes wrong or the thread is to end.
    void work();
    void takeOver(Database& database, StoreWriter& writer);
    void lookThrough(Database& database) const;
    void open(std::unique_ptr<Database>& database, std::unique_ptr<StoreLock>& lock);
    /// True when a damaged store has made way for a new one.
    bool recover(const StoreFailure& failure);
    /// Takes what waits; false when there was nothing to take before the time was up.
    bool take(std::chrono::milliseconds patience);
    bool setAside(const QString& reason);
    void report(const QString& problem);
    bool isStopping() const;

    const HistoryPlace m_place;
    const StoreWriter::Limits m_limits;

    mutable std::mutex m_mutex;
    std::condition_variable m_wake;    // of the thread
    std::condition_variable m_changed; // of whoever waits for it
    std::deque<QueuedRecord> m_queue;
    qsizetype m_queuedBytes = 0;
    std::vector<site::HistorySeries> m_newSeries; // of the queue
    std::int64_t m_added = 0;
    bool m_isHurried = false; // somebody waits
    bool m_isSuspect = false;
    bool m_isStopping = false;
    Status m_status;

    // Of the thread alone.
    std::vector<site::HistorySeries> m_series;
    std::vector<QueuedRecord> m_batch; // taken, not stored yet
    bool m_hasSetAside = false;        // once at least
    std::thread m_thread;              // last: it starts when everything else is there
};

} // namespace zan::history
