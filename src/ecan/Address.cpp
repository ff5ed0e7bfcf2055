#include "ecan/Address.h"

namespace zan::ecan {

namespace {

const QString ServicePath = QStringLiteral("/lowflow/Service.svc/Xml/Restrictions/Site/");
constexpr qsizetype LongestAddress = 4000;

/// The server that a host text names, scheme included.
QUrl serverOf(const QString& text)
{
    const QString server = text.trimmed();
    return QUrl(server.contains(QLatin1String("://")) ? server : QStringLiteral("http://") + server,
                QUrl::StrictMode);
}

} // namespace

bool isFetched(const QUrl& url)
{
    const QString scheme = url.scheme(); // in lower case
    return url.isValid() && (scheme == QLatin1String("http") || scheme == QLatin1String("https")) &&
           !url.host().isEmpty() && url.userInfo().isEmpty() && !url.authority().contains(u'@');
}

QUrl webAddress(const QString& text)
{
    if (text.size() > LongestAddress)
        return {};
    const QUrl url(text.trimmed());
    return isFetched(url) ? url : QUrl();
}

bool isHost(const QString& text)
{
    const QUrl server = serverOf(text);
    const bool isBare = server.path().isEmpty() || server.path() == QLatin1String("/");
    return text.size() <= LongestAddress && isFetched(server) && isBare && !server.hasQuery() &&
           !server.hasFragment();
}

QString serviceAddress(const QString& host, const QString& site)
{
    if (host.isEmpty())
        return {};
    const QString server = serverOf(host).toString(QUrl::FullyEncoded | QUrl::RemovePath);
    return server + ServicePath + QString::fromLatin1(QUrl::toPercentEncoding(site));
}

} // namespace zan::ecan
