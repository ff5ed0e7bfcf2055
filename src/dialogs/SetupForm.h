#pragma once

#include "dialogs/Field.h"
#include "dialogs/FormSite.h"
#include "document/Node.h"
#include "site/Scheme.h"
#include "surface/forms/ModalForm.h"
#include "values/Failure.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <vector>

class QDialog;

namespace zan::dialogs {

/// Whoever shows a form hears of what changes in it.
class FormView
{
public:
    virtual ~FormView() = default;
    virtual void fieldChanged(const Field& field) = 0;
    virtual void listChanged(const Field& field) = 0;
    virtual void tabChanged(int tab) = 0;
    virtual void closed() = 0;
};

/// A setup form without its window: what its fields hold, what a user does to them, and what comes of it. It follows a
/// FormDescription and knows no form by name.
///
/// What code writes to a field runs the field's handler, as on the classic platform, and raises what that raises. What a
/// user does is done through the functions of that name: there an error goes to the site, and a field that is disabled
/// or hidden takes nothing.
///
/// A handler may close the form, but it lives as long as somebody holds it; whoever shows it does.
class SetupForm : public surface::ModalForm, public std::enable_shared_from_this<SetupForm>
{
public:
    /// The description must outlive the form. Runs the form's first steps.
    static std::shared_ptr<SetupForm> make(const FormDescription& description, std::shared_ptr<FormSite> site);
    ~SetupForm() override;

    /// Fills the form with a control's settings. Raises what a form that does not skip failures raises; such a form is not
    /// to be shown. The text with the surface's handle is taken and never used.
    void LoadControl(const Ref<site::SchemeWindows>& windows, const Ref<wrappers::iBenchControl>& control,
                     const QString& surfaceHandle = {});
    /// Fills the form of a panel.
    void LoadUserControl(const Ref<binding::Object>& window);

    // ModalForm
    QString name() const override { return m_description->name.toString(); }
    QString title() const override { return m_description->title.toString(); }
    QDialog* dialog(QWidget* owner) override;
    bool isOpen() const override { return m_isOpen; }
    void close() override { unload(); }

    const FormDescription& description() const noexcept { return *m_description; }
    std::vector<Field>& fields() noexcept { return m_fields; }
    /// Null for a name that the form does not have. Case is ignored.
    Field* find(QStringView name) noexcept;
    /// The field of a row of this form's description.
    Field& field(QStringView name);
    int tab() const noexcept { return m_tab; }
    void setView(FormView* view) noexcept { m_view = view; }

    // What a user does -----------------------------------------------------------------------------------------

    /// False for a field that cannot be used now: disabled or hidden, itself or its frame.
    bool canUse(const Field& field) const;
    void userTab(int tab);
    void userText(Field& field, const QString& text);
    /// Presses a button, checks or unchecks a box, chooses an option.
    void userClick(Field& field);
    /// Puts a box to a value.
    void userCheck(Field& field, int value);
    void userDoubleClick(Field& field);
    void userSelect(Field& field, int index);
    /// The Esc key.
    void userEscape();

    // What code does -------------------------------------------------------------------------------------------

    void setText(Field& field, const QString& text);
    void setCaption(Field& field, const QString& caption);
    /// Raises 380 for a box that is to be anything but 0, 1 or 2.
    void setValue(Field& field, int value);
    /// Chooses an option of a group.
    void choose(Field& option) { setValue(option, 1); }
    void setEnabled(Field& field, bool isEnabled);
    void setVisible(Field& field, bool isVisible);
    void bringToFront(Field& field);
    void setBackColour(Field& field, values::Colour colour);
    void setForeColour(Field& field, values::Colour colour);
    void setFont(Field& field, const Ref<surface::FontObject>& font);
    void setPicture(Field& field, const Ref<surface::Picture>& picture);
    void setHeight(Field& field, int twips);
    void clearList(Field& field);
    /// Raises 457 for a key that another row has.
    void addRow(Field& field, ListRow row);
    /// Says that a list has been filled; between, nobody is told of each row.
    void listFilled(Field& field);
    /// Raises 380 for an index without a row; -1 for none.
    void select(Field& field, int index);
    /// The row of a key, without regard to case. Raises 9 when there is none.
    void selectKey(Field& field, const QString& key);
    /// The first row equal to the text without regard to case, else `otherwise`. An empty list stays as it is.
    void SelectListItem(Field& field, const QString& text, int otherwise);

