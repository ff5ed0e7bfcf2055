#include "zanbench/headless/RunReport.h"

#include "zanbench/Commands.h"

#include <utility>

namespace zan::host {

void RunReport::note(const QString& message)
{
    complain(message);
}

void RunReport::fail(const QString& message)
{
    ++m_failures;
    complain(message);
}

void RunReport::failAt(const QString& place, const QString& message)
{
    ++m_failures;
    printError(QStringLiteral("%1: %2\n").arg(place, message));
}

void RunReport::writeRefused(const QString& message)
{
    ++m_refusedWrites;
    complain(message);
}

std::int32_t RunReport::takeRefusedWrites() noexcept
{
    return std::exchange(m_refusedWrites, 0);
}

void RunReport::close()
{
    if (const std::int32_t refused = takeRefusedWrites(); refused > 0)
        fail(refused == 1 ? QStringLiteral("1 write was refused.")
                          : QStringLiteral("%1 writes were refused.").arg(refused));
}

} // namespace zan::host
