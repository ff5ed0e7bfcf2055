#pragma once

#include "site/Logger.h"
#include "wrappers/KeyedList.h"
#include "wrappers/PanelWindow.h"
#include "wrappers/PastView.h"

#include <QMetaObject>
#include <QObject>

namespace zan::wrappers {

/// The ordered list of one window's placed controls. It builds the list from the window node, keeps keys and
/// indices, ties each control to its channel, owns the states that touch all controls at once, and walks the
/// controls when the logger has new data.
///
/// The window and the live data are uncounted: whoever sets them takes them away before they end.
class BenchControls : public binding::Object
{
public:
    BenchControls();
    ~BenchControls() override;

    document::Node XMLNode() const { return m_node; }
    /// Clears the list (taking the controls' nodes out of the old tree) and builds it anew from the node. Raises 6
    /// past 32,767 controls; those made by then stay.
    void setXMLNode(const document::Node& node);
    /// Number of controls; never more than 32,767.
    std::int16_t Count() const;
    /// Control by place from 1, or by the KEY of its node (case ignored, first match). Raises 9 when there is none.
    Ref<iBenchControl> Control(const Variant& index) const;
    /// Makes a new control of a type; nothing for an unknown type. Raises 457 for a key that exists.
    Ref<iBenchControl> Add(const QString& controlType, std::optional<QString> key = {});
    /// Pastes a control from its CONTROL element's text; nothing when the text is none or of an unknown type.
    Ref<iBenchControl> AddFromXML(const QString& xml);
    /// Removes by place (raises 9) or by list key (raises 5).
    void Remove(const Variant& index);
    void Clear();

    /// Place of a wrapper in the list, from 1; 0 when it is not there.
    std::int32_t placeOfControl(const iBenchControl& control) const;
    /// How a control stands that is in the list.
    PlacedControl placedAt(std::int32_t place) const;
    /// Undoes a removal: the control stands again where it stood, with its node, its live control and its channel.
    /// Nothing when it is in the list already. Raises 457 when its list key has been given away meanwhile.
    void putBack(const PlacedControl& placed);

    // To the rest of the system only -----------------------------------------------------------------------

    void setWindow(PanelWindow* window) { m_window = window; }
    void setParentHandle(std::int32_t handle) { m_parentHandle = handle; }
    void setLiveData(LiveData* liveData);
    /// Subscribes to the logger and to its link. Raises 91 for no logger.
    void AttachLogger(const Ref<site::Logger>& logger);
    /// The same for who has asked the logger for its link already; the link may be Nothing.
    void attachTo(const Ref<site::Logger>& logger, const Ref<site::Link>& link);
    const Ref<site::Logger>& logger() const { return m_logger; }
    bool LockPositions() const { return m_lockPositions; }
    void setLockPositions(bool lock);
    bool HideProtectedControls() const { return m_hideProtectedControls; }
    void setHideProtectedControls(bool hide);
    void updateAllNodes();
    /// Refreshes every control once, in order. A failure of one ends the pass and reaches the caller. Controls for
    /// which it is known that nothing would change are passed over.
    void ScanControls();
    /// Refreshes the controls that wait for something else than the logger: it may have come. Raises nothing.
    void scanWaiting();
    /// Where restriction data comes from; null without a window that has any.
    ecan::Source* restrictions() const { return m_window ? m_window->restrictions() : nullptr; }
    /// Whether the logger has delivered data since the window was loaded; outlives a disconnect.
    bool HaveData() const { return m_haveData; }

    // The past ------------------------------------------------------------------------------------------------

    /// Shows a moment of the past, from the first time on until showLive(): updates get the channels as they were, what
    /// the logger announces touches no control, and nothing of what is shown gets into the document. An update that
    /// fails takes only its own control's value.
    void showPast(PastReading reading);
    /// Back to what the controls showed before, and from there to what is now. Raises nothing.
    void showLive();
    bool isLive() const noexcept { return !m_past; }
    /// The live controls that have nothing to show of the moment; they are hidden for as long.
    const std::vector<Ref<binding::Object>>& withoutRecord() const noexcept { return m_withoutRecord; }

    const binding::MemberTable& members() const override;
    std::unique_ptr<binding::Enumerator> enumerate() override;

private:
    /// The window whose channels were asked for last: the controls of a panel show channels of few windows.
    struct BoundWindow
    {
        std::optional<QString> key;
        Ref<site::SchemeWindow> window;
    };

    /// What an update of the past has written over in a live control, and what is to be there again.
    struct WrittenOver
    {
        Ref<binding::Object> live; ///< held, so that no other control takes its address
        std::vector<std::pair<values::Name, Variant>> values;
        Variant visible; ///< whether it was shown, live
    };

    void onNewBenchData();
    void onNewENTData();
    void onStateChange(int state);
    void attach(iBenchControl& control);
    Ref<site::Channel> boundChannel(const QString& bindString);
    void scanControl(std::int32_t place, const Ref<iBenchControl>& control);
    void scanPast();
    void scanPastControl(const Ref<iBenchControl>& control, const std::shared_ptr<PastView>& view);
    void keepLook(const Ref<binding::Object>& live, const LiveRoutines& routines);
    void exchangeLooks();
    /// Whether the control is still at this place of the list, and the list still live.
    bool holdsAt(std::int32_t place, const Ref<iBenchControl>& control) const;
    void loadControl(const document::Node& node);
    void removeAt(std::int32_t place);
    /// Runs a step of placing a control; one that cannot be placed is given up before the error goes on.
    template <class Step>
    void orGiveUp(iBenchControl& control, Step&& step);
    /// Takes a control into the list. Raises 6 for a full list, 457 for a key that exists.
    void enlist(const Ref<iBenchControl>& control, const QString& key);
    void giveUp(iBenchControl& control);
    static void releaseChannel(const iBenchControl& control);
    /// Takes its live control off the surface.
    void discard(iBenchControl& control);
    void takeOut(std::int32_t place);
    void renumber();
    std::int32_t placeOf(const Variant& index) const;
    PanelWindow& window() const;

    KeyedList m_list;
    document::ChangeCounter m_shownChanges; // of the nodes that updates have read
    PanelWindow* m_window = nullptr;
    LiveData* m_liveData = nullptr;
    document::Node m_node;
    std::optional<BoundWindow> m_boundWindow; // only while a window is loaded: keys may change afterwards
    Ref<site::Logger> m_logger;
    Ref<site::Link> m_link;
    std::uint32_t m_loads = 0; // how often a window has been loaded
    QObject m_context;         // owner of the connections: none outlives the collection
    std::int32_t m_parentHandle = 0;
    bool m_lockPositions = true;
    bool m_hideProtectedControls = false;
    bool m_haveData = false;

    std::shared_ptr<PastView> m_past; // null: live
    QHash<const binding::Object*, WrittenOver> m_writtenOver;
    std::vector<Ref<binding::Object>> m_withoutRecord;
    std::uint32_t m_pastScans = 0;
    std::optional<int> m_missedState; // of the link, while the past was shown
    bool m_missedRecords = false;
};

} // namespace zan::wrappers
