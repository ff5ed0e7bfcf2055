// The collection at a moment of the past: the same updates over channels as they were.

#include "wrappers/BenchControls.h"

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "surface/host/Surface.h"
#include "values/Failure.h"
#include "wrappers/PastControl.h"

#include <QScopeGuard>

#include <algorithm>

namespace zan::wrappers {

namespace element = document::element;
using binding::AccessStatus;
using document::XMLOps::Marking;
using values::Name;

namespace {

surface::Surface* surfaceOf(const binding::Object& live)
{
    const auto* control = dynamic_cast<const surface::LiveControl*>(&live);
    return control ? control->surface() : nullptr;
}

} // namespace

void BenchControls::showPast(PastReading reading)
{
    const Ref<BenchControls> alive(this);
    if (!m_past)
        m_past = std::make_shared<PastView>();
    m_past->go(std::move(reading));
    scanPast();
}

void BenchControls::scanPast()
{
    const Ref<BenchControls> alive(this);
    const Marking off(Marking::Off);
    const std::shared_ptr<PastView> view = m_past;
    const std::uint32_t scan = ++m_pastScans;
    m_withoutRecord.clear();
    // A channel of the host may change the list, go live or go to another moment: what came last stands.
    for (std::int32_t place = 1; m_liveData && place <= m_list.count() && m_past == view && m_pastScans == scan;
         ++place)
        scanPastControl(m_list.at(place), view);
}

/// A control for which the update has asked for a value that is not stored, or whose update has failed, would go on
/// showing another moment's: it is hidden, unless its update says by itself that there is nothing.
void BenchControls::scanPastControl(const Ref<iBenchControl>& control, const std::shared_ptr<PastView>& view)
{
    const Ref<iBenchControl> held = control;
    const ControlType* type = m_window ? m_window->controlTypes().find(held->ControlType()) : nullptr;
    const Ref<binding::Object> live = held->Control();
    if (!type || !type->live.update || !live)
        return;
    const surface::Surface::WithoutClicks silent(surfaceOf(*live)); // a past state is nobody's click
    const bool coversIt = !type->live.tellsOfNoValue;
    keepLook(live, type->live);
    if (const auto look = m_writtenOver.constFind(live.get()); coversIt && look != m_writtenOver.constEnd())
        live->tryPut(element::Visible, Variant(look->visible)); // the last moment may have hidden it
    view->takeMissing();
    const Ref<PastControl> past = values::make<PastControl>(held, view);
    const bool isShown = values::attempt([&] { m_liveData->update(*past, *this); });
    const bool isMissing = view->takeMissing();
    if (m_past != view || !coversIt || (isShown && !isMissing))
        return;
    live->tryPut(element::Visible, Variant(false));
    m_withoutRecord.push_back(live);
}

/// What the control showed live, noted before the first update of the past writes to it.
void BenchControls::keepLook(const Ref<binding::Object>& live, const LiveRoutines& routines)
{
    if (m_writtenOver.contains(live.get()))
        return;
    WrittenOver look{live, {}, {}};
    const auto keep = [&](Name name) {
        Variant value;
        if (live->tryGet(name, value) == AccessStatus::Ok)
            look.values.emplace_back(name, value);
    };
    for (const QStringView name : routines.writes) {
        if (!name.isEmpty())
            keep(Name(name));
    }
    if (!routines.tellsOfNoValue) {
        keep(element::Visible);
        if (live->tryGet(element::Visible, look.visible) != AccessStatus::Ok)
            look.visible = Variant(true);
    }
    m_writtenOver.insert(live.get(), std::move(look));
}

/// Puts back what was written over and notes what stood there, so that a second call undoes the first.
void BenchControls::exchangeLooks()
{
    QHash<const binding::Object*, WrittenOver> looks;
    looks.swap(m_writtenOver); // a control that is written to may tell somebody
    for (WrittenOver& look : looks) {
        const surface::Surface::WithoutClicks silent(surfaceOf(*look.live));
        for (auto& [name, value] : look.values) {
            Variant shown;
            if (look.live->tryGet(name, shown) != AccessStatus::Ok)
                continue;
            look.live->tryPut(name, value);
            value = shown;
        }
    }
    looks.swap(m_writtenOver);
}

void BenchControls::showLive()
{
    if (!m_past)
        return;
    const Ref<BenchControls> alive(this);
    m_past.reset();
    ++m_pastScans;
    m_withoutRecord.clear();
    exchangeLooks();
    m_writtenOver.clear();
    m_list.clearMemos();
    // What was missed, in the order in which it matters: a scan has the last word on lights.
    if (const std::optional<int> state = std::exchange(m_missedState, std::nullopt))
        onStateChange(*state);
    if (std::exchange(m_missedRecords, false) && isLive())
        onNewENTData();
    if (isLive())
        values::attempt([this] { ScanControls(); });
}

} // namespace zan::wrappers
