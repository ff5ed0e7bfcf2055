#include "history/CsvExport.h"

#include "values/Convert.h"
#include "values/TableText.h"

#include <QDateTime>

#include <algorithm>

namespace zan::history {

namespace {

using site::HistoryRow;
using site::HistorySeries;
using site::HistoryTime;
using values::Variant;

constexpr std::int32_t RowsAtOnce = 1000;

QString timeText(HistoryTime time, bool isUtc)
{
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(time, Qt::UTC);
    if (isUtc)
        return moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
    // The distance belongs to it: an hour comes twice a year.
    const QDateTime local = moment.toLocalTime();
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")) +
           local.toOffsetFromUtc(local.offsetFromUtc()).timeZoneAbbreviation().mid(3);
}

QString cellText(const Variant& value, QChar separator)
{
    switch (value.kind()) {
    case values::Kind::Empty:
    case values::Kind::Null:
        return {};
    case values::Kind::Double:
        return values::csvNumber(value.real());
    case values::Kind::Single:
        return values::csvNumber(value.single());
    default:
        break;
    }
    return values::csvCell(values::toText(value), separator);
}

QString headOf(const HistorySeries& series)
{
    const QString name = series.label.isEmpty() ? series.key : series.label;
    return series.units.isEmpty() ? name : QStringLiteral("%1 [%2]").arg(name, series.units);
}

bool put(QIODevice& out, const QString& line)
{
    const QByteArray bytes = line.toUtf8() + "\r\n";
    return out.write(bytes) == bytes.size();
}

} // namespace

QString exportCsv(const site::History& history, const std::vector<HistorySeries>& series, const CsvOptions& options,
                  QIODevice& out, const std::function<bool(std::int64_t done, std::int64_t all)>& goOn)
{
    const auto failure = [&] {
        return QStringLiteral("The export could not be written: %1.").arg(out.errorString());
    };
    std::vector<std::int64_t> ids;
    QString head = options.isUtc ? QStringLiteral("Time (UTC)") : QStringLiteral("Time (local)");
    for (const HistorySeries& one : series) {
        ids.push_back(one.id);
        head += options.separator + values::csvCell(headOf(one), options.separator);
    }
    if (!put(out, head))
        return failure();
    const std::int64_t begin = history.placeOf(options.from);
    const std::int64_t end = history.placeOf(options.until);
    for (std::int64_t place = begin; place < end;) {
        const auto most = std::int32_t(std::min<std::int64_t>(RowsAtOnce, end - place));
        const std::vector<HistoryRow> rows = history.rows(place, most, ids);
        if (rows.empty())
            return history.State().isEmpty() ? QStringLiteral("The history ended before the export.")
                                             : history.State();
        for (const HistoryRow& row : rows) {
            const bool isBlank =
                std::all_of(row.cells.begin(), row.cells.end(), [](const Variant& cell) { return cell.isEmpty(); });
            if (isBlank) // the moment belongs to channels that were not asked for
                continue;
            QString line = timeText(row.time, options.isUtc);
            for (const Variant& cell : row.cells)
                line += options.separator + cellText(cell, options.separator);
            if (!put(out, line))
                return failure();
        }
        place += std::int64_t(rows.size());
        if (goOn && !goOn(place - begin, end - begin))
            return QStringLiteral("The export was cancelled.");
    }
    return {};
}

} // namespace zan::history
