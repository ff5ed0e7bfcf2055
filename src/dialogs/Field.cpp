#include "dialogs/Field.h"

namespace zan::dialogs {

Field::Field(const FieldRow& row)
    : m_row(&row)
    , m_caption(row.caption.toString())
    , m_text(row.text.toString())
    , m_isEnabled(row.enabled)
    , m_isVisible(row.visible)
{}

bool Field::isList() const noexcept
{
    switch (kind()) {
    case FieldKind::DropDown:
    case FieldKind::ComboBox:
    case FieldKind::ListBox:
    case FieldKind::ChannelList:
    case FieldKind::ChannelDropDown:
        return true;
    default:
        return false;
    }
}

bool Field::isText() const noexcept
{
    switch (kind()) {
    case FieldKind::Text:
    case FieldKind::MultilineText:
    case FieldKind::ComboBox:
    case FieldKind::Filter:
        return true;
    default:
        return false;
    }
}

QString Field::text() const
{
    if (isText())
        return m_text;
    if (!isList())
        return m_caption;
    const ListRow* row = selectedRow();
    return row ? row->text : QString();
}

const ListRow* Field::selectedRow() const noexcept
{
    return m_listIndex >= 0 && std::size_t(m_listIndex) < m_rows.size() ? &m_rows[std::size_t(m_listIndex)]
                                                                        : nullptr;
}

} // namespace zan::dialogs
