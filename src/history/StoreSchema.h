#pragma once

#include "history/Database.h"

namespace zan::history {

/// Most series of a store, and most records that ever come into it: no store gets there, but a damaged one may say so.
constexpr std::int64_t MostSeries = 1'000'000;
constexpr std::int64_t MostRecords = std::int64_t(1) << 60;

/// The one row about a store as a whole.
struct StoreHead
{
    std::int64_t changes = 0;       ///< counts up whenever a block or figures change
    std::int64_t seriesChanges = 0; ///< counts up whenever a series comes or changes
    std::int64_t frozen = 0;        ///< records of the tail up to this id are on their way into blocks
    std::int64_t marker = -1;       ///< of them, those of series up to this one are there
    std::int64_t removed = 0;       ///< records of the tail up to this id have gone
    std::int64_t cutoff = 0;        ///< what is older is not kept
    std::int64_t trimmed = 0;       ///< what is older than this has gone

    /// Throws StoreFailure: Damaged for figures that no store of ours has.
    static StoreHead read(Database& database);
    void write(Database& database) const;
};

/// Makes the tables of a store that has none, or finds out whether these are ours. Throws StoreFailure: Foreign for
/// what is no history or one of a later program.
void prepareStore(Database& database);
/// The same for a store that is only read.
void checkStore(Database& database);
/// Whether the database finds its own file in order (SQLite; a server looks after itself).
bool isSound(Database& database);

} // namespace zan::history