    /// A statement: while failures are skipped, one that fails is passed over.
    template <class Statement>
    void statement(Statement&& run)
    {
        if (m_skipsFailures)
            values::attempt(run);
        else
            run();
    }
    void setSkipsFailures(bool skips) noexcept { m_skipsFailures = skips; }

    // What rows say --------------------------------------------------------------------------------------------

    void run(std::span<const Step> steps);
    /// The field takes the value that its row stands for.
    void loadField(Field& field);
    /// The field's value goes to the property of the live control, or to whatever the row names.
    void putField(Field& field);
    /// The field's value is stored in the document.
    void writeField(Field& field);
    /// The field's content as the value that its row stands for.
    values::Variant valueOf(const Field& field) const;

    // What the steps work on -----------------------------------------------------------------------------------

    const Ref<wrappers::iBenchControl>& control() const noexcept { return m_control; }
    /// The live control; raises 91 without one.
    Ref<binding::Object> live() const;
    document::Node node() const { return m_control ? m_control->XMLNode() : document::Node(); }
    /// The ACTION of the control's node; null for none.
    document::Node action() const;
    /// The panel, for its own form.
    const Ref<binding::Object>& window() const noexcept { return m_window; }
    const Ref<site::SchemeWindows>& windows() const noexcept { return m_windows; }
    FormSite& site() const noexcept { return *m_site; }
    QWidget* owner() const;
    template <class State>
    State& state() const
    {
        return static_cast<State&>(*m_state);
    }
    /// Rows whose members are those of a channel read and write this one.
    void setShownChannel(const Ref<site::Channel>& channel) { m_shownChannel = channel; }
    const Ref<site::Channel>& shownChannel() const noexcept { return m_shownChannel; }
    /// Connections that end with the form.
    QObject& context() noexcept { return *m_context; }

    Ref<surface::FontObject> savedFont; ///< what the control has
    Ref<surface::FontObject> editFont;  ///< what the picker changes and the example shows
    values::Colour foreColour;
    values::Colour backColour;
    QString fontName; ///< what the check box for the character set goes back to

    void showExample();
    /// Writes everything, as one step of the edit history.
    void ApplySettings();
    /// Closes the form and lets go of what it held.
    void unload();

private:
    SetupForm(const FormDescription& description, std::shared_ptr<FormSite> site);
    template <class Action>
    void user(Action&& action);
    void callHandler(Handler handler, Field& field);
    void tell(const Field& field);
    void take(Field& field, const values::Variant& value);
    void takeInList(Field& field, const values::Variant& value);
    document::Node nodeOf(const Field& field) const;
    Ref<binding::Object> objectOf(const Field& field) const;
    bool sharesChoice(const Field& one, const Field& other) const;

    const FormDescription* m_description;
    std::shared_ptr<FormSite> m_site;
    std::vector<Field> m_fields;
    std::unique_ptr<FormState> m_state;
    FormView* m_view = nullptr;
    QPointer<QDialog> m_dialog;
    bool m_hadDialog = false;
    bool m_isOpen = true;
    bool m_skipsFailures = false;
    int m_tab = 0;
    int m_highestRank = 0;
    Ref<wrappers::iBenchControl> m_control;
    Ref<site::SchemeWindows> m_windows;
    Ref<site::Channel> m_shownChannel;
    Ref<binding::Object> m_window;
    std::unique_ptr<QObject> m_context;
};

} // namespace zan::dialogs
