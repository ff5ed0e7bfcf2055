#include "history/StoreReader.h"

namespace zan::history {

namespace {

using Access = Database::Access;

/// Sums of numbers depend a little on the order in which they were added.
bool isNear(double left, double right, double scale)
{
    return std::abs(left - right) <= 1e-9 * (std::abs(scale) + 1);
}

bool isSame(const Figures& left, const Figures& right)
{
    const double scale = std::max(std::abs(right.minimum), std::abs(right.maximum)) * double(right.count);
    return left.start == right.start && left.first == right.first && left.last == right.last &&
           left.count == right.count && left.minimum == right.minimum && left.maximum == right.maximum &&
           isNear(left.sum, right.sum, scale);
}

} // namespace

void StoreReader::checkSeries(const HistorySeries& series, CheckResult& result)
{
    std::vector<Figures> expected[Levels.size()];
    eachInBlocks(series.id, EarliestTime, LatestTime + 1, [&](HistoryTime time, QByteArrayView value) {
        ++result.records;
        double number = 0;
        if (!numberOf(value, number))
            return;
        for (std::size_t level = 0; level < Levels.size(); ++level)
            addFigures(expected[level], Figures::of(floorTo(time, Levels[level].length), time, number));
    });
    for (const TailPoint& point : m_tail.points(series.id))
        result.records += !isInBlocks(series.id, point);
    for (std::size_t level = 0; level < Levels.size(); ++level) {
        const std::vector<Figures> kept = figures(series.id, int(level), EarliestTime, LatestTime + 1);
        if (!std::equal(kept.begin(), kept.end(), expected[level].begin(), expected[level].end(), isSame))
            result.mistakes.append(
                QStringLiteral("%1|%2: the figures kept for each %3 are not those of its records.")
                    .arg(series.window, series.key,
                         QStringList{QStringLiteral("minute"), QStringLiteral("hour"),
                                     QStringLiteral("day")}[qsizetype(level)]));
    }
}

StoreReader::CheckResult StoreReader::check()
{
    CheckResult result;
    if (!m_database.isServer()) {
        m_database.each("PRAGMA integrity_check(20)", {}, [&](const QSqlQuery& row) {
            if (const QString line = row.value(0).toString(); line != QLatin1String("ok"))
                result.mistakes.append(line);
        });
    }
    Database::Transaction transaction(m_database, Access::Read);
    catchUp();
    result.series = std::int64_t(m_series.size());
    result.blocks = m_database.number("SELECT count(*) FROM block");
    for (const HistorySeries& one : m_series) {
        try {
            checkSeries(one, result);
        } catch (const StoreFailure& failure) {
            if (failure.reason != StoreFailure::Reason::Damaged)
                throw;
            result.mistakes.append(QStringLiteral("%1|%2: %3.").arg(one.window, one.key, failure.text));
        }
    }
    return result;
}

} // namespace zan::history
