#pragma once

#include "surface/host/ProvidedControls.h"
#include "wrappers/iBenchControl.h"

#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace zan::dialogs {
struct FormDescription;
}

namespace zan::wrappers {

class BenchControl;
class BenchControls;

/// What a new live control takes from the window at its creation.
enum Styling : unsigned {
    NoStyling = 0,
    CopiesFont = 1,
    CopiesBackColor = 2,
    CopiesForeColor = 4,
    ClearsCaption = 8,
    ClearsText = 16,
    ShowsBorderWhenUnlocked = 32,
    OwnSettings = 64, ///< UseWindowSettings is false from the beginning
    TakesLogger = 128,
};

/// A rectangle in twips.
struct TwipsRectangle
{
    float left;
    float top;
    float width;
    float height;
    bool operator==(const TwipsRectangle&) const = default;
};

/// The BorderStyle that shows whether positions are locked: edges make a control easy to grab.
struct LockBorder
{
    std::int16_t locked;
    std::int16_t unlocked;
};

/// What a click on a control does, besides what the control does itself.
enum class OnClick : std::uint8_t {
    Nothing,
    ClearsSelection,
    RunsAction,
    HoldsScanAndRunsAction, ///< the next scan must not undo what the click shows
};

enum class OnDoubleClick : std::uint8_t { Nothing, SetsChannel };

/// What a left press does while the layout is edited.
enum class OnPress : std::uint8_t { Nothing, SystemMove, HostDrag };

/// What dropping a control on another one does while the layout is edited.
enum class OnDrop : std::uint8_t { Nothing, MovesIt, PassesOnToSurface };

/// When an update is due.
enum class UpdateDue : std::uint8_t {
    AfterAChange, ///< of its channel, its live control or a node that it reads
    AtEachScan,   ///< it depends on something else, or writes whether anything has changed or not
};

/// What data does to a control; a routine that is not there has nothing to do for the type.
struct LiveRoutines
{
    void (*update)(iBenchControl& control, BenchControls& controls) = nullptr;
    UpdateDue due = UpdateDue::AfterAChange;
    bool (*isWaiting)(const iBenchControl& control) = nullptr; ///< an update is due at each scan for as long
    void (*followLink)(iBenchControl& control, int state) = nullptr;
    void (*feedRecords)(iBenchControl& control, BenchControls& controls) = nullptr;
    /// Properties of the live control that the update writes: they are put back after a look at the past.
    std::array<QStringView, 4> writes = {};
    /// A channel without a value is told apart by what the update writes. All others are covered in the past then.
    bool tellsOfNoValue = false;
};

/// Everything that is particular to one type of control, in one row: a new type is a class and such a row.
struct ControlType
{
    QStringView key;                           ///< in documents, compared exactly
    QStringView menuCaption;                   ///< in the new-control menu; empty: not offered there
    QStringView arrayName;                     ///< the surface's array that holds the elements
    TwipsRectangle design;                     ///< where the array's template lies
    surface::ProvidedCreator create = nullptr; ///< null: a library of its own may provide it
    Ref<BenchControl> (*wrap)() = nullptr;     ///< its wrapper; null: a BenchControl

    bool isSingle = false; ///< the template is the only one there ever is

    unsigned styling = NoStyling;
    bool restylesTemplate = false;         ///< design values that a host has kept reach its template
    std::optional<LockBorder> border = {}; ///< for those whose border tells of the lock

    OnClick click = OnClick::Nothing;
    OnDoubleClick doubleClick = OnDoubleClick::Nothing;
    bool wearsLinkState = false; ///< its connect buttons are captioned by the state of the link

    OnPress press = OnPress::Nothing;
    bool selectsOnHover = false; ///< the pointer over it makes it the current control while the layout is edited
    bool selectsOnFocus = false;
    OnDrop drop = OnDrop::Nothing;

    LiveRoutines live = {};

    const dialogs::FormDescription* setup = nullptr; ///< the form that sets it up; null: it has none

    bool runsAction() const { return click == OnClick::RunsAction || click == OnClick::HoldsScanAndRunsAction; }
    /// What makes its live control; null while there is no such control, whose key is an unknown one then.
    surface::ProvidedCreator creator() const { return create ? create : surface::providedControl(key); }
};

/// The types that a panel knows. The rows belong to whoever made them and outlive every panel.
class ControlTypes
{
public:
    constexpr ControlTypes(std::span<const ControlType> rows) noexcept
        : m_rows(rows)
    {}
    constexpr auto begin() const noexcept { return m_rows.begin(); }
    constexpr auto end() const noexcept { return m_rows.end(); }
    constexpr std::size_t size() const noexcept { return m_rows.size(); }
    /// The row of a type key, or null.
    const ControlType* find(QStringView key) const noexcept;
    /// The row whose elements are in this array of the surface, or null. Names of arrays ignore case.
    const ControlType* ofArray(QStringView name) const noexcept;

private:
    std::span<const ControlType> m_rows;
};

} // namespace zan::wrappers
