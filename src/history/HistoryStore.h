#pragma once

#include "history/HistoryPlace.h"
#include "history/StoreReader.h"
#include "history/WriterThread.h"
#include "site/HistoryKeeper.h"

#include <QElapsedTimer>
#include <QHash>

#include <chrono>
#include <memory>

namespace zan::history {

/// A history that is kept in a database: a file or a server.
///
/// What is handed over goes to a thread of its own and is stored some tenths of a second later; a program that is
/// killed loses no more than that, and never what was stored. Nothing that happens to the store disturbs whoever hands
/// records over: what a person has to know stands in State().
class HistoryStore final : public site::HistoryKeeper
{
public:
    enum class Access { ReadOnly, ReadWrite };

    /// Opens the store in the background; it can be asked at once.
    explicit HistoryStore(const HistoryPlace& place, Access access = Access::ReadWrite);
    /// For tests: with a tail that is moved into blocks sooner.
    HistoryStore(const HistoryPlace& place, const StoreWriter::Limits& limits);
    /// Stores what waits, unless that fails.
    ~HistoryStore() override;

    void keep(HistoryTime time, const std::shared_ptr<const site::HistoryColumns>& columns,
              const std::vector<Variant>& values) override;
    /// Waits until everything handed over is stored; false when it is not within that time.
    bool flush(std::chrono::milliseconds patience = std::chrono::seconds(10));
    /// How many of the records handed over are stored for good, in the order of their coming.
    std::int64_t storedCount() const;

    QString State() const override;
    std::vector<HistorySeries> series() const override;
    HistorySpan span() const override;
    std::vector<HistoryPoint> points(std::int64_t series, HistoryTime from, HistoryTime until,
                                     std::int32_t most) const override;
    std::vector<Past> valuesAt(HistoryTime moment) const override;
    std::int64_t rowCount() const override;
    std::vector<HistoryRow> rows(std::int64_t place, std::int32_t most,
                                 const std::vector<std::int64_t>& series) const override;
    std::int64_t placeOf(HistoryTime moment) const override;

private:
    /// Asks the reader; with an empty answer where there is none or it fails.
    template <class Call>
    auto ask(Call call) const -> decltype(call(std::declval<StoreReader&>()));
    bool openReader() const;
    void learn(const std::shared_ptr<const site::HistoryColumns>& columns);

    HistoryPlace m_place;
    std::unique_ptr<WriterThread> m_writer; // null for reading only

    // What was handed over last, and the place of each of its columns among all series ever handed over.
    std::shared_ptr<const site::HistoryColumns> m_columns;
    std::shared_ptr<const std::vector<std::int32_t>> m_places;
    struct Known
    {
        std::int32_t place;
        HistorySeries facts;
    };
    QHash<std::pair<QString, QString>, Known> m_known; // by keys of window and channel
    std::vector<HistorySeries> m_newSeries;            // not handed to the writer yet
    std::int32_t m_seriesCount = 0;

    mutable std::unique_ptr<StoreReader> m_reader;
    mutable int m_readerEpoch = 0;
    mutable QString m_readProblem;
    mutable QElapsedTimer m_sinceOpening;
};

} // namespace zan::history
