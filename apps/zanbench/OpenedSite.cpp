#include "zanbench/OpenedSite.h"

#include "halyard/LoggerFactory.h"

#include <QFileInfo>

namespace zan::host {

namespace {

/// Whether a window only holds channels: the reserved keys, unless somebody has placed controls on them.
bool isChannelStore(site::SchemeWindow& window)
{
    const QString key = window.Key();
    if (key != QLatin1String("SCHEME") && key != QLatin1String("LOGGER") && key != QLatin1String("RTD"))
        return false;
    return !window.XML().child(values::Name("CONTROL"));
}

} // namespace

OpenedSiteResult OpenedSite::open(const QString& path, const QString& loggerUri, HistoryUse use)
{
    const trellis::OpenResult opened = trellis::SchemeFile::open(path);
    return opened ? serve(opened.scheme, loggerUri, use) : OpenedSiteResult{nullptr, opened.error.text()};
}

OpenedSiteResult OpenedSite::serve(const Ref<trellis::SchemeFile>& scheme, const QString& loggerUri, HistoryUse use)
{
    std::unique_ptr<OpenedSite> site(new OpenedSite);
    site->m_scheme = scheme;
    site->m_history = SiteHistory::open(*scheme, use);
    const QString uri = loggerUri.isEmpty() ? scheme->loggerUri() : loggerUri;
    if (!uri.isEmpty()) {
        halyard::LoggerResult made =
            halyard::createLogger(uri, scheme, halyard::systemClock(), site->m_history.store);
        if (made.logger) {
            site->m_logger = made.logger;
            site->m_loggerUri = uri;
            site->m_isSimulated = made.isSimulated;
            return {std::move(site), {}};
        }
        if (!loggerUri.isEmpty())
            return {nullptr, made.error};
        site->m_loggerProblem = made.error;
    }
    // A panel reaches its scheme through its logger. The one that stands in has no data, least of all made-up ones.
    const QString reason =
        site->m_loggerProblem.isEmpty() ? QStringLiteral("The scheme names no logger.") : site->m_loggerProblem;
    site->m_logger =
        halyard::createUnavailableLogger(reason, scheme, halyard::systemClock(), site->m_history.store);
    return {std::move(site), {}};
}

QString OpenedSite::historyProblem() const
{
    return m_history.store ? m_history.store->State() : m_history.problem;
}

QStringList OpenedSite::panelKeys() const
{
    QStringList keys;
    const Ref<site::SchemeWindows> windows = m_scheme->Windows();
    for (std::int32_t i = 1; i <= windows->Count(); ++i) {
        const Ref<site::SchemeWindow> window = windows->Item(binding::Variant(i));
        if (window && !isChannelStore(*window))
            keys.append(window->Key());
    }
    return keys;
}

std::optional<QString> OpenedSite::windowKey(const QString& key) const
{
    const Ref<site::SchemeWindow> window = m_scheme->Windows()->Item(binding::Variant(key));
    return window ? std::optional(window->Key()) : std::nullopt;
}

QString OpenedSite::displayName() const
{
    const QString name = m_scheme->Name();
    return name.isEmpty() ? QFileInfo(m_scheme->path()).completeBaseName() : name;
}

QString OpenedSite::writeFailureText(int address, const QString& message) const
{
    const Ref<site::SchemeWindows> windows = m_scheme->Windows();
    for (std::int32_t i = 1; i <= windows->Count(); ++i) {
        const Ref<site::SchemeWindow> window = windows->Item(binding::Variant(i));
        for (std::int32_t k = 1; window && k <= window->Count(); ++k) {
            const Ref<site::Channel> channel = window->Item(binding::Variant(k));
            if (channel && channel->BaseAddress() == address)
                return QStringLiteral("%1 (%2|%3): %4")
                    .arg(channel->Label(), window->Key(), channel->Key(), message);
        }
    }
    return message;
}

site::LinkState OpenedSite::linkState() const
{
    return m_logger->Link()->State();
}

void OpenedSite::toggleLink()
{
    const site::LinkState state = linkState();
    if (state == site::LinkState::NotConnected || state == site::LinkState::Broken) {
        connectLink();
        return;
    }
    m_logger->RemoveActions(m_logger->Actions());
    m_logger->Link()->Disconnect();
}

void OpenedSite::connectLink()
{
    if (!canConnect())
        return;
    if (!(m_logger->Actions() & site::LiveAction))
        m_logger->AddAction(site::LiveAction);
    m_logger->Link()->Connect();
}

} // namespace zan::host
