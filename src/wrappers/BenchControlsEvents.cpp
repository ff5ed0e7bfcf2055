// The collection's road of live data: its subscriptions to the logger and the link.

#include "wrappers/BenchControls.h"

#include "document/XMLOps.h"
#include "values/Failure.h"

namespace zan::wrappers {

using document::XMLOps::Marking;
using values::RuntimeError;

void BenchControls::AttachLogger(const Ref<site::Logger>& logger)
{
    const Ref<site::Logger> held = values::given(logger);
    attachTo(held, held->Link());
}

void BenchControls::attachTo(const Ref<site::Logger>& logger, const Ref<site::Link>& link)
{
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
    if (!isLive())
        return;
    // A failure ends the pass silently: the controls after the failing one keep what they show until the next event.
    values::attempt([this] { ScanControls(); });
}

void BenchControls::ScanControls()
{
    if (!isLive()) {
        scanPast();
        return;
    }
    const Ref<BenchControls> alive(this);
    const Marking off(Marking::Off); // what a scan stores is nobody's edit
    std::uint32_t changes = m_shownChanges.value();
    // An update may raise an event that changes the list: the count is read anew each time.
    for (std::int32_t place = 1; m_liveData && isLive() && place <= m_list.count(); ++place) {
        const Ref<iBenchControl> control = m_list.at(place);
        if (m_list.memoAt(place).holds(*control, changes))
            continue;
        scanControl(place, control);
        changes = m_shownChanges.value();
    }
}

void BenchControls::scanWaiting()
{
    const Ref<BenchControls> alive(this);
    const Marking off(Marking::Off);
    for (std::int32_t place = 1; m_liveData && isLive() && place <= m_list.count(); ++place) {
        const Ref<iBenchControl> control = m_list.at(place);
        values::attempt([&] {
            if (m_liveData->isWaiting(*control))
                m_liveData->update(*control, *this);
        });
    }
}

bool BenchControls::holdsAt(std::int32_t place, const Ref<iBenchControl>& control) const
{
    return m_liveData && place <= m_list.count() && m_list.at(place) == control;
}

/// A channel of the host may do anything when it is asked, and an update may raise an event that does: after each of
/// them the list is looked at again.
void BenchControls::scanControl(std::int32_t place, const Ref<iBenchControl>& control)
{
    // What the control is like. When it is as it was after the last update, this update may turn out to change
    // nothing, and what it reads of the documents is recorded. A control that changes at each scan costs no more.
    const ScanMemo before(*control, m_shownChanges);
    if (!holdsAt(place, control))
        return;
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
    // An update that has changed nothing need not be made again until something else does.
    ScanMemo after(*control, m_shownChanges);
    if (!holdsAt(place, control))
        return;
    if (mayRest && after.isUnchangedSince(before))
        after.settle();
    m_list.memoAt(place) = after;
}

void BenchControls::onNewENTData()
{
    const Ref<BenchControls> alive(this);
    m_missedRecords = !isLive();
    for (std::int32_t place = 1; m_liveData && isLive() && place <= m_list.count(); ++place) {
        const Ref<iBenchControl> control = m_list.at(place);
        // A graph that cannot be fed is passed over; the next one may be in order.
        values::attempt([&] { m_liveData->feedRecords(*control, *this); });
    }
}

void BenchControls::onStateChange(int state)
{
    const Ref<BenchControls> alive(this);
    if (!isLive()) {
        m_missedState = state;
        return;
    }
    const auto report = [this](const RuntimeError& error) {
        if (m_window)
            m_window->reportError(error); // no trap here: the error is the host's
    };
    const auto follow = [&] {
        const Marking off(Marking::Off);
        for (std::int32_t place = 1; m_liveData && isLive() && place <= m_list.count(); ++place) {
            const Ref<iBenchControl> control = m_list.at(place);
            m_liveData->followLink(*control, state);
        }
    };
    values::atBoundary(follow, report);
}

} // namespace zan::wrappers
