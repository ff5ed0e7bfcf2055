#include "window/EditSteps.h"

#include "surface/host/Surface.h"

#include "values/Failure.h"

#include <algorithm>
#include <limits>

namespace zan::window {

using document::NodeImage;
using surface::LiveControl;
using wrappers::BenchControls;
using wrappers::iBenchControl;
using wrappers::TwipsRectangle;

namespace {

Ref<LiveControl> liveOf(const iBenchControl& control)
{
    return Ref<LiveControl>(dynamic_cast<LiveControl*>(control.Control().get()));
}

bool isIn(const BenchControls& list, const iBenchControl& control)
{
    return list.placeOfControl(control) != 0;
}

void takeBack(const ControlChange& change, const NodeImage& from, const NodeImage& to,
              const TwipsRectangle& measures, const LiveImage& looks, const LiveImage& looksFrom)
{
    if (change.hasSettings)
        looks.apply(*change.control, looksFrom);
    const TwipsRectangle now = measuresOf(*change.control);
    const Ref<LiveControl> live = liveOf(*change.control);
    if (live && now != measures)
        live->move(measures.left, measures.top, measures.width, measures.height);
    from.applyChange(change.control->XMLNode(), to);
}

void takeOut(BenchControls& list, PlaceChange& change)
{
    const std::int32_t place = list.placeOfControl(*change.placed.control);
    if (place == 0)
        return; // a script has removed it meanwhile
    change.placed = list.placedAt(place);
    list.Remove(binding::Variant(place));
}

/// A list key that a script has given away meanwhile is not worth a lost control: it comes back without one.
void putBack(BenchControls& list, PlaceChange& change)
{
    try {
        list.putBack(change.placed);
    } catch (const values::RuntimeError& error) {
        if (!error.is(values::ErrorNumber::DuplicateKey))
            throw;
        change.placed.listKey.clear();
        list.putBack(change.placed);
    }
}

void restack(const StackChange& change, std::int32_t rank)
{
    if (surface::Surface* surface = change.control->surface())
        surface->restack(*change.control, rank);
}

/// The count goes on from what it is by now: other controls may have come to the channel or left it meanwhile. A channel
/// that refuses keeps what it has.
void recount(const UseChange& change, int by, const QString& units, const QString& unitsFrom)
{
    values::attempt([&] {
        const int count = int(change.channel->UseCount()) + by;
        change.channel->setUseCount(std::int16_t(std::clamp<int>(count, std::numeric_limits<std::int16_t>::min(),
                                                                 std::numeric_limits<std::int16_t>::max())));
        if (units != unitsFrom && change.channel->Units() == unitsFrom)
            change.channel->setUnits(units);
    });
}

} // namespace

TwipsRectangle measuresOf(const iBenchControl& control)
{
    const Ref<LiveControl> live = liveOf(control);
    return live ? TwipsRectangle{live->left(), live->top(), live->width(), live->height()} : TwipsRectangle{};
}

bool ControlChange::isChange() const
{
    return before != after || nodeBefore != nodeAfter || !(looksBefore == looksAfter);
}

bool EditStep::finish(BenchWindow& window, const BenchControls& list)
{
    if (panel) {
        panel->after = PanelImage(window);
        if (!panel->after.isOfSameWindow(panel->before) || panel->after == panel->before)
            panel.reset();
    }
    // A script may have removed a control while it was being dragged.
    std::erase_if(controls, [&](const ControlChange& change) { return !isIn(list, *change.control); });
    for (ControlChange& change : controls) {
        change.after = measuresOf(*change.control);
        change.nodeAfter = NodeImage(change.control->XMLNode());
        if (change.hasSettings)
            change.looksAfter = LiveImage(*change.control);
    }
    for (StackChange& change : stacking)
        change.after = change.control->rank();
    std::erase_if(uses, [](UseChange& change) {
        return !values::attempt([&change] {
            change.after = change.channel->UseCount();
            change.unitsAfter = change.channel->Units();
        });
    });
    std::erase_if(controls, [](const ControlChange& change) { return !change.isChange(); });
    std::erase_if(stacking, [](const StackChange& change) { return change.before == change.after; });
    const bool changesUnits = std::any_of(
        uses.begin(), uses.end(), [](const UseChange& change) { return change.unitsBefore != change.unitsAfter; });
    return !controls.empty() || !places.empty() || !stacking.empty() || panel || changesUnits;
}

void EditStep::undo(BenchWindow& window, BenchControls& list)
{
    // Before the controls: those that follow the panel take its looks on, whatever they had of their own.
    if (panel)
        panel->before.apply(window, panel->after);
    for (auto change = places.rbegin(); change != places.rend(); ++change) {
        if (change->isAdded)
            takeOut(list, *change);
        else
            putBack(list, *change);
    }
    for (const ControlChange& change : controls) {
        if (isIn(list, *change.control))
            takeBack(change, change.nodeAfter, change.nodeBefore, change.before, change.looksBefore,
                     change.looksAfter);
    }
    for (const StackChange& change : stacking)
        restack(change, change.before);
    for (const UseChange& change : uses)
        recount(change, change.before - change.after, change.unitsBefore, change.unitsAfter);
}

void EditStep::redo(BenchWindow& window, BenchControls& list)
{
    if (panel)
        panel->after.apply(window, panel->before);
    for (PlaceChange& change : places) {
        if (change.isAdded)
            putBack(list, change);
        else
            takeOut(list, change);
    }
    for (const ControlChange& change : controls) {
        if (isIn(list, *change.control))
            takeBack(change, change.nodeBefore, change.nodeAfter, change.after, change.looksAfter,
                     change.looksBefore);
    }
    for (const StackChange& change : stacking)
        restack(change, change.after);
    for (const UseChange& change : uses)
        recount(change, change.after - change.before, change.unitsAfter, change.unitsBefore);
}

} // namespace zan::window
