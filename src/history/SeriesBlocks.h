#pragma once

#include "history/Blocks.h"
#include "history/Database.h"

#include <unordered_map>

namespace zan::history {

/// The blocks and figures of the series in a store, for its writer. Every call belongs to the transaction of its
/// caller and throws StoreFailure.
class SeriesBlocks
{
public:
    explicit SeriesBlocks(Database& database)
        : m_database(database)
    {}

    /// Time of the last record of a series in blocks; before EarliestTime for none.
    HistoryTime last(std::int64_t series);
    bool contains(std::int64_t series, HistoryTime time);
    /// Puts records, in order and none of them in a block yet, into blocks; with their figures if they are asked for.
    void merge(std::int64_t series, const std::vector<StoredRecord>& records, bool withFigures);
    /// Drops what is older than a moment, which is a full hour.
    void trim(std::int64_t series, HistoryTime cutoff);

private:
    struct Block
    {
        HistoryTime first = 0;
        HistoryTime last = 0;
        std::int64_t count = 0; // 0 for no block
        QByteArray data;
    };
    struct Times
    {
        HistoryTime from = 0; // of the stretch in which the times are all there are
        HistoryTime until = 0;
        std::vector<HistoryTime> times;
    };

    /// The block that a time belongs to: the last one that begins at it or before, else the first one.
    Block blockFor(std::int64_t series, HistoryTime time);
    HistoryTime nextFirst(std::int64_t series, HistoryTime after);
    Block read(const char* sql, std::int64_t series, HistoryTime time);
    std::vector<StoredRecord> recordsOf(const Block& block);
    void write(std::int64_t series, const Block& block);
    void remove(std::int64_t series, HistoryTime first);
    /// New blocks of records, as even as can be.
    void writeNew(std::int64_t series, const StoredRecord* begin, const StoredRecord* end);
    /// Merges records that all belong before the block after `block`.
    void mergeInto(std::int64_t series, Block block, const StoredRecord* begin, const StoredRecord* end);

    std::vector<Figures> figuresOf(std::int64_t series, std::size_t level, HistoryTime start);
    void writeFigures(std::int64_t series, std::size_t level, HistoryTime start,
                      const std::vector<Figures>& figures);
    void addToFigures(std::int64_t series, const std::vector<StoredRecord>& records);
    void trimFigures(std::int64_t series, HistoryTime cutoff);

    Database& m_database;
    std::unordered_map<std::int64_t, Times> m_times; // of blocks looked at last, by series
};

} // namespace zan::history
