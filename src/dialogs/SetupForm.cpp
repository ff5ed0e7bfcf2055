#include "dialogs/SetupForm.h"

#include "dialogs/FormDialog.h"

#include <algorithm>

namespace zan::dialogs {

using surface::FontObject;
using values::Colour;
using values::ErrorNumber;

SetupForm::SetupForm(const FormDescription& description, std::shared_ptr<FormSite> site)
    : m_description(&description)
    , m_site(std::move(site))
    , m_fields(description.fields.begin(), description.fields.end())
    , m_state(description.makeState ? description.makeState() : nullptr)
    , m_context(std::make_unique<QObject>())
{}

std::shared_ptr<SetupForm> SetupForm::make(const FormDescription& description, std::shared_ptr<FormSite> site)
{
    std::shared_ptr<SetupForm> form(new SetupForm(description, std::move(site)));
    form->run(description.begin);
    return form;
}

SetupForm::~SetupForm()
{
    m_view = nullptr;
    delete m_dialog.data();
}

void SetupForm::LoadControl(const Ref<site::SchemeWindows>& windows, const Ref<wrappers::iBenchControl>& control,
                            const QString&)
{
    m_windows = windows;
    m_control = control;
    setSkipsFailures(m_description->skipsFailures);
    run(m_description->fill);
    setSkipsFailures(false);
}

void SetupForm::LoadUserControl(const Ref<binding::Object>& window)
{
    m_window = window;
    run(m_description->fill);
}

void SetupForm::ApplySettings()
{
    const Ref<wrappers::iBenchControl> edited = m_control;
    m_site->edit(title(), edited, [this] { run(m_description->apply); });
    run(m_description->applied);
}

void SetupForm::unload()
{
    if (!m_isOpen)
        return;
    const auto alive = shared_from_this();
    m_isOpen = false;
    m_context.reset();
    m_control = nullptr;
    m_windows = nullptr;
    m_window = nullptr;
    m_shownChannel = nullptr;
    savedFont = nullptr;
    editFont = nullptr;
    m_state.reset();
    if (m_view)
        m_view->closed();
}

QDialog* SetupForm::dialog(QWidget* owner)
{
    if (!m_hadDialog && m_isOpen) {
        m_hadDialog = true;
        m_dialog = new FormDialog(*this, owner);
    }
    return m_dialog;
}

QWidget* SetupForm::owner() const
{
    return m_dialog;
}

// Fields -------------------------------------------------------------------------------------------------------

Field* SetupForm::find(QStringView name) noexcept
{
    const auto found = std::find_if(m_fields.begin(), m_fields.end(), [name](const Field& field) {
        return field.row().name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == m_fields.end() ? nullptr : &*found;
}

Field& SetupForm::field(QStringView name)
{
    Field* found = find(name);
    Q_ASSERT_X(found, "SetupForm::field", "a step names a field that the form does not have");
    if (!found)
        values::raise(ErrorNumber::ObjectNotSet);
    return *found;
}

bool SetupForm::canUse(const Field& field) const
{
    if (!m_isOpen || !field.isEnabled() || !field.isVisible())
        return false;
    if (field.row().frame.isEmpty())
        return true;
    const Field* frame = const_cast<SetupForm*>(this)->find(field.row().frame);
    return !frame || canUse(*frame);
}

void SetupForm::tell(const Field& field)
{
    if (m_view)
        m_view->fieldChanged(field);
}

void SetupForm::callHandler(Handler handler, Field& field)
{
    if (handler && m_isOpen)
        handler(*this, field);
}

// What a user does ---------------------------------------------------------------------------------------------

template <class Action>
void SetupForm::user(Action&& action)
{
    const auto alive = shared_from_this();
    const auto site = m_site;
    values::atBoundary(action, [&](const values::RuntimeError& error) { site->reportError(error); });
}

void SetupForm::userTab(int tab)
{
    if (tab < 0 || tab >= int(m_description->tabs.size()) || tab == m_tab)
        return;
    m_tab = tab;
    if (m_view)
        m_view->tabChanged(tab);
}

void SetupForm::userText(Field& field, const QString& text)
{
    if (!field.isText() || !canUse(field))
        return;
    QString typed = field.row().maxLength > 0 ? text.left(field.row().maxLength) : text;
    if (field.row().digitsOnly)
        typed.removeIf(
            [](QChar character) { return character < QLatin1Char('0') || character > QLatin1Char('9'); });
    user([&] { setText(field, typed); });
}

void SetupForm::userClick(Field& field)
{
    if (!canUse(field))
        return;
    user([&] {
        if (field.kind() == FieldKind::CheckBox)
            setValue(field, field.value() == 0 ? 1 : 0);
        else if (field.kind() == FieldKind::Option)
            choose(field);
        else if (field.kind() == FieldKind::Button)
            callHandler(field.row().click, field);
    });
}

void SetupForm::userCheck(Field& field, int value)
{
    if (canUse(field))
        user([&] { setValue(field, value); });
}

void SetupForm::userDoubleClick(Field& field)
{
    if (canUse(field))
        user([&] { callHandler(field.row().doubleClick, field); });
}

void SetupForm::userSelect(Field& field, int index)
{
    if (field.isList() && canUse(field))
        user([&] { select(field, index); });
}

void SetupForm::userEscape()
{
    if (Field* button = find(m_description->escape))
        userClick(*button);
}

// What code does -----------------------------------------------------------------------------------------------

void SetupForm::setText(Field& field, const QString& text)
{
    if (field.m_text == text)
        return;
    field.m_text = text;
    tell(field);
    callHandler(field.row().change, field);
}

void SetupForm::setCaption(Field& field, const QString& caption)
{
    if (field.m_caption == caption)
        return;
    field.m_caption = caption;
    tell(field);
}

bool SetupForm::sharesChoice(const Field& one, const Field& other) const
{
    return other.kind() == FieldKind::Option && one.row().frame == other.row().frame &&
           one.row().tab == other.row().tab;
}

void SetupForm::setValue(Field& field, int value)
{
    if (value < 0 || value > (field.kind() == FieldKind::Option ? 1 : 2))
        values::raise(ErrorNumber::InvalidPropertyValue);
    if (field.m_value == value)
        return;
    field.m_value = value;
    if (field.kind() == FieldKind::Option && value == 1) {
        for (Field& other : m_fields) {
            if (&other != &field && other.m_value != 0 && sharesChoice(field, other)) {
                other.m_value = 0;
                tell(other);
            }
        }
    }
    tell(field);
    callHandler(field.row().click, field);
}

void SetupForm::setEnabled(Field& field, bool isEnabled)
{
    if (field.m_isEnabled == isEnabled)
        return;
    field.m_isEnabled = isEnabled;
    tell(field);
}

void SetupForm::setVisible(Field& field, bool isVisible)
{
    if (field.m_isVisible == isVisible)
        return;
    field.m_isVisible = isVisible;
    tell(field);
}

void SetupForm::bringToFront(Field& field)
{
    field.m_rank = ++m_highestRank;
    tell(field);
}

void SetupForm::setBackColour(Field& field, Colour colour)
{
    field.m_backColour = colour;
    tell(field);
}

void SetupForm::setForeColour(Field& field, Colour colour)
{
    field.m_foreColour = colour;
    tell(field);
}

void SetupForm::setFont(Field& field, const Ref<FontObject>& font)
{
    field.m_font = font;
    tell(field);
}

void SetupForm::setPicture(Field& field, const Ref<surface::Picture>& picture)
{
    field.m_picture = picture;
    tell(field);
}

void SetupForm::setHeight(Field& field, int twips)
{
    field.m_height = twips;
    tell(field);
}

// Lists --------------------------------------------------------------------------------------------------------

void SetupForm::clearList(Field& field)
{
    field.m_rows.clear();
    field.m_keys.clear();
    field.m_listIndex = -1;
    listFilled(field);
}

void SetupForm::addRow(Field& field, ListRow row)
{
    if (!row.key.isEmpty()) {
        const qsizetype before = field.m_keys.size();
        field.m_keys.insert(row.key.toCaseFolded());
        if (field.m_keys.size() == before)
            values::raise(ErrorNumber::DuplicateKey);
    }
    field.m_rows.push_back(std::move(row));
}

void SetupForm::listFilled(Field& field)
{
    if (m_view)
        m_view->listChanged(field);
}

void SetupForm::select(Field& field, int index)
{
    if (index < -1 || index >= int(field.m_rows.size()))
        values::raise(ErrorNumber::InvalidPropertyValue);
    field.m_listIndex = index;
    if (field.kind() == FieldKind::ComboBox && index >= 0)
        field.m_text = field.m_rows[std::size_t(index)].text;
    tell(field);
    if (index >= 0)
        callHandler(field.row().click, field);
}

void SetupForm::selectKey(Field& field, const QString& key)
{
    const auto row = std::find_if(field.m_rows.begin(), field.m_rows.end(), [&key](const ListRow& candidate) {
        return !candidate.key.isEmpty() && candidate.key.compare(key, Qt::CaseInsensitive) == 0;
    });
    if (row == field.m_rows.end())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    select(field, int(row - field.m_rows.begin()));
}

void SetupForm::SelectListItem(Field& field, const QString& text, int otherwise)
{
    if (field.m_rows.empty())
        return;
    const auto row = std::find_if(field.m_rows.begin(), field.m_rows.end(), [&text](const ListRow& candidate) {
        return candidate.text.compare(text, Qt::CaseInsensitive) == 0;
    });
    select(field, row == field.m_rows.end() ? otherwise : int(row - field.m_rows.begin()));
}

void SetupForm::showExample()
{
    if (m_description->showExample)
        m_description->showExample(*this);
}

} // namespace zan::dialogs
