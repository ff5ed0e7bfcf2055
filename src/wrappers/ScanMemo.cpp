#include "wrappers/ScanMemo.h"

namespace zan::wrappers {

ScanMemo::ScanMemo(const iBenchControl& control, const document::ChangeCounter& documents)
    : m_wrapperRevision(control.revision())
{
    if (m_wrapperRevision == 0)
        return;
    const Ref<site::Channel> channel = control.Channel();
    const Ref<binding::Object> live = control.Control();
    m_channel = channel.get();
    m_live = live.get();
    m_channelRevision = channel ? channel->revision() : 0;
    m_liveRevision = live ? live->revision() : 0;
    m_documentChanges = documents.value();
}

bool ScanMemo::isLike(const ScanMemo& other) const noexcept
{
    return m_wrapperRevision == other.m_wrapperRevision && m_channel == other.m_channel && m_live == other.m_live &&
           m_channelRevision == other.m_channelRevision && m_liveRevision == other.m_liveRevision;
}

bool ScanMemo::countsChanges() const noexcept
{
    return m_wrapperRevision != 0 && m_live && m_liveRevision != 0 && (!m_channel || m_channelRevision != 0);
}

} // namespace zan::wrappers
