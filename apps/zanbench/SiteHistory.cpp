#include "zanbench/SiteHistory.h"

#include <QDir>
#include <QStandardPaths>

namespace zan::host {

namespace {

QString ownFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/zanbench/history");
}

} // namespace

QString SiteHistory::placeOf(const trellis::SchemeFile& scheme, history::HistoryPlace& place)
{
    return history::HistoryPlace::parse(scheme.historyText(), scheme.path(), ownFolder(), place);
}

SiteHistory SiteHistory::open(const trellis::SchemeFile& scheme, HistoryUse use)
{
    SiteHistory result;
    history::HistoryPlace place;
    if (use == HistoryUse::None)
        return result;
    result.problem = placeOf(scheme, place);
    if (place.kind == history::HistoryPlace::Kind::None)
        return result;
    if (use == HistoryUse::Temporary) {
        result.folder = std::make_unique<QTemporaryDir>();
        place = {};
        place.kind = history::HistoryPlace::Kind::Sqlite;
        place.file = result.folder->filePath(QStringLiteral("history"));
    } else if (use == HistoryUse::Kept && place.kind == history::HistoryPlace::Kind::Sqlite &&
               place.file.startsWith(ownFolder())) {
        QDir().mkpath(ownFolder());
    }
    using Access = history::HistoryStore::Access;
    result.store = values::make<history::HistoryStore>(place, use == HistoryUse::Looked ? Access::ReadOnly
                                                                                        : Access::ReadWrite);
    return result;
}

} // namespace zan::host
