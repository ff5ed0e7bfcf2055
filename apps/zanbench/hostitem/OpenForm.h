#pragma once

#include "zanbench/hostitem/HostRun.h"

#include "binding/Object.h"
#include "dialogs/SetupForm.h"

#include <memory>

namespace zan::host {

using binding::Ref;
using binding::Variant;

/// One field of a form, for scripts. What a script does to it is what a user does: a field that cannot be used now
/// raises 5, so that no test takes a change for made that nobody could have made.
class FormField : public binding::Object
{
public:
    FormField(std::shared_ptr<dialogs::SetupForm> form, dialogs::Field& field)
        : m_form(std::move(form))
        , m_field(field)
    {}

    QString Name() const { return m_field.name(); }
    /// 0, 1 or 2 of a check box, True or False of an option, the text of anything else.
    Variant Value() const;
    void setValue(const Variant& value);
    QString Text() const { return m_field.text(); }
    void setText(const QString& text);
    QString Caption() const { return m_field.caption(); }
    QString ToolTip() const { return m_field.toolTip(); }
    bool Enabled() const { return m_field.isEnabled(); }
    bool Visible() const { return m_field.isVisible(); }
    std::int32_t MaxLength() const { return m_field.row().maxLength; }
    std::int32_t ListCount() const { return std::int32_t(m_field.rows().size()); }
    /// Row from 0, its columns parted by tabs. Raises 9 outside.
    QString List(std::int32_t row) const;
    std::int32_t ListIndex() const { return m_field.listIndex(); }
    void setListIndex(std::int32_t row);
    void Click();
    void DoubleClick();
    std::int32_t BackColor() const { return m_field.backColour().value_or(values::Colour{}).code; }
    std::int32_t ForeColor() const { return m_field.foreColour().value_or(values::Colour{}).code; }
    QString FontName() const;

    const binding::MemberTable& members() const override;

private:
    void requireUsable() const;

    std::shared_ptr<dialogs::SetupForm> m_form;
    dialogs::Field& m_field; ///< one of the form's
};

/// A form that has opened, for the script that is to fill it in.
class OpenForm : public binding::Object
{
public:
    OpenForm(std::shared_ptr<dialogs::SetupForm> form, HostRun& run)
        : m_form(std::move(form))
        , m_run(run)
    {}
    /// Nothing for a form of another kind.
    static Ref<OpenForm> of(surface::ModalForm& form, HostRun& run);

    QString Name() const { return m_form->name(); }
    QString Title() const { return m_form->title(); }
    std::int32_t Tab() const { return m_form->tab(); } ///< from 0
    /// Raises 5 for a tab that the form does not have.
    void setTab(std::int32_t tab);
    float Width() const; ///< of its window's client area, in twips
    float Height() const;
    bool Has(const QString& field) const { return m_form->find(field) != nullptr; }
    /// Raises 5 for a name that the form does not have.
    Ref<FormField> Field(const QString& name) const;
    /// Types into the form's window; Esc is Chr(27), Enter Chr(13).
    void Keys(const QString& text);
    /// What its close box does.
    void Close() { m_form->close(); }
    /// Writes a picture of the form's window.
    void Shot(const QString& file);
    bool IsOpen() const { return m_form->isOpen(); }

    const binding::MemberTable& members() const override;

private:
    QDialog& shownDialog() const;

    std::shared_ptr<dialogs::SetupForm> m_form;
    HostRun& m_run; ///< a form is open only while the run is there
};

} // namespace zan::host
