#include "zanbench/Boundary.h"

#include "values/RuntimeError.h"

#include <new>

namespace zan::host {

QString currentFailure()
{
    try {
        throw;
    } catch (const values::RuntimeError& error) {
        return QStringLiteral("run-time error %1: %2").arg(error.number()).arg(error.description());
    } catch (const std::bad_alloc&) {
        return QStringLiteral("out of memory");
    } catch (const std::exception& error) {
        return QString::fromLocal8Bit(error.what());
    } catch (...) { // a host's own class of objects may throw anything
        return QStringLiteral("an exception without a text");
    }
}

QString failureOf(const QString& doing, const std::function<void()>& step)
{
    try {
        step();
        return {};
    } catch (...) { // named by currentFailure
        return QStringLiteral("%1 failed: %2").arg(doing, currentFailure());
    }
}

} // namespace zan::host
