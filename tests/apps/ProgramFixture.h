#pragma once

#include "HostFixture.h"

#include <QProcess>

/// What became of a run of the program.
struct Outcome
{
    int code = -1; ///< -1 when it crashed or did not end
    QString out;
    QString err;
};

/// Runs the program as a shell does, with settings and a home of its own.
class ProgramFixture : public HostTest
{
protected:
    /// From within this folder, without these variables of the environment.
    Outcome run(const QStringList& arguments, const QStringList& unset = {}, const QString& folder = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), m_folder.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.path());
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path()); // else the toolkit complains
        for (const QString& name : unset)
            environment.remove(name);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder);
        process.start(QStringLiteral(ZANBENCH_PROGRAM), arguments);
        Outcome outcome;
        if (!process.waitForFinished(60'000)) {
            process.kill();
            process.waitForFinished();
            return outcome;
        }
        outcome.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        outcome.out = QString::fromUtf8(process.readAllStandardOutput());
        outcome.err = QString::fromUtf8(process.readAllStandardError());
        return outcome;
    }
    /// Runs this text as a script file s.vbs of the fixture's folder.
    Outcome script(const QByteArray& text, const QStringList& options = {}) const
    {
        write("s.vbs", text);
        return run(QStringList{"script", path("s.vbs")} + options);
    }
    void makeFolder(const QString& name) const { QDir(m_folder.path()).mkdir(name); }
};
