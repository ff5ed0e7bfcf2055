#pragma once

#include <QString>

#include <cstdint>

namespace zan::halyard {

/// What the parts of a logger report to it. Each call but the two named may run any handler of the host:
/// afterwards the caller has to look again at everything that a handler could have changed.
class LoggerEvents
{
public:
    virtual ~LoggerEvents() = default;

    virtual void connectionProgress(const QString& message) = 0;
    /// The connection stands and is announced next. Runs no handler.
    virtual void connectionBegins() = 0;
    virtual void connected() = 0;
    /// The connection is about to end. Runs no handler.
    virtual void connectionEnds() = 0;
    virtual void disconnected() = 0;
    virtual void connectionError(const QString& message) = 0;
    /// A request found that the connection no longer stands.
    virtual void connectionLost(const QString& message) = 0;

    virtual void newData() = 0;
    virtual void newRecords() = 0;
    virtual void writeFailed(std::int32_t address, const QString& message) = 0;
};

} // namespace zan::halyard
