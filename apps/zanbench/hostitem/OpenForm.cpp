#include "zanbench/hostitem/OpenForm.h"

#include "zanbench/PictureFile.h"
#include "zanbench/headless/SimulatedInput.h"

#include "binding/MemberTable.h"
#include "values/Convert.h"
#include "values/Twips.h"

#include <QDialog>
#include <QPixmap>

namespace zan::host {

using dialogs::FieldKind;
using values::ErrorNumber;

// Field --------------------------------------------------------------------------------------------------------

void FormField::requireUsable() const
{
    if (!m_form->canUse(m_field))
        values::raise(
            ErrorNumber::InvalidCall,
            QStringLiteral("The field %1 cannot be used: it is disabled or hidden, or the form is closed.")
                .arg(Name()));
}

Variant FormField::Value() const
{
    switch (m_field.kind()) {
    case FieldKind::CheckBox:
        return std::int16_t(m_field.value());
    case FieldKind::Option:
        return m_field.isChecked();
    default:
        return m_field.text();
    }
}

void FormField::setValue(const Variant& value)
{
    requireUsable();
    if (m_field.kind() == FieldKind::CheckBox) {
        const int wanted = value.is(values::Kind::Boolean) ? int(value.boolean()) : int(values::toInteger(value));
        if (wanted < 0 || wanted > 2)
            values::raise(ErrorNumber::InvalidPropertyValue);
        m_form->userCheck(m_field, wanted);
    } else if (m_field.kind() == FieldKind::Option) {
        if (values::toBoolean(value))
            m_form->userClick(m_field);
    } else {
        setText(values::toText(value));
    }
}

void FormField::setText(const QString& text)
{
    requireUsable();
    if (!m_field.isText())
        values::raise(ErrorNumber::ReadOnlyProperty);
    m_form->userText(m_field, text);
}

QString FormField::List(std::int32_t row) const
{
    if (row < 0 || row >= ListCount())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    const dialogs::ListRow& listed = m_field.rows()[std::size_t(row)];
    return m_field.kind() == FieldKind::ChannelList ? listed.text + QLatin1Char('\t') + listed.parent : listed.text;
}

void FormField::setListIndex(std::int32_t row)
{
    requireUsable();
    if (row < -1 || row >= ListCount())
        values::raise(ErrorNumber::InvalidPropertyValue);
    m_form->userSelect(m_field, row);
}

void FormField::Click()
{
    requireUsable();
    m_form->userClick(m_field);
}

void FormField::DoubleClick()
{
    requireUsable();
    m_form->userDoubleClick(m_field);
}

QString FormField::FontName() const
{
    return m_field.font() ? m_field.font()->name() : QString();
}

const binding::MemberTable& FormField::members() const
{
    using C = FormField;
    using binding::method;
    using binding::property;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("Field", nullptr,
                                    {
                                        property<&C::Value, &C::setValue>("Value").asDefault(),
                                        readOnly<&C::Name>("Name"),
                                        property<&C::Text, &C::setText>("Text"),
                                        readOnly<&C::Caption>("Caption"),
                                        readOnly<&C::ToolTip>("ToolTip"),
                                        readOnly<&C::Enabled>("Enabled"),
                                        readOnly<&C::Visible>("Visible"),
                                        readOnly<&C::MaxLength>("MaxLength"),
                                        readOnly<&C::ListCount>("ListCount"),
                                        readOnly<&C::List>("List"),
                                        property<&C::ListIndex, &C::setListIndex>("ListIndex"),
                                        method<&C::Click>("Click"),
                                        method<&C::DoubleClick>("DoubleClick"),
                                        readOnly<&C::BackColor>("BackColor"),
                                        readOnly<&C::ForeColor>("ForeColor"),
                                        readOnly<&C::FontName>("FontName"),
                                    });
    });
}

// Form ---------------------------------------------------------------------------------------------------------

Ref<OpenForm> OpenForm::of(surface::ModalForm& form, HostRun& run)
{
    auto* setup = dynamic_cast<dialogs::SetupForm*>(&form);
    return setup ? values::make<OpenForm>(setup->shared_from_this(), run) : nullptr;
}

void OpenForm::setTab(std::int32_t tab)
{
    if (tab < 0 || std::size_t(tab) >= m_form->description().tabs.size())
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("The form has no tab %1.").arg(tab));
    m_form->userTab(tab);
}

QDialog& OpenForm::shownDialog() const
{
    QDialog* dialog = m_form->isOpen() ? m_form->dialog(nullptr) : nullptr;
    if (!dialog)
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("The form is closed."));
    if (!dialog->isVisible())
        dialog->show(); // where nobody sees it, and without waiting for it
    return *dialog;
}

float OpenForm::Width() const
{
    return values::pixelsToTwips(shownDialog().width());
}

float OpenForm::Height() const
{
    return values::pixelsToTwips(shownDialog().height());
}

Ref<FormField> OpenForm::Field(const QString& name) const
{
    dialogs::Field* field = m_form->find(name);
    if (!field)
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("The form has no field %1.").arg(name));
    return values::make<FormField>(m_form, *field);
}

void OpenForm::Keys(const QString& text)
{
    SimulatedInput::typeInto(shownDialog(), text);
}

void OpenForm::Shot(const QString& file)
{
    const QString path = m_run.filePath(file);
    if (const QString wrong = pictureNameProblem(path); !wrong.isEmpty())
        values::raise(ErrorNumber::InvalidCall, wrong);
    if (const QString failure = writePicture(shownDialog().grab(), path); !failure.isEmpty())
        values::raise(ErrorNumber::PathFileAccess, failure);
}

const binding::MemberTable& OpenForm::members() const
{
    using C = OpenForm;
    using binding::method;
    using binding::property;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("Form", nullptr,
                                    {
                                        readOnly<&C::Name>("Name").asDefault(),
                                        readOnly<&C::Title>("Title"),
                                        property<&C::Tab, &C::setTab>("Tab"),
                                        readOnly<&C::Width>("Width"),
                                        readOnly<&C::Height>("Height"),
                                        readOnly<&C::Field>("Field"),
                                        readOnly<&C::Has>("Has"),
                                        method<&C::Keys>("Keys"),
                                        method<&C::Close>("Close"),
                                        method<&C::Shot>("Shot"),
                                        readOnly<&C::IsOpen>("IsOpen"),
                                    });
    });
}

} // namespace zan::host
