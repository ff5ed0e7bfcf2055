#pragma once

#include "zandata/data/RecordRows.h"

#include <QAbstractTableModel>
#include <QTimer>

namespace zan::zandata {

/// The rows of a log buffer as a table of texts: the time, then a column for each channel. Row 0 is the newest or the
/// oldest record, as the user likes.
class RecordModel final : public QAbstractTableModel
{
public:
    explicit RecordModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void setSource(const Ref<site::LogRecords>& records, const Ref<site::History>& history);
    bool isNewestFirst() const noexcept { return m_isNewestFirst; }
    void setNewestFirst(bool isNewestFirst);

    const RecordRows& rows() const noexcept { return m_rows; }
    /// The text of a cell, read now if need be.
    QString cellText(int row, int column) const;
    /// "Level (m)".
    QString columnName(int column) const;
    /// The row that shows the first record at a moment or after it; -1 for an empty table.
    int rowOf(HistoryTime moment) const;
    /// The time of a row; nothing for none.
    std::optional<HistoryTime> timeAt(int row) const;
    /// A part of the table as a spreadsheet takes it from the clipboard, headers above; of more than this number of
    /// cells the first rows.
    QString selectionText(int top, int left, int bottom, int right) const;
    static constexpr std::int64_t MostCopied = 1'000'000;

private:
    std::int64_t placeOf(int row) const;
    QString text(const site::HistoryRow& row, int column) const;
    void turn();

    mutable RecordRows m_rows;
    mutable QTimer m_turn;
    int m_shownRows = 0; // what the views know
    bool m_isNewestFirst = true;
};

} // namespace zan::zandata
