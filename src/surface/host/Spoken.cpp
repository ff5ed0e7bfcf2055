#include "surface/host/Spoken.h"

#include "surface/host/Surface.h"

#include <QCoreApplication>

#include <array>

namespace zan::surface {

namespace {

/// What a control shows is, to a listener, one of these.
enum class Shows : std::uint8_t {
    Name,       ///< a caption
    NameOrData, ///< a caption, or data where the control stands for something
    Data,
    Itself ///< its widget has a name of its own
};

/// Everything that is particular to a role.
struct RoleRow
{
    AccessibleRole role;
    QAccessible::Role toolkit;
    const char* word; ///< names a control that has no other name, with its number
    Shows shows;
    bool isMeasured;  ///< its data have units
    bool isSaidWhole; ///< its data are part of its name: tools read no other text of what takes no input
};

constexpr std::array<RoleRow, 11> rows{{
    {AccessibleRole::Text, QAccessible::StaticText, "Text", Shows::NameOrData, true, true},
    {AccessibleRole::EditText, QAccessible::EditableText, "Text box", Shows::Data, true, false},
    {AccessibleRole::Button, QAccessible::PushButton, "Button", Shows::Name, false, false},
    {AccessibleRole::CheckBox, QAccessible::CheckBox, "Check box", Shows::Name, false, false},
    {AccessibleRole::RadioButton, QAccessible::RadioButton, "Option", Shows::Name, false, false},
    {AccessibleRole::Graphic, QAccessible::Graphic, "Picture", Shows::Name, false, false},
    {AccessibleRole::Shape, QAccessible::Graphic, "Shape", Shows::Name, false, false},
    {AccessibleRole::Progress, QAccessible::ProgressBar, "Progress bar", Shows::Data, true, false},
    {AccessibleRole::Indicator, QAccessible::Indicator, "Status light", Shows::Data, false, true},
    {AccessibleRole::Level, QAccessible::ProgressBar, "Value bar", Shows::Data, true, false},
    {AccessibleRole::Chart, QAccessible::Chart, "Chart", Shows::Itself, false, false},
}};

constexpr bool isInOrder()
{
    for (std::size_t place = 0; place < rows.size(); ++place) {
        if (std::size_t(rows[place].role) != place)
            return false;
    }
    return true;
}
static_assert(isInOrder());

const RoleRow& rowOf(AccessibleRole role)
{
    return rows[std::size_t(role)];
}

/// The owner's channels are code of the host: what they throw costs their part of the answer and nothing else.
Meaning meaningOf(const Surface* surface, const LiveControl* control)
{
    Meaning meaning;
    if (SurfaceEvents* events = surface ? surface->events() : nullptr)
        values::attempt([&] { meaning = events->meaningOf(control); });
    return meaning;
}

QString firstOf(std::initializer_list<QString> texts)
{
    for (const QString& text : texts) {
        if (!text.trimmed().isEmpty())
            return text.simplified();
    }
    return {};
}

QString withUnits(const QString& value, const QString& units, bool isSentence)
{
    if (value.isEmpty() || units.isEmpty() || value.endsWith(units))
        return value;
    return isSentence ? QCoreApplication::translate("Accessible", "%1, in %2").arg(value, units)
                      : value + QLatin1Char(' ') + units;
}

QString withData(const QString& name, const QString& data)
{
    if (name.isEmpty() || data.startsWith(name))
        return data.isEmpty() ? name : data;
    return data.isEmpty() ? name : QCoreApplication::translate("Accessible", "%1: %2").arg(name, data);
}

} // namespace

Spoken spokenOf(LiveControl& control)
{
    const Ref<LiveControl> alive(&control);
    const RoleRow& row = rowOf(control.accessibleRole());
    const Meaning meaning = meaningOf(control.surface(), &control);
    const QString shown = control.accessibleText();
    const QString& tip = control.toolTipText();

    Spoken spoken;
    spoken.acts = meaning.acts;
    spoken.description = tip;
    switch (row.shows) {
    case Shows::Name:
        spoken.name = firstOf({shown, meaning.subject, tip});
        break;
    case Shows::NameOrData:
        spoken.name = firstOf({meaning.subject, shown, tip});
        break;
    case Shows::Data:
    case Shows::Itself:
        spoken.name = firstOf({meaning.subject, tip});
        break;
    }
    if (row.shows != Shows::Name)
        spoken.value =
            row.isMeasured ? withUnits(shown, meaning.units, control.accessibleRange().has_value()) : shown;
    if (spoken.name.isEmpty())
        spoken.name = QCoreApplication::translate("Accessible", "%1 %2")
                          .arg(QCoreApplication::translate("Accessible", row.word))
                          .arg(control.index());
    if (row.isSaidWhole && spoken.name != shown.simplified())
        spoken.name = withData(spoken.name, spoken.value);
    return spoken;
}

QString spokenNameOf(const Surface& surface)
{
    return meaningOf(&surface, nullptr).subject;
}

QAccessible::Role toolkitRole(AccessibleRole role)
{
    return rowOf(role).toolkit;
}

bool isNamedByOwner(const LiveControl& control)
{
    const Shows shows = rowOf(control.accessibleRole()).shows;
    return shows != Shows::Itself && (shows != Shows::Name || control.accessibleText().trimmed().isEmpty());
}

} // namespace zan::surface
