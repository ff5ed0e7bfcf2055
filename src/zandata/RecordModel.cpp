#include "zandata/RecordModel.h"

#include "values/Failure.h"
#include "values/Format.h"
#include "values/TableText.h"

#include <QElapsedTimer>

#include <algorithm>

namespace zan::zandata {

namespace {

constexpr qint64 TurnBudget = 12;      // milliseconds of reading at a turn
constexpr qsizetype LongestCell = 500; // characters that a cell shows

} // namespace

RecordModel::RecordModel(QObject* parent)
    : QAbstractTableModel(parent)
{
    m_turn.setSingleShot(true);
    m_turn.setInterval(0);
    connect(&m_turn, &QTimer::timeout, this, [this] { turn(); });
}

int RecordModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_shownRows;
}

int RecordModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.columns().size()) + 1;
}

std::int64_t RecordModel::placeOf(int row) const
{
    return m_isNewestFirst ? m_rows.count() - 1 - row : row;
}

QString RecordModel::text(const site::HistoryRow& row, int column) const
{
    if (column == 0)
        return timeText(row.time);
    const auto place = std::size_t(column - 1);
    if (place >= row.cells.size() || row.cells[place].kind() == values::Kind::Empty)
        return {};
    QString shown;
    if (!values::attempt([&] { shown = values::format(row.cells[place], m_rows.columns()[place].format); }))
        return QStringLiteral("ERROR!");
    return shown.left(LongestCell);
}

QVariant RecordModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole)
        return index.column() == 0 ? int(Qt::AlignLeft | Qt::AlignVCenter) : int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    if (const site::HistoryRow* row = m_rows.row(placeOf(index.row())))
        return text(*row, index.column());
    if (m_rows.isReadDue())
        m_turn.start();
    return index.column() == 0 ? QStringLiteral("...") : QString();
}

QString RecordModel::columnName(int column) const
{
    if (column == 0)
        return QStringLiteral("Time");
    const site::HistorySeries& series = m_rows.columns()[std::size_t(column - 1)];
    return series.units.isEmpty() ? series.label
                                  : series.label + QLatin1String(" (") + series.units + QLatin1Char(')');
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || section < 0)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    if (section >= columnCount())
        return {};
    if (section == 0)
        return columnName(0) + (m_isNewestFirst ? QStringLiteral(" \u2193") : QStringLiteral(" \u2191"));
    return columnName(section);
}

void RecordModel::turn()
{
    QElapsedTimer clock;
    clock.start();
    m_rows.read([&] { return clock.elapsed() >= TurnBudget; },
                [&](std::int64_t first, std::int32_t count) {
                    if (count < 1)
                        return;
                    const int one = m_isNewestFirst ? int(m_rows.count() - first - count) : int(first);
                    Q_EMIT dataChanged(index(one, 0), index(one + count - 1, columnCount() - 1));
                });
    if (m_rows.isReadDue())
        m_turn.start();
}

void RecordModel::setSource(const Ref<site::LogRecords>& records, const Ref<site::History>& history)
{
    const std::int64_t before = m_rows.count();
    const std::int64_t offset = m_rows.offset();
    const std::size_t columns = m_rows.columns().size();
    m_rows.setSource(records, history);
    const auto added = int(m_rows.count() - before);
    const bool isLonger =
        added >= 0 && before > 0 && m_rows.offset() == offset && m_rows.columns().size() == columns;
    if (!isLonger) {
        beginResetModel();
        m_shownRows = int(m_rows.count());
        endResetModel();
    } else if (added > 0) {
        const int first = m_isNewestFirst ? 0 : m_shownRows;
        beginInsertRows({}, first, first + added - 1);
        m_shownRows += added;
        endInsertRows();
    }
}

void RecordModel::setNewestFirst(bool isNewestFirst)
{
    if (m_isNewestFirst == isNewestFirst)
        return;
    beginResetModel();
    m_isNewestFirst = isNewestFirst;
    endResetModel();
}

QString RecordModel::cellText(int row, int column) const
{
    const site::HistoryRow* found = m_rows.readRow(placeOf(row));
    return found && column >= 0 && column < columnCount() ? text(*found, column) : QString();
}

int RecordModel::rowOf(HistoryTime moment) const
{
    if (m_rows.count() == 0)
        return -1;
    const std::int64_t place = std::min(m_rows.placeOf(moment), m_rows.count() - 1);
    return int(m_isNewestFirst ? m_rows.count() - 1 - place : place);
}

std::optional<HistoryTime> RecordModel::timeAt(int row) const
{
    const site::HistoryRow* found = m_rows.readRow(placeOf(row));
    return found ? std::optional(found->time) : std::nullopt;
}

QString RecordModel::selectionText(int top, int left, int bottom, int right) const
{
    const int columns = right - left + 1;
    if (columns < 1 || bottom < top)
        return {};
    const auto last =
        int(std::min<std::int64_t>(bottom, top + std::max<std::int64_t>(MostCopied / columns, 1) - 1));
    QString text;
    for (int column = left; column <= right; ++column)
        text += (column == left ? QString() : QStringLiteral("\t")) + values::clipboardCell(columnName(column));
    text += QLatin1Char('\n');
    for (int row = top; row <= last; ++row) {
        for (int column = left; column <= right; ++column)
            text +=
                (column == left ? QString() : QStringLiteral("\t")) + values::clipboardCell(cellText(row, column));
        text += QLatin1Char('\n');
    }
    return text;
}

} // namespace zan::zandata
