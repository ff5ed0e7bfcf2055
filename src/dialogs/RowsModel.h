#pragma once

#include "dialogs/Field.h"

#include <QAbstractTableModel>
#include <QIcon>

#include <vector>

namespace zan::dialogs {

/// The rows of a list field for a view of the toolkit; none of them is copied. A filter narrows what is seen and
/// changes nothing of what is chosen.
class RowsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// The field must outlive the model.
    RowsModel(const Field& field, QObject* parent);

    /// The field has got other rows.
    void refill();
    /// Only rows that contain the text in label, key or window are seen, whatever the case; all for an empty one.
    void setFilter(const QString& text);
    const QString& filter() const noexcept { return m_filter; }

    /// The field's row of a row that is seen, and back; -1 for one that is not seen.
    int fieldRow(int seenRow) const;
    int seenRow(int fieldRow) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void list();
    bool hasIcons() const;

    const Field& m_field;
    QString m_filter;
    std::vector<int> m_seen; ///< of the field's rows, ascending
    QIcon m_none;
    QIcon m_channel;
};

} // namespace zan::dialogs
