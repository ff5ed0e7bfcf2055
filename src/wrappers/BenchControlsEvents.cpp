// The collection's road of live data: its subscriptions to the logger and the link.

#include "wrappers/BenchControls.h"

namespace zan::wrappers {

using values::RuntimeError;

void BenchControls::AttachLogger(const Ref<site::Logger>& logger)
{
    if (!logger)
        values::raise(values::ErrorNumber::ObjectNotSet);
    const Ref<site::Link> link = logger->Link();
    if (m_logger)
        QObject::disconnect(m_logger.get(), nullptr, &m_context, nullptr);
    if (m_link)
        QObject::disconnect(m_link.get(), nullptr, &m_context, nullptr);
    m_logger = logger;
    m_link = link;
    QObject::connect(m_logger.get(), &site::Logger::NewBenchData, &m_context, [this] { onNewBenchData(); });
    QObject::connect(m_logger.get(), &site::Logger::NewENTData, &m_context, [this] { onNewENTData(); });
    if (m_link)
        QObject::connect(m_link.get(), &site::Link::StateChange, &m_context,
                         [this](int state) { onStateChange(state); });
}

void BenchControls::onNewBenchData()
{
    const Ref<BenchControls> alive(this);
    m_haveData = true;
    try {
        ScanControls();
    } catch (const RuntimeError&) {
        // A failure ends the pass silently: the controls after the failing one keep what they show until the next
        // event.
    }
}

void BenchControls::ScanControls()
{
    const Ref<BenchControls> alive(this);
    std::uint32_t changes = m_shownChanges.value();
    // An update may raise an event that changes the list: the count is read anew each time.
    for (std::int32_t place = 1; m_liveData && place <= m_list.count(); ++place) {
        if (m_list.memoAt(place).holds(*m_list.at(place), changes))
            continue;
        scanControl(place);
        changes = m_shownChanges.value();
    }
}

void BenchControls::scanControl(std::int32_t place)
{
    // When the control is as it was after the last update, this update may turn out to change nothing, and what it
    // reads of the documents is recorded. A control that changes at each scan costs no more.
    const Ref<iBenchControl> control = m_list.at(place);
    const ScanMemo before(*control, m_shownChanges);
    const bool mayRest =
        before.countsChanges() && before.isLike(m_list.memoAt(place)) && m_liveData->mayRest(*control);
    m_list.memoAt(place) = {};
    // The update may fail, and it may raise an event that changes anything, the list too.
    {
        std::optional<document::ReadRecorder> recorder;
        if (mayRest)
            recorder.emplace(m_shownChanges);
        m_liveData->update(*control, *this);
    }
    if (place > m_list.count() || m_list.at(place) != control)
        return;
    // An update that has changed nothing need not be made again until something else does.
    ScanMemo after(*control, m_shownChanges);
    if (mayRest && after.isUnchangedSince(before))
        after.settle();
    m_list.memoAt(place) = after;
}

void BenchControls::onNewENTData()
{
    const Ref<BenchControls> alive(this);
    for (std::int32_t place = 1; m_liveData && place <= m_list.count(); ++place) {
        const Ref<iBenchControl> control = m_list.at(place);
        try {
            m_liveData->feedRecords(*control, *this);
        } catch (const RuntimeError&) {
            // A graph that cannot be fed is passed over; the next one may be in order.
        }
    }
}

void BenchControls::onStateChange(int state)
{
    const Ref<BenchControls> alive(this);
    try {
        for (std::int32_t place = 1; m_liveData && place <= m_list.count(); ++place) {
            const Ref<iBenchControl> control = m_list.at(place);
            m_liveData->followLink(*control, state);
        }
    } catch (const RuntimeError& error) {
        if (m_window)
            m_window->reportError(error); // no trap here: the error is the host's
    }
}

} // namespace zan::wrappers
