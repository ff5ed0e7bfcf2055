#include "component/Site.h"

#include "binding/MemberTable.h"
#include "halyard/LoggerFactory.h"
#include "values/Failure.h"

namespace zan::component {

using values::ErrorNumber;

const binding::MemberTable& Site::members() const
{
    using S = Site;
    using binding::method;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("Site", nullptr,
                                    {
                                        method<&S::Open>("Open"),
                                        method<&S::Save>("Save"),
                                        readOnly<&S::Name>("Name"),
                                        readOnly<&S::Path>("Path"),
                                        readOnly<&S::LoggerUri>("LoggerUri"),
                                        readOnly<&S::LoggerProblem>("LoggerProblem"),
                                        readOnly<&S::IsSimulated>("IsSimulated"),
                                        readOnly<&S::Scheme>("Scheme"),
                                        readOnly<&S::Logger>("Logger"),
                                        method<&S::Connect>("Connect"),
                                        method<&S::Disconnect>("Disconnect"),
                                        readOnly<&S::State>("State"),
                                        readOnly<&S::WindowCount>("WindowCount"),
                                        readOnly<&S::WindowKey>("WindowKey"),
                                        readOnly<&S::Channel>("Channel"),
                                        method<&S::Read>("Read"),
                                        method<&S::Write>("Write"),
                                    });
    });
}

trellis::SchemeFile& Site::scheme() const
{
    return *values::given(m_scheme);
}

site::Logger& Site::logger() const
{
    return *values::given(m_logger);
}

void Site::Open(const QString& file, const std::optional<QString>& loggerUri)
{
    const trellis::OpenResult opened = trellis::SchemeFile::open(file);
    if (!opened)
        values::raise(ErrorNumber::InvalidCall, opened.error.text());
    const QString asked = loggerUri.value_or(QString());
    const QString uri = asked.isEmpty() ? opened.scheme->loggerUri() : asked;
    halyard::LoggerResult made;
    if (!uri.isEmpty())
        made = halyard::createLogger(uri, opened.scheme);
    if (!made.logger && !asked.isEmpty())
        values::raise(ErrorNumber::InvalidCall, made.error);
    const bool isUsable = bool(made.logger);
    if (!isUsable) {
        const QString reason = uri.isEmpty() ? QStringLiteral("The scheme names no logger.") : made.error;
        made.logger = halyard::createUnavailableLogger(reason, opened.scheme);
    }
    m_scheme = opened.scheme;
    m_logger = made.logger;
    m_loggerUri = isUsable ? uri : QString();
    m_loggerProblem = made.error;
    m_isSimulated = made.isSimulated;
}

void Site::Save()
{
    scheme().Save();
}

QString Site::Name() const
{
    return scheme().Name();
}

QString Site::Path() const
{
    return scheme().path();
}

QString Site::LoggerUri() const
{
    static_cast<void>(scheme());
    return m_loggerUri;
}

QString Site::LoggerProblem() const
{
    static_cast<void>(scheme());
    return m_loggerProblem;
}

bool Site::IsSimulated() const
{
    static_cast<void>(scheme());
    return m_isSimulated;
}

Ref<site::Scheme> Site::Scheme() const
{
    return Ref<site::Scheme>(&scheme());
}

Ref<site::Logger> Site::Logger() const
{
    return Ref<site::Logger>(&logger());
}

void Site::Connect()
{
    const Ref<site::Logger> logger = Logger();
    if (!(logger->Actions() & site::LiveAction))
        logger->AddAction(site::LiveAction);
    values::given(logger->Link())->Connect();
}

void Site::Disconnect()
{
    const Ref<site::Logger> logger = Logger();
    logger->RemoveActions(logger->Actions());
    values::given(logger->Link())->Disconnect();
}

site::LinkState Site::State() const
{
    return values::given(logger().Link())->State();
}

std::int32_t Site::WindowCount() const
{
    return values::given(scheme().Windows())->Count();
}

QString Site::WindowKey(std::int32_t index) const
{
    return values::given(values::given(scheme().Windows())->Item(Variant(index)))->Key();
}

Ref<site::Channel> Site::Channel(const QString& bind) const
{
    const Ref<site::Channel> channel = site::findChannel(scheme().Windows(), bind);
    if (!channel)
        values::raise(ErrorNumber::SubscriptOutOfRange, QStringLiteral("There is no channel \"%1\".").arg(bind));
    return channel;
}

Variant Site::Read(const QString& bind) const
{
    return Channel(bind)->Value();
}

void Site::Write(const QString& bind, const Variant& value)
{
    const Ref<site::Channel> channel = Channel(bind);
    values::given(logger().Live())->WriteChannel(channel, value);
}

} // namespace zan::component
