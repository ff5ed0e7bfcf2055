#pragma once

#include "document/ChangeCounter.h"
#include "wrappers/iBenchControl.h"

namespace zan::wrappers {

/// What one control was like when the scan last looked at it. An update that changed nothing, and depends on nothing
/// but what is noted here, would change nothing again: as long as the memo holds, the scan passes the control over.
/// Whatever does not count its changes makes no memo that holds.
///
/// Channel and live control are addresses to compare with, and to ask for their count while the wrapper's count says
/// that it still holds them.
class ScanMemo
{
public:
    ScanMemo() noexcept = default;
    /// Notes a control as it is now, and the count of the documents' changes. The memo does not hold yet.
    ScanMemo(const iBenchControl& control, const document::ChangeCounter& documents);

    /// Whether both noted the same, whatever their documents have gone through.
    bool isLike(const ScanMemo& other) const noexcept;
    /// Whether everything that was noted counts its changes: only such a memo may settle.
    bool countsChanges() const noexcept;
    /// Whether nothing has changed since that other memo was made, documents included.
    bool isUnchangedSince(const ScanMemo& other) const noexcept
    {
        return m_documentChanges == other.m_documentChanges && isLike(other);
    }
    /// From now on the memo holds until something changes.
    void settle() noexcept { m_isSettled = true; }
    /// Whether an update of this control, at this count of document changes, would change nothing.
    bool holds(const iBenchControl& control, std::uint32_t documentChanges) const
    {
        return m_isSettled && m_documentChanges == documentChanges && control.revision() == m_wrapperRevision &&
               m_live->revision() == m_liveRevision && (!m_channel || m_channel->revision() == m_channelRevision);
    }

private:
    const site::Channel* m_channel = nullptr;
    const binding::Object* m_live = nullptr;
    std::uint32_t m_documentChanges = 0;
    std::uint32_t m_channelRevision = 0;
    std::uint32_t m_liveRevision = 0;
    std::uint32_t m_wrapperRevision = 0;
    bool m_isSettled = false;
};

} // namespace zan::wrappers
