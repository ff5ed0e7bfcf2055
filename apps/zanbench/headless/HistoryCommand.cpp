#include "zanbench/Commands.h"
#include "zanbench/SiteHistory.h"

#include "history/CsvExport.h"
#include "history/StoreLock.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

namespace zan::host {

namespace {

using history::HistoryPlace;
using history::HistoryStore;
using history::StoreReader;

QString localTime(site::HistoryTime time)
{
    return QDateTime::fromMSecsSinceEpoch(time).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

/// The series that an export is of; nothing when there is none of that name.
std::vector<site::HistorySeries> chosen(const site::History& history, const QString& channel)
{
    std::vector<site::HistorySeries> series = history.series();
    std::erase_if(series, [&](const site::HistorySeries& one) {
        const QString name = QStringLiteral("%1|%2").arg(one.window, one.key);
        return !channel.isEmpty() && name.compare(channel, Qt::CaseInsensitive) != 0;
    });
    return series;
}

QString exportTo(QIODevice& out, const site::History& store, const HistoryOptions& options)
{
    const auto series = chosen(store, options.channel);
    if (!options.channel.isEmpty() && series.empty())
        return QStringLiteral("The history has no channel '%1'.").arg(options.channel);
    history::CsvOptions csv;
    csv.isUtc = options.isUtc;
    csv.from = options.from.value_or(csv.from);
    csv.until = options.until.value_or(csv.until);
    return history::exportCsv(store, series, csv, out);
}

QString runExport(const HistoryPlace& place, const HistoryOptions& options)
{
    const auto store = values::make<HistoryStore>(place, HistoryStore::Access::ReadOnly);
    store->rowCount();
    if (!store->State().isEmpty())
        return store->State();
    if (options.out.isEmpty()) {
        QFile out;
        if (!out.open(stdout, QIODevice::WriteOnly))
            return QStringLiteral("Nothing can be written to the standard output.");
        return exportTo(out, *store, options);
    }
    if (QFileInfo::exists(options.out))
        return QStringLiteral("%1 is there already.").arg(options.out);
    QSaveFile out(options.out);
    if (!out.open(QIODevice::WriteOnly))
        return QStringLiteral("%1 cannot be written: %2.").arg(options.out, out.errorString());
    if (const QString problem = exportTo(out, *store, options); !problem.isEmpty())
        return problem;
    return out.commit() ? QString()
                        : QStringLiteral("%1 cannot be written: %2.").arg(options.out, out.errorString());
}

QString runInfo(const HistoryPlace& place)
{
    const auto store = values::make<HistoryStore>(place, HistoryStore::Access::ReadOnly);
    const std::int64_t rows = store->rowCount();
    const site::HistorySpan span = store->span();
    const auto series = store->series();
    if (!store->State().isEmpty())
        return store->State();
    QString text = QStringLiteral("Kept in:  %1\n").arg(place.text());
    if (place.kind == HistoryPlace::Kind::Sqlite)
        text += QStringLiteral("Size:     %1 kB\n").arg((QFileInfo(place.file).size() + 1023) / 1024);
    text += QStringLiteral("Records:  %1 of %2 channels\n").arg(rows).arg(series.size());
    if (!span.isEmpty)
        text += QStringLiteral("From:     %1 (local time)\nTo:       %2\n")
                    .arg(localTime(span.first), localTime(span.last));
    print(text);
    return {};
}

QString runCheck(const HistoryPlace& place)
{
    StoreReader reader(place);
    const StoreReader::CheckResult result = reader.check();
    print(QStringLiteral("%1 values of %2 channels in %3 blocks read.\n")
              .arg(result.records)
              .arg(result.series)
              .arg(result.blocks));
    if (result.mistakes.isEmpty())
        return {};
    return QStringLiteral("The history is damaged: ") + result.mistakes.join(u' ');
}

QString runVacuum(const HistoryPlace& place)
{
    if (place.kind != HistoryPlace::Kind::Sqlite)
        return QStringLiteral("A server looks after its own room.");
    if (!QFileInfo::exists(place.file))
        return QStringLiteral("There is no file %1.").arg(place.file);
    const history::StoreLock lock(place, nullptr);
    if (!lock.isHeld())
        return QStringLiteral("Another program is writing this history: close it first.");
    const qint64 before = QFileInfo(place.file).size();
    {
        history::Database database(place, history::Database::Access::Write);
        history::checkStore(database);
        database.runOnce(QStringLiteral("VACUUM"));
        database.runOnce(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    }
    print(QStringLiteral("%1 kB before, %2 kB now.\n").arg(before / 1024).arg(QFileInfo(place.file).size() / 1024));
    return {};
}

QString carryOut(const HistoryPlace& place, const HistoryOptions& options)
{
    switch (options.action) {
    case HistoryOptions::Action::Export:
        return runExport(place, options);
    case HistoryOptions::Action::Info:
        return runInfo(place);
    case HistoryOptions::Action::Check:
        return runCheck(place);
    case HistoryOptions::Action::Vacuum:
        return runVacuum(place);
    }
    return {};
}

} // namespace

ExitCode runHistory(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<HistoryOptions> parsed = parseHistory(arguments);
    if (!parsed.options)
        return answer(parsed);
    const QCoreApplication application(process.count, process.words);
    const trellis::OpenResult opened = trellis::SchemeFile::open(parsed.options->scheme);
    if (!opened) {
        complain(opened.error.text());
        return Failure;
    }
    HistoryPlace place;
    QString problem = SiteHistory::placeOf(*opened.scheme, place);
    if (problem.isEmpty() && place.kind == HistoryPlace::Kind::None)
        problem = QStringLiteral("The scheme keeps no history.");
    try {
        if (problem.isEmpty())
            problem = carryOut(place, *parsed.options);
    } catch (const history::StoreFailure& failure) {
        problem = QStringLiteral("The history in %1 cannot be used: %2.").arg(place.text(), failure.text);
    }
    if (problem.isEmpty())
        return Success;
    complain(oneLine(problem));
    return Failure;
}

} // namespace zan::host
