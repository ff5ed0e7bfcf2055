#pragma once

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <sys/syscall.h>
#include <unistd.h>

#include <thread>

namespace zan::halyard {

/// Whether every other thread of the process waits for something. One that has been woken counts as running from that
/// moment on, though it may not have had its turn yet.
inline bool othersAreWaiting()
{
    const auto own = QString::number(syscall(SYS_gettid));
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(threads.filePath(thread + QStringLiteral("/stat")));
        if (thread == own || !file.open(QIODevice::ReadOnly))
            continue; // ourselves, or one that has just ended
        const QByteArray line = file.readAll();
        const qsizetype afterName = line.lastIndexOf(')');
        if (afterName >= 0 && line.mid(afterName + 2, 1) != "S")
            return false;
    }
    return true;
}

/// Handles events until nothing is on its way any more: no thread works on anything, and no event is left to handle.
/// False when that does not come about within a generous time.
inline bool waitForQuiet()
{
    QAbstractEventDispatcher* const events = QThread::currentThread()->eventDispatcher();
    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(60'000)) {
        if (events->processEvents(QEventLoop::AllEvents))
            continue;
        // Looked at in this order: what a thread hands over before it waits is an event by then.
        if (othersAreWaiting() && !events->processEvents(QEventLoop::AllEvents))
            return true;
        std::this_thread::yield();
    }
    return false;
}

} // namespace zan::halyard
