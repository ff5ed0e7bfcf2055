#include "halyard/HistoryFeed.h"

#include "values/Failure.h"

namespace zan::halyard {

HistoryFeed::HistoryFeed(const Ref<site::HistoryKeeper>& keeper, std::shared_ptr<Clock> clock, std::int64_t period)
    : m_keeper(keeper)
    , m_clock(std::move(clock))
    , m_period(period)
    , m_birth(m_clock->dateTime().toMSecsSinceEpoch() - m_clock->now())
{}

void HistoryFeed::learn(const ChannelTable& table)
{
    if (m_columns && m_generation == table.generation())
        return;
    m_generation = table.generation();
    m_channels = table.activeChannels();
    m_columns = std::make_shared<const site::HistoryColumns>(table.historyColumns(m_period));
}

void HistoryFeed::record(const ChannelTable& table)
{
    if (!m_keeper)
        return;
    learn(table);
    const Ref<site::HistoryKeeper> keeper = m_keeper;
    values::attempt([&] {
        std::vector<Variant> now;
        now.reserve(m_channels.size());
        for (const Ref<Channel>& channel : m_channels)
            now.push_back(channel->Value());
        keeper->keep(m_clock->dateTime().toMSecsSinceEpoch(), m_columns, now);
    });
}

bool HistoryFeed::record(const ChannelTable& table, const std::vector<LoggedMemory>& kept)
{
    if (!m_keeper || kept.empty())
        return false;
    learn(table);
    const Ref<site::HistoryKeeper> keeper = m_keeper;
    for (const LoggedMemory& record : kept) {
        MemoryImage image;
        for (const auto& [address, bytes] : record.blocks)
            image.store(address, bytes);
        const std::vector<Variant> then = table.decoded(image);
        if (then.size() == m_columns->size())
            values::attempt([&] { keeper->keep(m_birth + record.moment, m_columns, then); });
    }
    return true;
}

} // namespace zan::halyard
