#include "dialogs/RowsModel.h"

#include "dialogs/ChannelIcons.h"

#include <algorithm>

namespace zan::dialogs {

namespace {

enum Column { LabelColumn, ParentColumn, ColumnCount };

bool contains(const ListRow& row, const QString& text)
{
    for (const QString& part : {row.text, row.key, row.parent}) {
        if (part.contains(text, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace

RowsModel::RowsModel(const Field& field, QObject* parent)
    : QAbstractTableModel(parent)
    , m_field(field)
{
    if (hasIcons()) {
        m_none = noChannelIcon();
        m_channel = channelIcon();
    }
    list();
}

bool RowsModel::hasIcons() const
{
    return m_field.kind() == FieldKind::ChannelList || m_field.kind() == FieldKind::ChannelDropDown;
}

void RowsModel::list()
{
    m_seen.clear();
    m_seen.reserve(m_field.rows().size());
    for (std::size_t row = 0; row < m_field.rows().size(); ++row) {
        if (m_filter.isEmpty() || contains(m_field.rows()[row], m_filter))
            m_seen.push_back(int(row));
    }
}

void RowsModel::refill()
{
    beginResetModel();
    list();
    endResetModel();
}

void RowsModel::setFilter(const QString& text)
{
    if (text == m_filter)
        return;
    m_filter = text;
    refill();
}

int RowsModel::fieldRow(int seenRow) const
{
    return seenRow >= 0 && std::size_t(seenRow) < m_seen.size() ? m_seen[std::size_t(seenRow)] : -1;
}

int RowsModel::seenRow(int fieldRow) const
{
    const auto found = std::lower_bound(m_seen.begin(), m_seen.end(), fieldRow);
    return found != m_seen.end() && *found == fieldRow ? int(found - m_seen.begin()) : -1;
}

int RowsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_seen.size());
}

int RowsModel::columnCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    return m_field.kind() == FieldKind::ChannelList ? ColumnCount : 1;
}

QVariant RowsModel::data(const QModelIndex& index, int role) const
{
    const int place = fieldRow(index.row());
    if (place < 0 || std::size_t(place) >= m_field.rows().size())
        return {};
    const ListRow& row = m_field.rows()[std::size_t(place)];
    if (role == Qt::DisplayRole)
        return index.column() == ParentColumn ? row.parent : row.text;
    if (role == Qt::DecorationRole && index.column() == LabelColumn && hasIcons())
        return row.key.isEmpty() ? m_none : m_channel;
    return {};
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == ParentColumn ? tr("Parent") : tr("Channel");
}

} // namespace zan::dialogs
