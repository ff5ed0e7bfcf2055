#pragma once

#include "document/NodeImage.h"
#include "site/Channel.h"
#include "surface/host/LiveControl.h"
#include "window/LiveImage.h"
#include "window/PanelImage.h"
#include "wrappers/BenchControls.h"
#include "wrappers/ControlType.h"

#include <QString>

#include <optional>
#include <vector>

namespace zan::window {

using values::Ref;

/// What undoing needs of the panel.
class EditedPanel
{
public:
    virtual ~EditedPanel() = default;
    /// Empty when the panel's life has ended.
    virtual Ref<wrappers::BenchControls> editedControls() = 0;
    virtual BenchWindow& editedWindow() = 0;
};

/// A control whose node, place, size or settings a command has changed.
struct ControlChange
{
    Ref<wrappers::iBenchControl> control;
    document::NodeImage nodeBefore;
    document::NodeImage nodeAfter;
    wrappers::TwipsRectangle before{};
    wrappers::TwipsRectangle after{};
    bool hasSettings = false; ///< looks and binding belong to the step too
    LiveImage looksBefore;
    LiveImage looksAfter;

    bool isChange() const;
};

/// A control that a command has put into the list or taken from it.
struct PlaceChange
{
    wrappers::PlacedControl placed;
    bool isAdded = false;
};

/// Stacking ranks of a control before and after.
struct StackChange
{
    Ref<surface::LiveControl> control;
    std::int32_t before = 0;
    std::int32_t after = 0;
};

/// How many bindings a channel says that it has, before and after, and its units, which a count below 0 changes.
struct UseChange
{
    Ref<site::Channel> channel;
    std::int16_t before = 0;
    std::int16_t after = 0;
    QString unitsBefore;
    QString unitsAfter;
};

/// What a command has changed of the panel itself.
struct PanelChange
{
    PanelImage before;
    PanelImage after;
};

/// One user's command as it can be taken back and made again.
struct EditStep
{
    QString text; ///< what the command is called
    std::vector<ControlChange> controls;
    std::vector<PlaceChange> places;
    std::vector<StackChange> stacking;
    std::vector<UseChange> uses; ///< counts are not stored: no step is made of them alone
    std::optional<PanelChange> panel;

    /// Takes up the state after the command, and drops what has not changed or is no longer in the list. False when
    /// nothing is left.
    bool finish(BenchWindow& window, const wrappers::BenchControls& list);
    /// The window may be gone afterwards.
    void undo(BenchWindow& window, wrappers::BenchControls& list);
    void redo(BenchWindow& window, wrappers::BenchControls& list);
};

/// Place and size of a wrapper's live control; zeros without one.
wrappers::TwipsRectangle measuresOf(const wrappers::iBenchControl& control);

} // namespace zan::window
