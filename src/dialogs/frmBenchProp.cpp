#include "dialogs/FormSteps.h"
#include "dialogs/SetupForms.h"
#include "document/Elements.h"
#include "document/FileOps.h"
#include "values/Convert.h"

#include <QGuiApplication>
#include <QScopeGuard>

/// "Window Properties": colours, font and background of the panel itself, and its grid.
namespace zan::dialogs {

namespace element = document::element;
using surface::FontObject;
using values::Colour;
using values::Name;
using values::Variant;

namespace {

constexpr QStringView tabs[] = {u"&Format", u"&Background"};

constexpr std::int16_t DosCharset = 255;
const Name PictureName("Picture");
const Name RefreshName("Refresh");

void showExample(SetupForm& form)
{
    Field& example = form.field(u"txtExample");
    form.setFont(example, form.editFont);
    form.setForeColour(example, form.foreColour);
    form.setBackColour(example, form.backColour);
}

/// Unchecked, the font gets another name and its own again: it works the character set out from the name.
void clickDosCharset(SetupForm& form, Field& box)
{
    const Ref<FontObject> font = values::given(form.editFont);
    if (box.isChecked()) {
        form.fontName = font->name();
        font->setCharset(DosCharset);
    } else {
        font->setName(QStringLiteral("0"));
        font->setName(form.fontName);
    }
    form.showExample();
}

/// COMPAT: the other fields of the frame stay enabled themselves, in a frame that is switched off.
void clickEnablePicture(SetupForm& form, Field& box)
{
    for (const QStringView name : {u"lblPicture", u"txtPicture", u"cmdBrowse", u"fraPicture", u"cbStretch"})
        form.setEnabled(form.field(name), box.isChecked());
}

void browse(SetupForm& form, Field&)
{
    values::attempt([&form] {
        const QString current = form.field(u"txtPicture").text();
        surface::HostForms* forms = form.site().forms();
        const std::optional<QString> chosen =
            forms ? forms->pickFile(form.owner(), {.title = QStringLiteral("Select a background picture"),
                                                   .folder = document::FileOps::GetFilePath(current),
                                                   .file = document::FileOps::GetFileName(current),
                                                   .filter = QStringLiteral(
                                                       "Picture files|*.bmp;*.gif;*.jpg;*.wmf|All Files (*.*)|*.*"),
                                                   .filterIndex = 0,
                                                   .defaultExtension = QStringLiteral("*.BMP")})
                  : std::nullopt;
        if (chosen && form.isOpen())
            form.setText(form.field(u"txtPicture"), *chosen);
    });
}

void pressApplyBusy(SetupForm& form, Field&)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const auto end = qScopeGuard([] { QGuiApplication::restoreOverrideCursor(); });
    form.ApplySettings();
}

constexpr FieldRow fields[] = {
    {.name = u"Label1", .caption = u"Example:"},
    {.name = u"txtExample",
     .kind = FieldKind::MultilineText,
     .toolTip = u"Example given the current settings",
     .spoken = u"Example",
     .wraps = true,
     .text = u"The quick brown fox jumps over the lazy dog"},
    {.name = u"cmdForeCol",
     .kind = FieldKind::Button,
     .caption = u"&Forecolour",
     .toolTip = ForeColourButtonTip,
     .click = pickForeColour},
    {.name = u"cmdBackCol",
     .kind = FieldKind::Button,
     .caption = u"&Backcolour",
     .toolTip = BackColourButtonTip,
     .beside = true,
     .click = pickBackColour},
    {.name = u"cmdFont",
     .kind = FieldKind::Button,
     .caption = u"F&ont",
     .toolTip = FontButtonTip,
     .beside = true,
     .click = pickFont},
    {.name = u"cbDOSCharSet",
     .kind = FieldKind::CheckBox,
     .caption = u"MS-DOS Character Set",
     .toolTip = u"Select this option to ensure DOS symbols are displayed correctly",
     .click = clickDosCharset},

    {.name = u"cbEnablePicture",
     .kind = FieldKind::CheckBox,
     .caption = u"Enable background picture",
     .tab = 1,
     .click = clickEnablePicture},
    {.name = u"lblPicture", .kind = FieldKind::Caption, .caption = u"Picture", .tab = 1},
    {.name = u"txtPicture",
     .kind = FieldKind::Text,
     .spoken = u"Picture",
     .tab = 1,
     .at = At::Window,
     .value = &element::PictureFile},
    {.name = u"cmdBrowse",
     .kind = FieldKind::Button,
     .caption = u"&Browse",
     .tab = 1,
     .beside = true,
     .click = browse},
    {.name = u"fraPicture", .kind = FieldKind::Frame, .caption = u"Options", .tab = 1},
    {.name = u"cbStretch",
     .kind = FieldKind::CheckBox,
     .caption = u"&Stretch Picture",
     .tab = 1,
     .frame = u"fraPicture",
     .at = At::Window,
     .value = &element::Stretch,
     .as = As::Flag},
    {.name = u"cbSnap",
     .kind = FieldKind::CheckBox,
     .caption = u"S&nap to Grid",
     .tab = 1,
     .frame = u"fraPicture",
     .at = At::Window,
     .value = &element::SnapToGrid,
     .as = As::Flag},
    {.name = u"Label2", .kind = FieldKind::Caption, .caption = u"Grid Size", .tab = 1, .frame = u"fraPicture"},
    {.name = u"txtGrid",
     .kind = FieldKind::Text,
     .spoken = u"Grid Size",
     .tab = 1,
     .frame = u"fraPicture",
     .digitsOnly = true,
     .at = At::Window,
     .value = &element::GridSize},

    okButton,
    cancelButton,
    {.name = applyButton.name,
     .kind = FieldKind::Button,
     .caption = applyButton.caption,
     .tab = BelowTabs,
     .click = pressApplyBusy},
};

// Filling ------------------------------------------------------------------------------------------------------

Ref<binding::Object> window(SetupForm& form)
{
    return values::given(form.window());
}

void takeWindowFont(SetupForm& form)
{
    const Variant value = window(form)->get(element::Font);
    const Ref<FontObject> font(value.isObject() ? dynamic_cast<FontObject*>(value.object()) : nullptr);
    form.savedFont = values::given(font);
    form.editFont = surface::copyFont(*font);
}

void loadDosCharset(SetupForm& form)
{
    if (values::given(form.editFont)->isDosCharset())
        form.setValue(form.field(u"cbDOSCharSet"), 1);
}

void takeColours(SetupForm& form)
{
    form.foreColour = Colour{values::toLong(window(form)->get(element::ForeColor))};
    form.backColour = Colour{values::toLong(window(form)->get(element::BackColor))};
}

/// The file decides: one that is there and holds no picture is a background all the same.
void loadEnablePicture(SetupForm& form)
{
    bool isThere = true;
    values::attempt([&] { isThere = window(form)->get(PictureName).object() != nullptr; });
    if (isThere)
        form.setValue(form.field(u"cbEnablePicture"), 1);
}

constexpr Step fill[] = {
    call(takeWindowFont), call(loadDosCharset), call(takeColours), load(u"cbStretch"), call(loadEnablePicture),
    load(u"txtPicture"),  load(u"cbSnap"),      load(u"txtGrid"),  call(showExample),
};

// Applying -----------------------------------------------------------------------------------------------------

void applyColours(SetupForm& form)
{
    window(form)->put(element::ForeColor, form.foreColour.code);
    window(form)->put(element::BackColor, form.backColour.code);
}

void applyWindowFont(SetupForm& form)
{
    const Ref<FontObject> edited = values::given(form.editFont);
    if (surface::fontsEqual(*edited, *values::given(form.savedFont)))
        return;
    window(form)->putReference(element::Font, edited);
    form.savedFont = edited;
    form.editFont = surface::copyFont(*edited);
}

/// Without a background the file name in the field goes nowhere.
void applyPicture(SetupForm& form)
{
    if (form.field(u"cbEnablePicture").isChecked())
        form.putField(form.field(u"txtPicture"));
    else
        window(form)->putReference(PictureName, Variant::nothing());
}

/// Raises 13 for a field without a number.
void applyGrid(SetupForm& form)
{
    const std::int32_t size = values::toLong(Variant(form.field(u"txtGrid").text()));
    window(form)->put(element::GridSize, float(size));
}

constexpr Step apply[] = {
    call(applyColours), call(applyWindowFont), put(u"cbStretch"),
    call(applyPicture), put(u"cbSnap"),        call(applyGrid),
};

void refresh(SetupForm& form)
{
    window(form)->get(RefreshName);
}

constexpr Step applied[] = {call(refresh)};

} // namespace

const FormDescription frmBenchProp{
    .name = u"frmBenchProp",
    .title = u"Window Properties",
    .width = 4560,
    .height = 4080,
    .tabs = tabs,
    .fields = fields,
    .buttonWidth = 1095,
    .escape = u"cmdApply", // COMPAT: Esc writes the settings and leaves the form open
    .fill = fill,
    .apply = apply,
    .applied = applied,
    .showExample = showExample,
};

} // namespace zan::dialogs
