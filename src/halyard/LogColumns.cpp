#include "halyard/LogColumns.h"

namespace zan::halyard {

LogColumns::LogColumns(std::vector<Ref<site::Channel>> channels)
    : m_channels(std::move(channels))
{
    m_places.reserve(m_channels.size());
    for (std::size_t i = 0; i < m_channels.size(); ++i)
        m_places.emplace(m_channels[i].get(), std::ptrdiff_t(i));
}

std::ptrdiff_t LogColumns::placeOf(const site::Channel* channel) const
{
    const auto found = m_places.find(channel);
    return found == m_places.end() ? -1 : found->second;
}

} // namespace zan::halyard
