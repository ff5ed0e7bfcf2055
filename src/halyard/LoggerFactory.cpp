#include "halyard/LoggerFactory.h"

#include "halyard/HalyardLogger.h"
#include "halyard/SimulatedDriver.h"
#include "halyard/UnavailableDriver.h"

#include <map>

namespace zan::halyard {

namespace {

using Registry = std::map<QString, DriverFactory>;

std::unique_ptr<Driver> createSimulated(const DriverRequest& request, QString& error)
{
    if (!request.uri.address.isEmpty())
        error = QStringLiteral("A simulated logger has no address: options follow as in \"sim:?seed=7\".");
    SimulatedOptions options = SimulatedOptions::take(request.options, request.order);
    options.logPeriod = request.logPeriod;
    return std::make_unique<SimulatedDriver>(std::move(options), request.clock);
}

Registry& registry()
{
    static Registry drivers{{QStringLiteral("sim"), createSimulated}};
    return drivers;
}

LiveSettings takeSettings(UriOptions& options)
{
    constexpr std::int64_t day = 86'400'000;
    LiveSettings settings;
    settings.period = options.integer(QStringLiteral("period"), settings.period, 10, day);
    settings.logPeriod = options.integer(QStringLiteral("log"), settings.logPeriod, 10, day);
    settings.records = std::int32_t(options.integer(QStringLiteral("records"), settings.records, 1, 32'767));
    const QStringList orders{QStringLiteral("big"), QStringLiteral("little"), QStringLiteral("big-swapped"),
                             QStringLiteral("little-swapped")};
    settings.order = ByteOrder(options.choice(QStringLiteral("endian"), orders));
    return settings;
}

} // namespace

bool registerDriver(const QString& scheme, DriverFactory factory)
{
    return registry().emplace(scheme.toLower(), std::move(factory)).second;
}

QStringList driverSchemes()
{
    QStringList schemes;
    for (const auto& entry : registry())
        schemes.append(entry.first);
    return schemes;
}

LoggerResult createLogger(const QString& uri, const values::Ref<site::Scheme>& scheme,
                          const std::shared_ptr<Clock>& clock, const values::Ref<site::HistoryKeeper>& history)
{
    LoggerUri parsed;
    if (const QString error = LoggerUri::parse(uri, parsed); !error.isEmpty())
        return {nullptr, error, false};
    const auto factory = registry().find(parsed.scheme);
    if (factory == registry().end()) {
        return {nullptr,
                QStringLiteral("There is no kind of logger called \"%1\"; there is: %2.")
                    .arg(parsed.scheme.left(60), driverSchemes().join(QStringLiteral(", "))),
                false};
    }
    UriOptions options(parsed.options);
    const LiveSettings settings = takeSettings(options);
    QString error;
    std::unique_ptr<Driver> driver =
        factory->second({parsed, options, settings.order, clock, settings.logPeriod}, error);
    if (error.isEmpty())
        error = options.error();
    if (error.isEmpty() && !driver)
        error = QStringLiteral("The logger could not be made.");
    if (!error.isEmpty())
        return {nullptr, error, false};
    const bool isSimulated = driver->isSimulated();
    return {values::make<HalyardLogger>(std::move(driver), scheme, clock, settings, history), {}, isSimulated};
}

values::Ref<site::Logger> createUnavailableLogger(const QString& reason, const values::Ref<site::Scheme>& scheme,
                                                  const std::shared_ptr<Clock>& clock,
                                                  const values::Ref<site::HistoryKeeper>& history)
{
    return values::make<HalyardLogger>(std::make_unique<UnavailableDriver>(reason), scheme, clock, LiveSettings(),
                                       history);
}

} // namespace zan::halyard
