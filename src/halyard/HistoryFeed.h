#pragma once

#include "halyard/ChannelTable.h"
#include "halyard/Clock.h"
#include "halyard/Driver.h"
#include "site/HistoryKeeper.h"

namespace zan::halyard {

/// Hands a logger's records over to a history: those logged while it is read, and those that it has kept by itself.
/// The history is the host's: whatever a call of it throws is forgotten, and the live data goes on.
class HistoryFeed
{
public:
    /// `keeper` may be null: nothing is kept then. `period`: milliseconds from record to record.
    HistoryFeed(const Ref<site::HistoryKeeper>& keeper, std::shared_ptr<Clock> clock, std::int64_t period);

    const Ref<site::HistoryKeeper>& keeper() const noexcept { return m_keeper; }
    /// The present values of all channels.
    void record(const ChannelTable& table);
    /// What the logger has kept; true when there was anything to hand over.
    bool record(const ChannelTable& table, const std::vector<LoggedMemory>& kept);

private:
    void learn(const ChannelTable& table);

    Ref<site::HistoryKeeper> m_keeper;
    std::shared_ptr<Clock> m_clock;
    std::int64_t m_period;
    // What the clock's moments are as a time. Fixed for our life, so that a record which is unloaded twice has the
    // same time twice, whatever happens to the machine's clock in between.
    std::int64_t m_birth = 0;
    std::shared_ptr<const site::HistoryColumns> m_columns;
    std::vector<Ref<Channel>> m_channels;
    std::uint32_t m_generation = 0; // of the table that the columns are those of
};

} // namespace zan::halyard
