#pragma once

#include "site/Scheme.h"
#include "wrappers/ControlType.h"
#include "wrappers/iBenchControl.h"

namespace zan::ecan {
class Source;
}

namespace zan::wrappers {

class BenchControls;

/// A control and everything that says where it stands.
struct PlacedControl
{
    Ref<iBenchControl> control;
    std::int32_t place = 0; ///< in the list, from 1
    QString listKey;        ///< without regard to case; empty for none
    document::Node next;    ///< the node that follows its own in the tree; null for none
    std::int32_t rank = 0;  ///< stacking order of its live control
    bool visible = true;    ///< whether its live control is shown
};

/// What the collection of controls needs of the window that it belongs to.
class PanelWindow
{
public:
    virtual ~PanelWindow() = default;
    /// The types of control that the window can make.
    virtual ControlTypes controlTypes() const = 0;
    /// A wrapper with its live control for a type key; nothing for a type that is not known.
    virtual Ref<iBenchControl> createControl(const QString& type) = 0;
    /// Windows of the logger's scheme. Raises 91 while there is no logger.
    virtual Ref<site::SchemeWindows> schemeWindows() = 0;
    /// Takes a live control off the surface: the design-time template is hidden, any other element unloaded.
    virtual void discardControl(const Ref<binding::Object>& control) = 0;
    /// Takes that back for a control that is put back as it stood.
    virtual void restoreControl(const PlacedControl& placed) = 0;
    /// Where labels without a channel have restriction data from; null for a window without it.
    virtual ecan::Source* restrictions() { return nullptr; }
    /// Hands an error that reached an event boundary to the host.
    virtual void reportError(const values::RuntimeError& error) = 0;
};

/// The routines that turn channels and link state into what the controls show.
class LiveData
{
public:
    virtual ~LiveData() = default;
    /// Refreshes one control from its channel; nothing for a type without a live update.
    virtual void update(iBenchControl& control, BenchControls& controls) = 0;
    /// Whether an update of this control may be left out while nothing that the last one read has changed: nodes of
    /// documents (a ReadRecorder tells which), the channel and the live control. False when it depends on anything
    /// else, or must be made whether that has changed or not: such a control is updated at every scan.
    virtual bool mayRest(const iBenchControl&) { return false; }
    /// Whether a control waits for something that its updates alone bring along, without the logger's having new data.
    virtual bool isWaiting(const iBenchControl&) { return false; }
    /// Brings one control in line with a new state of the link.
    virtual void followLink(iBenchControl& control, int state) = 0;
    /// Feeds one control with the log buffers' new records.
    virtual void feedRecords(iBenchControl& control, BenchControls& controls) = 0;
};

} // namespace zan::wrappers
