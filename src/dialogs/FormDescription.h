#pragma once

#include "values/Name.h"

#include <QStringView>

#include <cstdint>
#include <memory>
#include <span>

namespace zan::dialogs {

class Field;
class SetupForm;

// A setup form is data: a row for each of its fields, and the steps of filling it and of applying it in their order.
// One engine (SetupForm) interprets them and one dialog (FormDialog) shows them; what is odd about a form are a few
// named routines beside its rows.

enum class FieldKind : std::uint8_t {
    Label,         ///< a text that stands for itself
    Caption,       ///< the label before the field that follows, as a field of its own
    Text,          ///< one line
    MultilineText, ///< several
    Button,
    CheckBox, ///< value 0, 1 or 2 (grey)
    Option,   ///< one of its group is chosen: the options of one frame, or of one tab outside of its frames
    DropDown, ///< a list that unfolds; its entries only
    ComboBox, ///< the same, where anything may be typed
    ListBox,
    ChannelList,     ///< every channel of the scheme in two columns
    ChannelDropDown, ///< the same in a list that unfolds
    Frame,
    Swatch, ///< a colour; a double click asks for another one
    Picture,
    Filter, ///< narrows the list that follows; what it hides stays chosen
};

/// Whose value a field stands for.
enum class At : std::uint8_t {
    Nowhere,
    Node,    ///< a child of the control's node
    Action,  ///< a child of its ACTION
    Wrapper, ///< a member of the control's wrapper
    Channel, ///< a member of the channel that is shown
    Window,  ///< a property of the panel
};

/// How a field's content and the value it stands for become each other.
enum class As : std::uint8_t {
    Text,
    Long,   ///< a number's text; whole, 32 bits
    Short,  ///< the same, 16 bits
    Single, ///< a number's text; a 32-bit float
    Double,
    Flag,      ///< -1 or 0 for checked or not; checked for anything but 0
    Box,       ///< 0, 1 or 2 as the check box has it
    OneOrZero, ///< filled like Box, and stored as 1 for checked and 0 for anything else
    Colour,    ///< a swatch's
    Entry,     ///< the text of the entry that is chosen
    Index,     ///< its number, from 0
    RowKey,    ///< the bind string of the channel's row
};

/// Where a value is taken from.
enum class Source : std::uint8_t {
    Attribute, ///< the element in the document
    Property, ///< the property of the live control; for storing it is what the control has made of the field's value
    Field,
};

using Routine = void (*)(SetupForm& form);
using Handler = void (*)(SetupForm& form, Field& field);

struct FieldRow
{
    QStringView name = {};
    FieldKind kind = FieldKind::Label;
    QStringView caption = {}; ///< of the thing itself, or of the label before a text, a list or a swatch
    QStringView toolTip = {};
    QStringView spoken = {}; ///< what a screen reader calls it where the caption does not say it
    int tab = 0;             ///< from 0; BelowTabs for what stands below them
    QStringView frame = {};  ///< the frame that it stands in
    // How it stands there; rows follow each other downwards.
    int column = 0;      ///< of its tab
    bool beside = false; ///< on the line of the row before
    int spot = 0;        ///< frames of one number lie on one spot: the visible one in front is what one sees
    int maxLength = 0;   ///< characters that can be typed; 0 for any number
    bool digitsOnly = false;
    bool wraps = false; ///< of several lines: they break at the edge, instead of scroll bars on both sides
    // What it is before anything is loaded.
    QStringView text = {};
    bool enabled = true;
    bool visible = true;
    // What it stands for.
    At at = At::Nowhere;
    const values::Name* value = nullptr; ///< the element, and the property of the live control where it has one
    As as = As::Text;
    QStringView fallback = {}; ///< what a missing element reads as
    bool force = false;        ///< an empty text or 0 is stored too
    Source reads = Source::Attribute;
    Source stores = Source::Field;
    // What happens.
    Handler click = nullptr; ///< also when a list's entry is chosen or a box or an option changes, by whomever
    Handler doubleClick = nullptr;
    Handler change = nullptr; ///< of a text, by whomever
};

/// The tab number of what stands below the tabs.
inline constexpr int BelowTabs = -1;

/// One step of filling or applying a form.
struct Step
{
    enum class Kind : std::uint8_t {
        Load,  ///< the field takes its value, as its row says
        Put,   ///< the field's value goes to the live control (of the panel's own form: to the panel)
        Write, ///< the field's value is stored in the document
        Call,
    };
    Kind kind = Kind::Call;
    QStringView field = {};
    Routine routine = nullptr;
};

constexpr Step load(QStringView field)
{
    return {Step::Kind::Load, field, nullptr};
}
constexpr Step put(QStringView field)
{
    return {Step::Kind::Put, field, nullptr};
}
constexpr Step write(QStringView field)
{
    return {Step::Kind::Write, field, nullptr};
}
constexpr Step call(Routine routine)
{
    return {Step::Kind::Call, {}, routine};
}

/// What a form remembers beyond what all of them do.
class FormState
{
public:
    virtual ~FormState() = default;
};

struct FormDescription
{
    QStringView name = {};
    QStringView title = {};
    int width = 0; ///< client area in twips
    int height = 0;
    bool isCentred = false;                 ///< on the screen; else where the system likes
    std::span<const QStringView> tabs = {}; ///< none: the fields stand on the form itself
    std::span<const FieldRow> fields = {};
    int buttonWidth = 1215;             ///< of the buttons below the tabs, in twips
    QStringView escape = {};            ///< the button of the Esc key. Enter presses nothing on any form
    std::span<const Step> begin = {};   ///< when the form is made
    std::span<const Step> fill = {};    ///< LoadControl
    bool usesWindows = true;            ///< it offers the channels of the scheme
    bool skipsFailures = false;         ///< while it is filled a step that fails is passed over
    std::span<const Step> apply = {};   ///< ApplySettings
    std::span<const Step> applied = {}; ///< what follows it and is no edit of the user's
    Routine showExample = nullptr;
    std::unique_ptr<FormState> (*makeState)() = nullptr;
};

} // namespace zan::dialogs
