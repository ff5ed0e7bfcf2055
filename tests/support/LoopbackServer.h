#pragma once

#include <QEventLoop>
#include <QHostAddress>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace zan::test {

/// Runs the event loop until something holds; false when it has not come to hold for far too long.
template <class Condition>
bool waitUntil(Condition&& holds)
{
    constexpr int FarTooLong = 30'000;
    QEventLoop loop; // a loop of its own: what is to be deleted later goes too
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (holds())
            loop.quit();
    });
    look.start(1);
    QTimer::singleShot(FarTooLong, &loop, &QEventLoop::quit);
    if (!holds())
        loop.exec();
    return holds();
}

/// A real HTTP server on the loopback address that says exactly the bytes that a test gives it, and remembers what it
/// was asked.
class LoopbackServer
{
public:
    struct Request
    {
        QByteArray path;
        QByteArray head; ///< everything up to the empty line
    };
    using Answer = std::function<void(QTcpSocket& socket)>;

    LoopbackServer()
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { accept(); });
    }

    /// "127.0.0.1:port".
    QString host() const { return QStringLiteral("127.0.0.1:%1").arg(m_server.serverPort()); }
    QString url(const char* path) const { return QStringLiteral("http://") + host() + QLatin1String(path); }

    /// What is done with a request for this path. Any other path is answered with 404.
    void on(const char* path, Answer answer) { m_answers[path] = std::move(answer); }
    /// A whole answer of status 200.
    void serve(const char* path, const QByteArray& body, const QByteArray& type = "text/xml")
    {
        serveWith(path, body, "Content-Type: " + type + "\r\n");
    }
    void serveWith(const char* path, const QByteArray& body, const QByteArray& headers)
    {
        on(path, sending("HTTP/1.1 200 OK\r\n" + headers + lengthOf(body) + "\r\n" + body));
    }
    void redirect(const char* path, const QByteArray& target, int status = 302)
    {
        on(path, sending("HTTP/1.1 " + QByteArray::number(status) + " Moved\r\nLocation: " + target +
                         "\r\nContent-Length: 0\r\n\r\n"));
    }
    /// Requests for this path stay without an answer until release() answers them.
    void hold(const char* path)
    {
        on(path, [this](QTcpSocket& socket) { m_held.emplace_back(&socket); });
    }
    void release(const QByteArray& body, const QByteArray& type = "text/xml")
    {
        const auto send =
            sending("HTTP/1.1 200 OK\r\nContent-Type: " + type + "\r\n" + lengthOf(body) + "\r\n" + body);
        for (const QPointer<QTcpSocket>& socket : std::exchange(m_held, {})) {
            if (socket)
                send(*socket);
        }
    }
    /// How many of those who wait for an answer have gone.
    int leftWaiting() const
    {
        int gone = 0;
        for (const QPointer<QTcpSocket>& socket : m_held)
            gone += !socket || socket->state() != QAbstractSocket::ConnectedState;
        return gone;
    }
    static Answer sending(const QByteArray& bytes)
    {
        return [bytes](QTcpSocket& socket) {
            socket.write(bytes);
            socket.disconnectFromHost(); // once all is written
        };
    }
    static QByteArray lengthOf(const QByteArray& body)
    {
        return "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    }

    const std::vector<Request>& requests() const { return m_requests; }
    int count() const { return int(m_requests.size()); }
    int connections() const { return m_connections; }

private:
    void accept()
    {
        while (QTcpSocket* socket = m_server.nextPendingConnection()) {
            ++m_connections;
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, head = QByteArray()]() mutable {
                head += socket->readAll();
                if (!head.contains("\r\n\r\n"))
                    return;
                handle(*socket, std::exchange(head, {}));
            });
        }
    }
    void handle(QTcpSocket& socket, const QByteArray& head)
    {
        const QByteArray path = head.split(' ').value(1);
        m_requests.push_back({path, head});
        const auto found = m_answers.find(path.toStdString());
        const Answer answer = found == m_answers.end()
                                  ? sending("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n")
                                  : found->second;
        answer(socket);
    }

    QTcpServer m_server;
    std::map<std::string, Answer> m_answers;
    std::vector<Request> m_requests;
    std::vector<QPointer<QTcpSocket>> m_held;
    int m_connections = 0;
};

} // namespace zan::test
