#include "dialogs/SetupForm.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "values/Convert.h"
#include "wrappers/ValueText.h"

#include <cmath>

/// What the rows of a description mean: a field takes its value from where its row says, and gives it back there.
namespace zan::dialogs {

using document::Node;
using values::ErrorNumber;
using values::Variant;

namespace {

/// A value from a document counts by its leading number.
double numberOf(const Variant& value)
{
    return value.isText() ? values::val(value.text()) : values::toDouble(value);
}

/// Characters of a stored text that a message quotes.
constexpr qsizetype MostQuoted = 80;

double realNumber(const QString& text)
{
    const double number = values::val(text);
    if (!std::isfinite(number))
        values::raise(ErrorNumber::Overflow);
    return number;
}

QString textOf(const Variant& value)
{
    return value.isText() ? value.text() : wrappers::storedText(value);
}

} // namespace

void SetupForm::run(std::span<const Step> steps)
{
    for (const Step& step : steps) {
        statement([&] {
            switch (step.kind) {
            case Step::Kind::Load:
                return loadField(field(step.field));
            case Step::Kind::Put:
                return putField(field(step.field));
            case Step::Kind::Write:
                return writeField(field(step.field));
            case Step::Kind::Call:
                return step.routine(*this);
            }
        });
    }
}

Ref<binding::Object> SetupForm::live() const
{
    return values::given(values::given(m_control)->Control());
}

Node SetupForm::action() const
{
    return node().child(document::element::Action);
}

Node SetupForm::nodeOf(const Field& field) const
{
    return field.row().at == At::Action ? action() : node();
}

/// Whose property the row names.
Ref<binding::Object> SetupForm::objectOf(const Field& field) const
{
    switch (field.row().at) {
    case At::Wrapper:
        return values::given(m_control);
    case At::Channel:
        return values::given(m_shownChannel);
    case At::Window:
        return values::given(m_window);
    default:
        return live();
    }
}

void SetupForm::loadField(Field& field)
{
    const FieldRow& row = field.row();
    const bool isAttribute = (row.at == At::Node || row.at == At::Action) && row.reads == Source::Attribute;
    if (!isAttribute)
        return take(field, objectOf(field)->get(*row.value));
    const QString stored = document::XMLOps::GetAttribute(nodeOf(field), *row.value, row.fallback.toString());
    try {
        take(field, stored);
    } catch (const values::RuntimeError& error) {
        // Whoever cannot open the form is told which element of which control stands in the way.
        throw values::RuntimeError(
            error.number(),
            QStringLiteral("\"%1\" cannot show %2 \"%3\" of the control %4: %5")
                .arg(title(), row.value->text(), stored.left(MostQuoted), m_control->Key(), error.description()));
    }
}

void SetupForm::take(Field& field, const Variant& value)
{
    switch (field.kind()) {
    case FieldKind::CheckBox:
        if (field.row().as == As::Flag)
            return setValue(field, numberOf(value) != 0 ? 1 : 0);
        return setValue(field, values::toInteger(Variant(numberOf(value))));
    case FieldKind::Swatch:
        return setBackColour(field, values::Colour{values::toLong(Variant(numberOf(value)))});
    case FieldKind::DropDown:
    case FieldKind::ListBox:
    case FieldKind::ChannelList:
    case FieldKind::ChannelDropDown:
        return takeInList(field, value);
    default:
        return setText(field, textOf(value));
    }
}

void SetupForm::takeInList(Field& field, const Variant& value)
{
    if (field.row().as == As::Index)
        select(field, values::toLong(Variant(numberOf(value))));
    else if (field.row().as == As::RowKey)
        selectKey(field, textOf(value));
    else
        SelectListItem(field, textOf(value), 0);
}

Variant SetupForm::valueOf(const Field& field) const
{
    switch (field.row().as) {
    case As::Text:
    case As::Entry:
        return field.text();
    case As::Long:
        return values::toLong(Variant(values::val(field.text())));
    case As::Short:
        return values::toInteger(Variant(values::val(field.text())));
    case As::Single:
        return values::toSingle(Variant(values::val(field.text())));
    case As::Double:
        return realNumber(field.text());
    case As::Flag:
        return field.isChecked();
    case As::Box:
        return std::int32_t(field.value());
    case As::OneOrZero:
        return std::int32_t(field.isChecked() ? 1 : 0);
    case As::Colour:
        return field.backColour().value_or(values::Colour{}).code;
    case As::Index:
        return std::int32_t(field.listIndex());
    case As::RowKey:
        if (!field.selectedRow())
            values::raise(ErrorNumber::ObjectNotSet);
        return field.selectedRow()->key;
    }
    return {};
}

void SetupForm::putField(Field& field)
{
    objectOf(field)->put(*field.row().value, valueOf(field));
}

void SetupForm::writeField(Field& field)
{
    const FieldRow& row = field.row();
    if (row.at != At::Node && row.at != At::Action)
        return putField(field);
    const Variant value = row.stores == Source::Property ? objectOf(field)->get(*row.value) : valueOf(field);
    document::XMLOps::SetAttribute(nodeOf(field), *row.value, wrappers::storedText(value), row.force);
}

} // namespace zan::dialogs
