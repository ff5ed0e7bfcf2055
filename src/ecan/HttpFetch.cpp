#include "ecan/HttpFetch.h"

#include "ecan/Address.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

namespace zan::ecan {

namespace {

/// What the toolkit may read ahead of us.
constexpr qint64 ReadAhead = 64 * 1024;
constexpr int StatusOk = 200;

QNetworkRequest requestFor(const QUrl& address)
{
    using R = QNetworkRequest;
    R request(address);
    request.setAttribute(R::RedirectPolicyAttribute, R::ManualRedirectPolicy);
    request.setAttribute(R::CookieLoadControlAttribute, R::Manual);
    request.setAttribute(R::CookieSaveControlAttribute, R::Manual);
    request.setAttribute(R::AuthenticationReuseAttribute, R::Manual);
    request.setAttribute(R::CacheLoadControlAttribute, R::AlwaysNetwork);
    request.setAttribute(R::CacheSaveControlAttribute, false);
    request.setAttribute(R::Http2AllowedAttribute, false);
    request.setRawHeader("User-Agent", "ZanBench");
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

int statusOf(const QNetworkReply& reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

} // namespace

HttpFetch::HttpFetch(QNetworkAccessManager& manager, const FetchLimits& limits, QObject* parent)
    : QObject(parent)
    , m_manager(manager)
    , m_limits(limits)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { fail(QStringLiteral("The server took too long.")); });
}

HttpFetch::~HttpFetch()
{
    delete m_reply; // at once: nobody ends a fetch that is just being told something
}

void HttpFetch::start(const QUrl& address)
{
    m_timer.start(m_limits.time);
    request(address);
}

void HttpFetch::request(const QUrl& address)
{
    m_body.clear();
    dropReply();
    m_reply = m_manager.get(requestFor(address));
    m_reply->setReadBufferSize(ReadAhead);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpFetch::readHead);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpFetch::readBody);
    connect(m_reply, &QNetworkReply::finished, this, &HttpFetch::replyFinished);
}

/// What is no page is not read at all.
void HttpFetch::readHead()
{
    const int status = statusOf(*m_reply);
    const QByteArray location = m_reply->rawHeader("Location");
    if (isRedirect(status) && !location.isEmpty())
        return follow(m_reply->url().resolved(QUrl::fromEncoded(location)));
    if (status != StatusOk)
        return fail(QStringLiteral("The server answered with status %1.").arg(status));
    if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_limits.bytes)
        fail(QStringLiteral("The answer is larger than %1 bytes.").arg(m_limits.bytes));
}

void HttpFetch::follow(const QUrl& target)
{
    const bool isLessSafe =
        m_reply->url().scheme() == QLatin1String("https") && target.scheme() != QLatin1String("https");
    if (++m_redirects > m_limits.redirects)
        fail(QStringLiteral("The server redirects more than %1 times.").arg(m_limits.redirects));
    else if (!isFetched(target) || isLessSafe)
        fail(QStringLiteral("The server redirects to an address that is not fetched."));
    else
        request(target);
}

void HttpFetch::readBody()
{
    m_body += m_reply->read(m_limits.bytes - m_body.size() + 1);
    if (m_body.size() > m_limits.bytes)
        fail(QStringLiteral("The answer is larger than %1 bytes.").arg(m_limits.bytes));
}

void HttpFetch::replyFinished()
{
    if (m_reply->error() != QNetworkReply::NoError)
        return fail(m_reply->errorString());
    readBody();
    if (!m_reply)
        return; // the last piece was too much
    m_result = Fetched{m_body, m_reply->rawHeader("Content-Type")};
    end();
}

/// It may be in the middle of telling us something, and goes later; its connection goes with it.
void HttpFetch::dropReply()
{
    if (!m_reply)
        return;
    m_reply->disconnect(this);
    std::exchange(m_reply, nullptr)->deleteLater();
}

void HttpFetch::fail(const QString& why)
{
    m_failure = why;
    end();
}

void HttpFetch::end()
{
    m_timer.stop();
    dropReply();
    Q_EMIT ended();
}

} // namespace zan::ecan
