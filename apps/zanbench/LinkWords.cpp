#include "zanbench/LinkWords.h"

#include "site/Logger.h"

namespace zan::host {

QString linkStateText(int state)
{
    switch (static_cast<site::LinkState>(state)) {
    case site::LinkState::NotConnected:
        return QStringLiteral("Not connected");
    case site::LinkState::Connecting:
        return QStringLiteral("Connecting");
    case site::LinkState::Connected:
        return QStringLiteral("Connected");
    case site::LinkState::Disconnecting:
        return QStringLiteral("Disconnecting");
    case site::LinkState::Broken:
        return QStringLiteral("Connection broken");
    }
    return QStringLiteral("Unknown link state %1").arg(state);
}

QString dataAgeText(std::optional<std::int64_t> milliseconds)
{
    if (!milliseconds)
        return QStringLiteral("No data yet");
    const std::int64_t seconds = std::max<std::int64_t>(0, *milliseconds) / 1000;
    if (seconds < 1)
        return QStringLiteral("Data just now");
    if (seconds < 60)
        return QStringLiteral("Data %1 s old").arg(seconds);
    if (seconds < 60 * 60)
        return QStringLiteral("Data %1 min old").arg(seconds / 60);
    if (seconds < 48 * 60 * 60)
        return QStringLiteral("Data %1 h old").arg(seconds / (60 * 60));
    return QStringLiteral("Data %1 days old").arg(seconds / (24 * 60 * 60));
}

} // namespace zan::host
