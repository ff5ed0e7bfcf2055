#include "dialogs/FormSteps.h"

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "values/Convert.h"

#include <QScopeGuard>

#include <cmath>

namespace zan::dialogs {

using surface::FontChoice;
using surface::FontObject;
using surface::HostForms;
using values::Colour;

// Buttons ------------------------------------------------------------------------------------------------------

void pressOk(SetupForm& form, Field&)
{
    form.ApplySettings();
    form.unload();
}

void pressCancel(SetupForm& form, Field&)
{
    form.unload();
}

void pressApply(SetupForm& form, Field&)
{
    form.ApplySettings();
}

// Pickers ------------------------------------------------------------------------------------------------------

namespace {

/// Only what the picker has changed is written: a font's name brings a character set along, and being bold a weight.
void applyChoice(FontObject& font, const FontChoice& before, const FontChoice& choice)
{
    if (choice.name != before.name)
        font.setName(choice.name);
    if (choice.bold != before.bold)
        font.setBold(choice.bold);
    if (choice.italic != before.italic)
        font.setItalic(choice.italic);
    if (choice.size != before.size)
        font.setSize(values::Currency{std::int64_t(std::llround(choice.size * 10000.0))});
    if (choice.underline != before.underline)
        font.setUnderline(choice.underline);
}

/// COMPAT: the title speaks of the text whatever the colour is for.
std::optional<Colour> askColour(SetupForm& form, Colour colour)
{
    HostForms* forms = form.site().forms();
    return forms ? forms->pickColour(form.owner(), QStringLiteral("Select text colour"), colour) : std::nullopt;
}

} // namespace

void pickFont(SetupForm& form, Field&)
{
    values::attempt([&form] {
        const Ref<FontObject> font = values::given(form.editFont);
        HostForms* forms = form.site().forms();
        const FontChoice before{font->name(), font->points(), font->bold(), font->italic(), font->underline()};
        const std::optional<FontChoice> choice =
            forms ? forms->pickFont(form.owner(), QStringLiteral("Select font"), before) : std::nullopt;
        if (!choice || !form.isOpen())
            return;
        applyChoice(*font, before, *choice);
        form.showExample();
    });
}

void pickForeColour(SetupForm& form, Field&)
{
    values::attempt([&form] {
        const std::optional<Colour> colour = askColour(form, form.foreColour);
        if (!colour || !form.isOpen())
            return;
        form.foreColour = *colour;
        form.showExample();
    });
}

void pickBackColour(SetupForm& form, Field&)
{
    values::attempt([&form] {
        const std::optional<Colour> colour = askColour(form, form.backColour);
        if (!colour || !form.isOpen())
            return;
        form.backColour = *colour;
        form.showExample();
    });
}

void pickSwatchColour(SetupForm& form, Field& swatch)
{
    values::attempt([&] {
        const std::optional<Colour> colour = askColour(form, swatch.backColour().value_or(Colour{}));
        if (colour && form.isOpen())
            form.setBackColour(swatch, *colour);
    });
}

// Font ---------------------------------------------------------------------------------------------------------

void takeFont(SetupForm& form)
{
    const Ref<FontObject> font(dynamic_cast<FontObject*>(values::given(form.control())->Font().get()));
    form.savedFont = values::given(font);
    form.editFont = surface::copyFont(*font);
}

void applyFont(SetupForm& form)
{
    const Ref<FontObject> edited = values::given(form.editFont);
    if (surface::fontsEqual(*edited, *values::given(form.savedFont)))
        return;
    form.control()->setFont(edited);
    form.savedFont = edited;
    form.editFont = surface::copyFont(*edited);
    form.control()->setUseWindowSettings(false);
}

// Channels -----------------------------------------------------------------------------------------------------

namespace {

std::vector<Field*> channelLists(SetupForm& form)
{
    std::vector<Field*> lists;
    for (Field& field : form.fields()) {
        if (field.kind() == FieldKind::ChannelList || field.kind() == FieldKind::ChannelDropDown)
            lists.push_back(&field);
    }
    return lists;
}

void addChannelRows(SetupForm& form, const std::vector<Field*>& lists)
{
    const auto add = [&](const ListRow& row) {
        for (Field* list : lists)
            form.addRow(*list, row);
    };
    add({.text = QStringLiteral("None"), .key = {}, .parent = {}});
    const Ref<site::SchemeWindows> windows = values::given(form.windows());
    for (std::int32_t place = 1; place <= windows->Count(); ++place) {
        const Ref<site::SchemeWindow> window = values::given(windows->Item(binding::Variant(place)));
        const QString windowKey = window->Key();
        for (std::int32_t index = 1; index <= window->Count(); ++index) {
            const Ref<site::Channel> channel = values::given(window->Item(binding::Variant(index)));
            add({.text = channel->Label(),
                 .key = windowKey + QLatin1Char('|') + channel->Key(),
                 .parent = windowKey});
        }
    }
}

} // namespace

void fillChannelList(SetupForm& form)
{
    const std::vector<Field*> lists = channelLists(form);
    // A fill that fails leaves the rows that it has made.
    const auto filled = qScopeGuard([&] {
        for (const Field* list : lists)
            form.listFilled(const_cast<Field&>(*list));
    });
    addChannelRows(form, lists);
}

void selectBoundChannel(SetupForm& form)
{
    Field& list = form.field(ChannelListName);
    const QString bound = values::given(form.control())->BindTo();
    if (!bound.isEmpty())
        values::attempt([&] { form.selectKey(list, bound); });
    if (!list.selectedRow())
        form.select(list, 0);
}

void bindSelectedChannel(SetupForm& form)
{
    const ListRow* row = form.field(ChannelListName).selectedRow();
    if (!row)
        values::raise(values::ErrorNumber::ObjectNotSet);
    const QString key = row->key;
    form.control()->setChannel(site::findChannel(form.windows(), key));
}

void countUse(SetupForm& form, site::Channel& channel, int by)
{
    form.site().counts(Ref<site::Channel>(&channel));
    channel.setUseCount(values::toInteger(values::Variant(std::int32_t(channel.UseCount()) + by)));
}

// Node ---------------------------------------------------------------------------------------------------------

void ensureAction(SetupForm& form)
{
    const document::Node node = form.node();
    if (node && !node.child(document::element::Action))
        node.appendChild(node.createElement(document::element::Action));
}

void fillDataTypes(SetupForm& form, Field& list)
{
    for (int type = 0; type < site::DataTypeCount; ++type)
        form.addRow(list, {.text = site::dataTypeName(type), .key = {}, .parent = {}});
    form.listFilled(list);
}

} // namespace zan::dialogs
