#pragma once

#include "ecan/Fetched.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <optional>

class QNetworkAccessManager;
class QNetworkReply;

namespace zan::ecan {

/// What a fetch may take. Exceeding any of it ends the fetch.
struct FetchLimits
{
    std::chrono::milliseconds time{20'000}; ///< from the first request to the last byte, redirects included
    qint64 bytes = 1024 * 1024;             ///< of the body, counted while it arrives
    int redirects = 5;
};

/// One address being fetched with GET. It asks for no cookies and sends none, names no user to anybody, follows a
/// limited number of redirects to addresses that may be fetched themselves (never from https to http), and takes no
/// compressed answers, so that what is counted is what arrives.
class HttpFetch : public QObject
{
    Q_OBJECT
public:
    /// The manager must outlive the fetch.
    HttpFetch(QNetworkAccessManager& manager, const FetchLimits& limits, QObject* parent = nullptr);
    /// Ends what is under way, silently.
    ~HttpFetch() override;

    /// Begins with an address that isFetched(). ended() comes later, once, never from this call.
    void start(const QUrl& address);
    /// What has been fetched, once it has ended; nothing for a failure.
    const std::optional<Fetched>& result() const noexcept { return m_result; }
    /// Why it failed, in words for a log or a test.
    const QString& failure() const noexcept { return m_failure; }

Q_SIGNALS:
    void ended();

private:
    void request(const QUrl& address);
    void readHead();
    void follow(const QUrl& target);
    void readBody();
    void replyFinished();
    void fail(const QString& why);
    void end();
    void dropReply();

    QNetworkAccessManager& m_manager;
    FetchLimits m_limits;
    QNetworkReply* m_reply = nullptr; ///< the manager's; dropped by dropReply()
    QTimer m_timer;
    QByteArray m_body;
    int m_redirects = 0;
    std::optional<Fetched> m_result;
    QString m_failure;
};

} // namespace zan::ecan
