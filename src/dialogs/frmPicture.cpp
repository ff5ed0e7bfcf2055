#include "dialogs/BuiltInLogo.h"
#include "dialogs/FormSteps.h"
#include "dialogs/Names.h"
#include "dialogs/SetupForms.h"
#include "document/Elements.h"
#include "document/FileOps.h"
#include "document/XMLOps.h"

#include <QCoreApplication>

/// "Picture Setup": the file of a picture control.
namespace zan::dialogs {

namespace element = document::element;

namespace {

/// The name that stands for the program's own logo.
const QString LogoName = QStringLiteral("DEFAULT");

struct State : FormState
{
    QString file; ///< what is stored; the field only shows it
};

void browse(SetupForm& form, Field& button);

constexpr FieldRow fields[] = {
    {.name = u"Label1", .kind = FieldKind::Label, .caption = u"Picture File"},
    // COMPAT: for showing only; what is typed there counts for nothing.
    {.name = u"txtFile", .kind = FieldKind::Text, .spoken = u"Picture File"},
    {.name = u"cmdBrowse", .kind = FieldKind::Button, .caption = u"&Browse", .click = browse},
    {.name = u"Picture1", .kind = FieldKind::Picture, .spoken = u"Preview"},
    cancelButton,
    okButton,
};

Ref<surface::Picture> pictureOf(const QString& file)
{
    if (file.compare(LogoName, Qt::CaseInsensitive) == 0)
        return builtInLogo();
    return surface::loadPicture(file);
}

void showPicture(SetupForm& form, const QString& file)
{
    const Ref<surface::Picture> picture = pictureOf(file); // raises before anything is kept
    form.setPicture(form.field(u"Picture1"), picture);
    form.state<State>().file = file.compare(LogoName, Qt::CaseInsensitive) == 0 ? LogoName : file;
    form.setText(form.field(u"txtFile"), form.state<State>().file);
}

void fillPicture(SetupForm& form)
{
    const QString file = document::XMLOps::GetAttribute(form.node(), element::PictureFile);
    if (!file.isEmpty())
        showPicture(form, file);
}

/// Whatever fails, cancelling included, leaves the picture and its name as they were.
void browse(SetupForm& form, Field&)
{
    values::attempt([&form] {
        const QString file = form.state<State>().file;
        surface::FileRequest request;
        request.title = QStringLiteral("Select picture file");
        request.defaultExtension = QStringLiteral(".BMP");
        request.file = file;
        request.filter = QStringLiteral("All picture files (*.bmp,*.gif,*.jpg,*.wmf)|*.bmp;*.gif;*.jpg;*.wmf"
                                        "|Bitmaps (*.bmp)|*.BMP|GIFs (*.GIF)|.GIF|JPEGS (*.jpg)|*.jpg"
                                        "|Windows meta files (*.wmf)|*.WMF|All Files (*.*)|*.*");
        request.filterIndex = 1;
        request.folder =
            file.isEmpty() ? QCoreApplication::applicationDirPath() : document::FileOps::GetFilePath(file);
        surface::HostForms* forms = form.site().forms();
        const std::optional<QString> chosen = forms ? forms->pickFile(form.owner(), request) : std::nullopt;
        if (!chosen || !form.isOpen())
            return;
        const Ref<surface::Picture> picture = surface::loadPicture(*chosen);
        form.setPicture(form.field(u"Picture1"), picture);
        form.state<State>().file = *chosen;
        form.setText(form.field(u"txtFile"), *chosen);
    });
}

void applyFile(SetupForm& form)
{
    document::XMLOps::SetAttribute(form.node(), element::PictureFile, form.state<State>().file);
}

void applyPicture(SetupForm& form)
{
    form.live()->putReference(name::Picture, values::Variant(form.field(u"Picture1").picture()));
}

constexpr Step fill[] = {call(fillPicture)};
constexpr Step apply[] = {call(applyFile), call(applyPicture)};

} // namespace

const FormDescription frmPicture{
    .name = u"frmPicture",
    .title = u"Picture Setup",
    .width = 5055,
    .height = 4455,
    .fields = fields,
    .escape = u"cmdCancel",
    .fill = fill,
    .usesWindows = false,
    .apply = apply,
    .makeState = [] { return std::unique_ptr<FormState>(std::make_unique<State>()); },
};

} // namespace zan::dialogs
