#include "zanbench/headless/TestProcess.h"

#include "zanbench/CommandLine.h"

#include <QProcess>

#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/prctl.h>
#endif

namespace zan::host {

namespace {

QString reasonOf(const QProcess& process)
{
    if (process.exitStatus() == QProcess::CrashExit)
        return QStringLiteral("crashed, signal %1").arg(process.exitCode());
    // A failure of the usual kind has been told by the run itself.
    return process.exitCode() == Failure ? QString() : QStringLiteral("code %1").arg(process.exitCode());
}

} // namespace

TestOutcome runTestProcess(const QString& program, const QStringList& arguments, std::chrono::seconds timeout)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
#ifdef Q_OS_LINUX
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
#endif
    process.start(program, arguments);
    if (!process.waitForStarted())
        return {false, QStringLiteral("did not start: %1").arg(process.errorString())};
    const auto milliseconds = std::chrono::milliseconds(timeout).count();
    if (!process.waitForFinished(int(milliseconds)) && process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
        return {false, QStringLiteral("no end after %1 s").arg(timeout.count())};
    }
    const bool passed = process.exitStatus() == QProcess::NormalExit && process.exitCode() == Success;
    return {passed, passed ? QString() : reasonOf(process)};
}

} // namespace zan::host
