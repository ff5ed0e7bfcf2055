#pragma once

#include "site/Channel.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace zan::halyard {

using values::Ref;
using values::Variant;

/// The channels that one or more records were made of, in order.
class LogColumns
{
public:
    explicit LogColumns(std::vector<Ref<site::Channel>> channels);

    std::size_t count() const noexcept { return m_channels.size(); }
    const Ref<site::Channel>& channel(std::size_t place) const { return m_channels[place]; }
    /// Place of a channel, or -1.
    std::ptrdiff_t placeOf(const site::Channel* channel) const;

private:
    std::vector<Ref<site::Channel>> m_channels;
    std::unordered_map<const site::Channel*, std::ptrdiff_t> m_places;
};

/// The values of all channels at one moment.
struct LogRecord
{
    values::Date time;
    std::shared_ptr<const LogColumns> columns;
    std::vector<Variant> cells;
};

} // namespace zan::halyard
