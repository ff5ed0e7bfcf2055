#include "history/HistoryPlace.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QUrl>
#include <QUrlQuery>

namespace zan::history {

namespace {

constexpr std::int64_t MostDays = 36'500;
constexpr std::int64_t MostMegabytes = 10'000'000;
constexpr qsizetype LongestName = 50;

QString realPath(const QString& file)
{
    const QString canonical = QFileInfo(file).canonicalFilePath();
    return canonical.isEmpty() ? QFileInfo(file).absoluteFilePath() : canonical;
}

/// The file of a scheme in the user's own folder: its name for the eye, and what tells it from others of that name.
QString ownFile(const QString& scheme, const QString& ownFolder)
{
    const QString path = realPath(scheme);
    const QByteArray digest = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
    return QStringLiteral("%1/%2-%3.history")
        .arg(ownFolder, QFileInfo(path).fileName().left(LongestName), QString::fromLatin1(digest));
}

QString besideScheme(const QString& scheme, const QString& ownFolder)
{
    const QString beside = realPath(scheme) + QStringLiteral(".history");
    const bool canBeKept = QFileInfo::exists(beside) || QFileInfo(QFileInfo(beside).path()).isWritable();
    return canBeKept || ownFolder.isEmpty() ? beside : ownFile(scheme, ownFolder);
}

/// A name for the tables' schema: small letters, digits and underlines.
QString schemaName(const QString& site)
{
    QString name = QStringLiteral("zan_");
    for (const QChar letter : site.toLower().left(LongestName))
        name += letter.unicode() < 128 && letter.isLetterOrNumber() ? letter : QChar(u'_');
    return name;
}

QString takeOption(const QString& name, const QString& value, HistoryPlace& place)
{
    const bool isServer = place.kind == HistoryPlace::Kind::Postgres;
    if (name == QLatin1String("site") && isServer && !value.isEmpty()) {
        place.schema = schemaName(value);
        return {};
    }
    const bool isDays = name == QLatin1String("days");
    if (!isDays && (name != QLatin1String("megabytes") || isServer))
        return QStringLiteral("a history has no option \"%1\" here").arg(name.left(LongestName));
    bool isNumber = false;
    const qlonglong number = value.toLongLong(&isNumber);
    const std::int64_t most = isDays ? MostDays : MostMegabytes;
    if (!isNumber || number < 0 || number > most)
        return QStringLiteral("the option \"%1\" takes a number from 0 to %2").arg(name).arg(most);
    (isDays ? place.days : place.megabytes) = number;
    return {};
}

QString takeServer(const QString& text, const QString& scheme, HistoryPlace& place)
{
    const QUrl url(text, QUrl::StrictMode);
    place.kind = HistoryPlace::Kind::Postgres;
    place.megabytes = 0;
    place.host = url.host();
    place.port = url.port(5432);
    place.database = url.path(QUrl::FullyDecoded).mid(1);
    place.user = url.userName(QUrl::FullyDecoded);
    place.password = url.password(QUrl::FullyDecoded);
    place.schema = schemaName(QFileInfo(scheme).completeBaseName());
    if (!url.isValid() || place.database.isEmpty() || place.database.contains(u'/'))
        return QStringLiteral("a server's history is named as in \"postgresql://user@host/database\"");
    return {};
}

} // namespace

QString HistoryPlace::text() const
{
    switch (kind) {
    case Kind::Sqlite:
        return file;
    case Kind::Postgres:
        return QStringLiteral("postgresql://%1:%2/%3 (%4)").arg(host).arg(port).arg(database, schema);
    default:
        return QStringLiteral("none");
    }
}

QString HistoryPlace::parse(const QString& text, const QString& scheme, const QString& ownFolder,
                            HistoryPlace& place)
{
    place = {};
    const QString trimmed = text.trimmed();
    if (trimmed.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0)
        return {};
    const qsizetype mark = trimmed.indexOf(u'?');
    const QString name = mark < 0 ? trimmed : trimmed.left(mark);
    const QString decoded = QUrl::fromPercentEncoding(name.toUtf8());
    const auto begins = [&](const char* word) { return name.startsWith(QLatin1String(word), Qt::CaseInsensitive); };
    place.kind = Kind::Sqlite;
    QString error;
    if (begins("postgresql://")) {
        error = takeServer(name, scheme, place);
    } else if (name.isEmpty()) {
        place.file = besideScheme(scheme, ownFolder);
    } else if (name.compare(QLatin1String("user:"), Qt::CaseInsensitive) == 0) {
        place.file = ownFile(scheme, ownFolder);
    } else if (begins("sqlite:") && decoded.size() > 7 && !decoded.contains(QChar(0))) {
        place.file = QDir(QFileInfo(realPath(scheme)).path()).absoluteFilePath(decoded.mid(7));
    } else {
        error = QStringLiteral("a history is \"none\", \"user:\", \"sqlite:FILE\" or \"postgresql://...\"");
    }
    if (mark >= 0) {
        const QUrlQuery options(trimmed.mid(mark + 1));
        for (const auto& [option, value] : options.queryItems(QUrl::FullyDecoded)) {
            if (error.isEmpty())
                error = takeOption(option.toLower(), value, place);
        }
    }
    if (error.isEmpty())
        return {};
    place = {};
    return QStringLiteral("The scheme's HISTORY cannot be used: %1.").arg(error);
}

} // namespace zan::history
