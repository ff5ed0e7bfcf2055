#pragma once

#include "halyard/Clock.h"
#include "halyard/Driver.h"
#include "halyard/LoggerUri.h"
#include "halyard/RawValue.h"
#include "site/HistoryKeeper.h"
#include "site/Logger.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace zan::halyard {

/// What a kind of driver is made of.
struct DriverRequest
{
    const LoggerUri& uri;
    UriOptions& options; ///< the driver takes its own; mistakes in them are noted there
    ByteOrder order;     ///< the URI's byte order, taken already
    std::shared_ptr<Clock> clock;
    std::int64_t logPeriod = 5000; ///< milliseconds from record to record, taken already
};

/// Makes a driver. Null with a message when the URI does not do (a mistake noted in the options needs no message).
using DriverFactory = std::function<std::unique_ptr<Driver>(const DriverRequest& request, QString& error)>;

/// Makes URIs of a scheme known to createLogger(). False when the scheme is taken. User-interface thread.
bool registerDriver(const QString& scheme, DriverFactory factory);
/// Every scheme that is known, in order of name; "sim" always is.
QStringList driverSchemes();

/// A logger, or why there is none.
struct LoggerResult
{
    values::Ref<site::Logger> logger;
    QString error;            ///< for the user, naming the option that is wrong; empty when there is a logger
    bool isSimulated = false; ///< its values are made up; a host that shows them says so
};

/// Makes the logger that a URI names, over the channels of a scheme (which may be null). It does not connect. Its records
/// go to the history as well, if there is one.
[[nodiscard]] LoggerResult createLogger(const QString& uri, const values::Ref<site::Scheme>& scheme,
                                        const std::shared_ptr<Clock>& clock = systemClock(),
                                        const values::Ref<site::HistoryKeeper>& history = {});

/// A logger for a site whose own cannot be made: panels reach their scheme through it, and every attempt to connect
/// fails with this reason. It never has any data.
[[nodiscard]] values::Ref<site::Logger>
createUnavailableLogger(const QString& reason, const values::Ref<site::Scheme>& scheme,
                        const std::shared_ptr<Clock>& clock = systemClock(),
                        const values::Ref<site::HistoryKeeper>& history = {});

} // namespace zan::halyard
