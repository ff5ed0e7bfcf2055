#pragma once

#include "history/HistoryPlace.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace zan::history {

/// A PostgreSQL server of a test's own, on a socket in a folder of its own; gone with the object.
class PostgresServer
{
public:
    PostgresServer() { m_problem = start(); }
    ~PostgresServer()
    {
        if (m_problem.isEmpty())
            run(QStringLiteral("pg_ctl"), {"-D", data(), "-m", "immediate", "-w", "stop"});
    }
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// Why there is no server; empty when there is one.
    QString problem() const { return m_problem; }
    HistoryPlace place() const
    {
        HistoryPlace place;
        place.kind = HistoryPlace::Kind::Postgres;
        place.host = m_folder.path();
        place.database = QStringLiteral("postgres");
        place.user = QStringLiteral("zan");
        place.schema = QStringLiteral("zan_weir");
        place.megabytes = 0;
        return place;
    }
    /// Of the server itself, whose children serve; 0 when it cannot be found out.
    pid_t process() const
    {
        QFile file(data() + QStringLiteral("/postmaster.pid"));
        return file.open(QIODevice::ReadOnly) ? pid_t(file.readLine().trimmed().toInt()) : 0;
    }
    bool stop() { return run(QStringLiteral("pg_ctl"), {"-D", data(), "-m", "fast", "-w", "stop"}); }
    bool restart() { return run(QStringLiteral("pg_ctl"), startArguments()); }

private:
    QString data() const { return m_folder.filePath(QStringLiteral("data")); }
    QStringList startArguments() const
    {
        const QString options =
            QStringLiteral("-c listen_addresses='' -c unix_socket_directories='%1'").arg(m_folder.path());
        return {"-D", data(), "-l",   m_folder.filePath(QStringLiteral("log")), "-o", options, "-w",
                "-t", "60",   "start"};
    }

    QString start()
    {
        const QDir versions(QStringLiteral("/usr/lib/postgresql"));
        QStringList folders;
        for (const QString& version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
            folders.prepend(versions.filePath(version + QStringLiteral("/bin")));
        const QString program = QStandardPaths::findExecutable(QStringLiteral("initdb"), folders);
        if (program.isEmpty())
            return QStringLiteral("the package postgresql is not installed");
        m_programs = QFileInfo(program).path();
        if (geteuid() == 0 && QStandardPaths::findExecutable(QStringLiteral("setpriv")).isEmpty())
            return QStringLiteral("the server does not run as root, and setpriv is missing");
        if (geteuid() == 0 && ::chown(QFile::encodeName(m_folder.path()).constData(), Nobody, Nobody) != 0)
            return QStringLiteral("its folder cannot be given to another user");
        ::chmod(QFile::encodeName(m_folder.path()).constData(), 0755);
        if (!run(QStringLiteral("initdb"), {"-D", data(), "-U", "zan", "-A", "trust", "-E", "UTF8", "--no-sync"}))
            return QStringLiteral("initdb failed: ") + m_said;
        if (!run(QStringLiteral("pg_ctl"), startArguments()))
            return QStringLiteral("the server did not start: ") + m_said;
        return {};
    }
    bool run(const QString& program, QStringList arguments)
    {
        QString path = m_programs + QLatin1Char('/') + program;
        if (geteuid() == 0) { // the server refuses to run as root
            arguments = QStringList{"--reuid=65534", "--regid=65534", "--clear-groups", path} + arguments;
            path = QStringLiteral("setpriv");
        }
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.setStandardOutputFile(m_folder.filePath(QStringLiteral("said")));
        process.setStandardErrorFile(m_folder.filePath(QStringLiteral("said")), QIODevice::Append);
        process.start(path, arguments);
        const bool isDone = process.waitForFinished(120'000) && process.exitStatus() == QProcess::NormalExit &&
                            process.exitCode() == 0;
        QFile said(m_folder.filePath(QStringLiteral("said")));
        m_said = said.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(said.readAll()).trimmed() : QString();
        return isDone;
    }

    static constexpr unsigned Nobody = 65534;
    QTemporaryDir m_folder{QStringLiteral("/tmp/zanpg-XXXXXX")}; // short: a socket's path has its limit
    QString m_programs;
    QString m_said;
    QString m_problem;
};

} // namespace zan::history
