#include "zanbench/HostApplication.h"

#include "zandata/ZanDataControls.h"

#include "zanbench/Boundary.h"

namespace zan::host {

HostApplication::HostApplication(ProcessArguments process)
    : QApplication(process.count, process.words)
    , m_report(&complain)
{
    setApplicationName(QStringLiteral("zanbench"));
    zandata::provideControls();
}

bool HostApplication::notify(QObject* receiver, QEvent* event)
{
    // The receiver may be gone when its handler has thrown; the name of its class stays.
    const char* className = receiver ? receiver->metaObject()->className() : "nobody";
    try {
        return QApplication::notify(receiver, event);
    } catch (...) { // the event boundary
        m_report(QStringLiteral("An event of %1 failed: %2").arg(QLatin1String(className), currentFailure()));
        return true;
    }
}

} // namespace zan::host
