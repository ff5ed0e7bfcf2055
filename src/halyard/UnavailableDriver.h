#pragma once

#include "halyard/Driver.h"

namespace zan::halyard {

/// Stands where a site's logger cannot be reached for a reason that is known beforehand: every attempt to connect
/// fails with that reason. Nothing is ever read or written.
class UnavailableDriver final : public Driver
{
public:
    explicit UnavailableDriver(QString reason);

    DriverResult open(const TextProgress& progress, CancelToken& token) override;
    DriverResult readBlock(std::int32_t address, std::int32_t length, QByteArray& bytes,
                           CancelToken& token) override;
    DriverResult writeBlock(std::int32_t address, const QByteArray& bytes, CancelToken& token) override;
    DriverResult program(const PercentProgress& progress, CancelToken& token) override;
    DriverResult unload(const RecordSink& records, const PercentProgress& progress, CancelToken& token) override;
    void close() noexcept override {}

private:
    DriverResult refusal() const;

    QString m_reason;
};

} // namespace zan::halyard
